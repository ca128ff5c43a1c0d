// DXF load/save throughput and peak memory of the host against ezdxf and dxflib, on three
// large drawings the host generates. Each measurement runs in a fresh process (this program
// re-executed in a child mode) so its peak RSS is its own and not inherited from the parent.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <dl_creationadapter.h>
#include <dl_dxf.h>

#include "acedads.h"
#include "acutads.h"
#include "arxHeaders.h"
#include "dbents.h"
#include "dbpl.h"
#include "tdhost/dxf_io.h"

namespace {

constexpr const char* kPython = "/usr/bin/python3";
constexpr int kRuns = 3;
constexpr double kMB = 1024.0 * 1024.0;

using Clock = std::chrono::steady_clock;
double since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

// This process's CPU seconds: on a shared, loaded machine a steadier measure than the clock.
double cpuSeconds() {
  timespec ts{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

std::wstring wide(const std::string& s) { return std::wstring(s.begin(), s.end()); }

double fileMB(const std::string& path) { return static_cast<double>(std::filesystem::file_size(path)) / kMB; }

[[noreturn]] void die(const std::string& why) {
  std::fprintf(stderr, "dxf_bench: %s\n", why.c_str());
  std::exit(2);
}

// ---- child modes -------------------------------------------------------------------------

void generate(const std::string& kind, const std::string& path) {
  AcDbDatabase db(true, true);
  acdbHostApplicationServices()->setWorkingDatabase(&db);
  const bool points = kind == "points";
  if (points && acdbRegApp(L"TDU_BENCH") != RTNORM) die("acdbRegApp failed");

  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) die("no block table");
  AcDbBlockTableRecord* model = nullptr;
  if (table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForWrite) != Acad::eOk) die("no model space");
  table->close();
  auto append = [&](AcDbEntity* ent) {
    if (model->appendAcDbEntity(ent) != Acad::eOk) die("append failed");
    ent->close();
  };
  // Survey-like coordinates (large eastings/northings) so numbers have realistic widths.
  constexpr double e0 = 3200000.0, n0 = 5400000.0;
  if (kind == "lines") {
    for (int i = 0; i < 100'000; ++i) {
      const double x = e0 + (i % 1000) * 1.37, y = n0 + (i / 1000) * 2.11;
      append(new AcDbLine(AcGePoint3d(x, y, 100.0 + i * 1e-3), AcGePoint3d(x + 0.731, y + 1.093, 101.5)));
    }
  } else if (kind == "plines") {
    for (int i = 0; i < 20'000; ++i) {
      auto* pl = new AcDbPolyline;
      const double x = e0 + (i % 200) * 13.7, y = n0 + (i / 200) * 9.1;
      for (unsigned v = 0; v < 50; ++v)
        pl->addVertexAt(v, AcGePoint2d(x + v * 0.25, y + std::sin(v * 0.3)), (v % 2 ? 0.41421356 : -0.2));
      pl->setClosed(i % 2 == 0);
      append(pl);
    }
  } else if (points) {
    for (int i = 0; i < 50'000; ++i) {
      auto* pt = new AcDbPoint(AcGePoint3d(e0 + (i % 500) * 0.913, n0 + (i / 500) * 1.771, 95.0 + (i % 97) * 0.01));
      const std::wstring label = L"PT" + std::to_wstring(i);
      resbuf* xd = acutBuildList(1001, L"TDU_BENCH", 1000, label.c_str(), 1070, i % 30000, 1040, i * 0.125, 0);
      if (!xd || pt->setXData(xd) != Acad::eOk) die("setXData failed");
      acutRelRb(xd);
      append(pt);
    }
  } else {
    die("unknown drawing " + kind);
  }
  model->close();
  if (db.dxfOut(wide(path).c_str(), 16, AcDb::kDHL_1032) != Acad::eOk) die("dxfOut: " + tdhost::lastDxfMessage());
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

long modelSpaceCount(AcDbDatabase& db) {
  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) return -1;
  AcDbBlockTableRecord* model = nullptr;
  const bool ok = table->getAt(ACDB_MODEL_SPACE, model, AcDb::kForRead) == Acad::eOk;
  table->close();
  if (!ok) return -1;
  AcDbBlockTableRecordIterator* it = nullptr;
  long n = 0;
  if (model->newIterator(it) == Acad::eOk) {
    for (; !it->done(); it->step()) ++n;
    delete it;
  }
  model->close();
  return n;
}

// dxfIn replaces the whole drawing, so an empty database (no default drawing) is enough.
std::unique_ptr<AcDbDatabase> load(const std::string& path, double* seconds, double* cpu = nullptr) {
  auto db = std::make_unique<AcDbDatabase>(false, true);
  const double c0 = cpuSeconds();
  const auto t0 = Clock::now();
  const Acad::ErrorStatus es = db->dxfIn(wide(path).c_str());
  if (seconds) *seconds = since(t0);
  if (cpu) *cpu = cpuSeconds() - c0;
  if (es != Acad::eOk) die("dxfIn: " + tdhost::lastDxfMessage());
  return db;
}

void readMode(const std::string& path) {
  double s = 0, cpu = 0;
  auto db = load(path, &s, &cpu);
  std::printf("%.9f %ld %.9f\n", s, modelSpaceCount(*db), cpu);
}

void writeMode(const std::string& in, const std::string& out) {
  auto db = load(in, nullptr);
  auto t0 = Clock::now();
  const std::string text = tdhost::writeDxfText(*db);
  const double mem = since(t0);
  t0 = Clock::now();
  if (db->dxfOut(wide(out).c_str(), 16, AcDb::kDHL_1032) != Acad::eOk) die("dxfOut: " + tdhost::lastDxfMessage());
  std::printf("%.9f %.9f %zu\n", since(t0), mem, text.size());
}

// Receives every callback and does nothing: dxflib's parse cost alone.
class NullAdapter : public DL_CreationAdapter {};

void dxflibMode(const std::string& path) {
  NullAdapter adapter;
  DL_Dxf dxf;
  const auto t0 = Clock::now();
  if (!dxf.in(path, &adapter)) die("dxflib could not read " + path);
  std::printf("%.9f\n", since(t0));
}

// ---- parent ------------------------------------------------------------------------------

struct ChildResult {
  std::string out;
  double peakMB = 0;
  double wallSeconds = 0;
};

ChildResult runChild(const std::string& exe, const std::vector<std::string>& args) {
  int fds[2];
  if (::pipe(fds) != 0) die("pipe failed");
  const auto t0 = Clock::now();
  const pid_t pid = ::fork();
  if (pid < 0) die("fork failed");
  if (pid == 0) {
    ::dup2(fds[1], STDOUT_FILENO);
    ::close(fds[0]);
    ::close(fds[1]);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(exe.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execv(exe.c_str(), argv.data());
    std::_Exit(127);
  }
  ::close(fds[1]);
  ChildResult r;
  char buf[4096];
  ssize_t n;
  while ((n = ::read(fds[0], buf, sizeof buf)) > 0) r.out.append(buf, static_cast<size_t>(n));
  ::close(fds[0]);
  int status = 0;
  rusage ru{};
  // wait4 gives this child's own rusage, unlike RUSAGE_CHILDREN's maximum over all children.
  if (::wait4(pid, &status, 0, &ru) != pid) die("wait4 failed");
  r.wallSeconds = since(t0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) die("child failed: " + exe + " " + (args.empty() ? "" : args[0]));
  r.peakMB = static_cast<double>(ru.ru_maxrss) / 1024.0;  // ru_maxrss is in KiB
  return r;
}

double median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

double lineSplitMBps(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string buf((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::vector<double> rates;
  for (int run = 0; run < kRuns; ++run) {
    const auto t0 = Clock::now();
    size_t lines = 0;
    const char* p = buf.data();
    const char* end = p + buf.size();
    while (const void* nl = std::memchr(p, '\n', static_cast<size_t>(end - p))) {
      p = static_cast<const char*>(nl) + 1;
      ++lines;
    }
    const double s = since(t0);
    if (lines == 0) die("no lines in " + path);
    rates.push_back(static_cast<double>(buf.size()) / kMB / s);
  }
  return median(rates);
}

struct Row {
  std::string name;
  double sizeMB = 0;
  long entities = 0;
  double readMBps = 0, readCpuMBps = 0, writeMBps = 0, writeMemMBps = 0, peakMB = 0, writePeakMB = 0;
  double ezMBps = 0, ezPeakMB = 0, ezWholeSeconds = 0;
  double dlMBps = 0, dlPeakMB = 0;
  double splitMBps = 0;
};

int parent(const std::string& exe) {
  char tmpl[] = "/tmp/dxf_bench.XXXXXX";
  if (!::mkdtemp(tmpl)) die("mkdtemp failed");
  const std::filesystem::path dir = tmpl;
  const bool haveEzdxf = std::system((std::string(kPython) + " -c 'import ezdxf' >/dev/null 2>&1").c_str()) == 0;
  const std::string ezScript =
      "import sys, time, ezdxf\n"
      "t = time.perf_counter()\n"
      "ezdxf.readfile(sys.argv[1])\n"
      "print('%.9f' % (time.perf_counter() - t))\n";

  std::vector<Row> rows;
  for (const char* kind : {"lines", "plines", "points"}) {
    Row row;
    row.name = kind;
    const std::string file = (dir / (row.name + ".dxf")).string();
    const std::string out = (dir / (row.name + ".out.dxf")).string();
    std::fprintf(stderr, "[%s] generating...\n", kind);
    runChild(exe, {"gen", kind, file});
    row.sizeMB = fileMB(file);

    std::vector<double> reads, readCpus, peaks, writes, writeMems, writePeaks;
    for (int run = 0; run < kRuns; ++run) {
      std::fprintf(stderr, "[%s] ours, run %d\n", kind, run + 1);
      ChildResult r = runChild(exe, {"read", file});
      double s = 0, cpu = 0;
      std::istringstream(r.out) >> s >> row.entities >> cpu;
      reads.push_back(row.sizeMB / s);
      readCpus.push_back(row.sizeMB / cpu);
      peaks.push_back(r.peakMB);
      ChildResult w = runChild(exe, {"write", file, out});
      double ws = 0, wm = 0;
      size_t bytes = 0;
      std::istringstream(w.out) >> ws >> wm >> bytes;
      const double outMB = static_cast<double>(bytes) / kMB;
      writes.push_back(outMB / ws);
      writeMems.push_back(outMB / wm);
      writePeaks.push_back(w.peakMB);
    }
    row.readMBps = median(reads);
    row.readCpuMBps = median(readCpus);
    row.peakMB = median(peaks);
    row.writeMBps = median(writes);
    row.writeMemMBps = median(writeMems);
    row.writePeakMB = median(writePeaks);

    std::vector<double> dl, dlPeak;
    for (int run = 0; run < kRuns; ++run) {
      ChildResult r = runChild(exe, {"dxflib", file});
      dl.push_back(row.sizeMB / std::stod(r.out));
      dlPeak.push_back(r.peakMB);
    }
    row.dlMBps = median(dl);
    row.dlPeakMB = median(dlPeak);

    if (haveEzdxf) {
      std::fprintf(stderr, "[%s] ezdxf...\n", kind);
      ChildResult r = runChild(kPython, {"-c", ezScript, file});
      row.ezMBps = row.sizeMB / std::stod(r.out);
      row.ezPeakMB = r.peakMB;
      row.ezWholeSeconds = r.wallSeconds;
    }
    row.splitMBps = lineSplitMBps(file);
    std::filesystem::remove(out);
    rows.push_back(row);
  }
  std::filesystem::remove_all(dir);

  std::printf("\nDXF load/save (R2018 ASCII). MB = 2^20 bytes; ours: median of %d runs, each in a fresh process.\n",
              kRuns);
  std::printf("%-7s %8s %9s | %9s %9s %9s %9s %9s %9s | %9s %9s | %9s %9s | %9s\n", "file", "size MB", "entities",
              "rd MB/s", "rdcpu MB/s", "wr MB/s", "wrmem MB/s", "rd pk MB", "wr pk MB", "ezdxf MB/s", "ezdxf pk", "dxflib MB/s",
              "dxflib pk", "split MB/s");
  for (const Row& r : rows)
    std::printf("%-7s %8.1f %9ld | %9.1f %10.1f %9.1f %10.1f %9.1f %9.1f | %10.2f %9.1f | %11.1f %9.1f | %10.0f\n",
                r.name.c_str(), r.sizeMB, r.entities, r.readMBps, r.readCpuMBps, r.writeMBps, r.writeMemMBps, r.peakMB, r.writePeakMB,
                r.ezMBps, r.ezPeakMB, r.dlMBps, r.dlPeakMB, r.splitMBps);
  std::printf("\nrd = dxfIn into a fresh AcDbDatabase(false, true) (rdcpu: by its CPU time); wr = dxfOut to a file (includes fsync);\n"
              "wrmem = the same text built in memory (tdhost::writeDxfText); pk = peak RSS of that process\n"
              "(rd pk: load only; wr pk: load + save). ezdxf: ezdxf.readfile only (whole process:");
  for (const Row& r : rows) std::printf(" %s %.1f s", r.name.c_str(), r.ezWholeSeconds);
  std::printf("); dxflib: DL_Dxf::in with a do-nothing adapter; split: memchr over the buffer.\n");
  std::printf("Targets: read >= 200 MB/s, write >= 150 MB/s, read peak below ezdxf's.\n");
  if (!haveEzdxf) std::printf("python3-ezdxf is not installed: its columns are 0.\n");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string exe = std::filesystem::canonical("/proc/self/exe").string();
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "gen" && argc == 4) generate(argv[2], argv[3]);
  else if (mode == "read" && argc == 3) readMode(argv[2]);
  else if (mode == "write" && argc == 4) writeMode(argv[2], argv[3]);
  else if (mode == "dxflib" && argc == 3) dxflibMode(argv[2]);
  else if (argc == 1) return parent(exe);
  else die("usage: dxf_bench  (child modes: gen KIND FILE | read FILE | write IN OUT | dxflib FILE)");
  return 0;
}
