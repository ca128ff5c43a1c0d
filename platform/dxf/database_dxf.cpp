// AcDbDatabase::dxfIn and dxfOut: files, statuses and the atomic replacement of the target.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>
#include <utility>

#include "dbmain.h"
#include "dxf/code_page.h"
#include "dxf/dxf_in.h"
#include "dxf/dxf_model.h"
#include "dxf/dxf_out.h"
#include "tdhost/diagnostics.h"
#include "tdhost/dxf_io.h"
#include "tdhost/unmodelled.h"

namespace tdhost {

namespace {

std::string& message() {
  thread_local std::string text;
  return text;
}

Acad::ErrorStatus fail(Acad::ErrorStatus es, const std::string& why) {
  message() = why;
  return es;
}

Acad::ErrorStatus statusOf(const dxf::DxfError& e) {
  const std::string what = e.what();
  if (what.find("not closed") != std::string::npos || what.find("ends where") != std::string::npos)
    return Acad::eDxfPartiallyRead;
  if (what.find("not a DXF") != std::string::npos || what.find("binary DXF") != std::string::npos ||
      what.find("empty") != std::string::npos)
    return Acad::eBadDwgHeader;
  return Acad::eInvalidDxfCode;
}

}  // namespace

const std::string& lastDxfMessage() { return message(); }

std::string writeDxfText(AcDbDatabase& db, bool r2000) {
  dxf::SaveOptions options;
  options.r2000 = r2000;
  if (r2000) {
    // The drawing's own code page, kept from its header; ANSI_1252 otherwise.
    std::string page = "ANSI_1252";
    if (dxf::DxfState* s = dxf::findState(db))
      for (size_t i = 0; i + 1 < s->header.size(); ++i)
        if (s->header[i].code == 9 && s->header[i].value == "$DWGCODEPAGE") page = s->header[i + 1].value;
    options.codePage = dxf::iconvNameOf(page);
    if (options.codePage.empty()) options.codePage = "CP1252";
  }
  return dxf::saveDxfText(db, options);
}

namespace {

// Loads `text` (a std::string_view or the file's RawText) into `db` and turns a malformed
// file into its status and message.
template <class Text>
int loadText(AcDbDatabase& db, Text&& text, const std::string& source) {
  if (tdhost::openObjects(&db).length() != 0) return fail(Acad::eWasOpenForWrite, source + ": objects of the drawing are open");
  try {
    dxf::loadDxfText(db, std::forward<Text>(text), source);
  } catch (const dxf::DxfError& e) {
    return fail(statusOf(e), e.what());
  }
  message().clear();
  return Acad::eOk;
}

// A large buffer is filled once and read straight through: huge pages take a fault per 2 MB
// instead of one per 4 KB, which the kernel would otherwise spend as much time on as the copy.
void adviseHugePages(char* data, std::size_t size) {
  constexpr std::uintptr_t kHuge = std::uintptr_t{2} << 20;
  if (size < 2 * kHuge) return;
  const auto first = (reinterpret_cast<std::uintptr_t>(data) + kHuge - 1) & ~(kHuge - 1);
  const auto last = (reinterpret_cast<std::uintptr_t>(data) + size) & ~(kHuge - 1);
  if (last > first) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);  // a hint only
}

// The whole file in one buffer, filled by read(2) without zero-filling it first.
std::shared_ptr<RawText> readWhole(int fd, std::size_t size) {
  auto raw = std::make_shared<RawText>();
  raw->bytes = std::make_unique_for_overwrite<char[]>(size);
  adviseHugePages(raw->bytes.get(), size);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::read(fd, raw->bytes.get() + done, size - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return nullptr;
    if (n == 0) break;  // the file shrank since fstat: take what is there
    done += static_cast<std::size_t>(n);
  }
  raw->size = done;
  return raw;
}

}  // namespace

int readDxfText(AcDbDatabase& db, const std::string& text, const std::string& source) {
  return loadText(db, std::string_view(text), source);
}

}  // namespace tdhost

Acad::ErrorStatus AcDbDatabase::dxfIn(const ACHAR* fileName, const ACHAR* logFilename) {
  using tdhost::dxf::narrow;
  if (fileName == nullptr || *fileName == 0) return tdhost::fail(Acad::eInvalidInput, "no file name");
  const std::string path = narrow(fileName);
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return tdhost::fail(Acad::eFileNotFound, path + ": no such file");
  if (S_ISDIR(info.st_mode)) return tdhost::fail(Acad::eFileAccessErr, path + ": is a directory");
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return tdhost::fail(Acad::eFileAccessErr, path + ": cannot be read: " + std::strerror(errno));
  if (::fstat(fd, &info) != 0) info.st_size = 0;
  std::shared_ptr<tdhost::RawText> text = tdhost::readWhole(fd, static_cast<std::size_t>(info.st_size));
  const int readErrno = errno;
  ::close(fd);
  if (!text) return tdhost::fail(Acad::eFileAccessErr, path + ": cannot be read: " + std::strerror(readErrno));
  const auto es = static_cast<Acad::ErrorStatus>(tdhost::loadText(*this, std::move(text), path));
  if (es != Acad::eOk && logFilename != nullptr && *logFilename != 0)
    std::ofstream(narrow(logFilename), std::ios::app) << tdhost::lastDxfMessage() << '\n';
  return es;
}

Acad::ErrorStatus AcDbDatabase::dxfOut(const ACHAR* fileName, int, AcDb::AcDbDwgVersion dwgVer, bool) {
  using tdhost::dxf::narrow;
  if (fileName == nullptr || *fileName == 0) return tdhost::fail(Acad::eInvalidInput, "no file name");
  if (dwgVer != AcDb::kDHL_CURRENT && dwgVer != AcDb::kDHL_1032 && dwgVer != AcDb::kDHL_1015)
    return tdhost::fail(Acad::eInvalidDwgVersion, "DXF is written as R2018 or R2000 only");
  const std::string path = narrow(fileName);
  const std::string text = tdhost::writeDxfText(*this, dwgVer == AcDb::kDHL_1015);
  std::string temp = path + ".XXXXXX";
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) return tdhost::fail(Acad::eFileAccessErr, path + ": cannot create a file beside it: " + std::strerror(errno));
  auto abandon = [&](Acad::ErrorStatus es, const std::string& why) {
    const std::string reason = path + ": " + why + ": " + std::strerror(errno);
    ::close(fd);
    ::unlink(temp.c_str());
    return tdhost::fail(es, reason);
  };
  for (size_t done = 0; done < text.size();) {
    const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return abandon(errno == ENOSPC ? Acad::eOutOfDisk : Acad::eFileAccessErr, "writing failed");
    done += static_cast<size_t>(n);
  }
  ::fchmod(fd, 0644);
  if (::fsync(fd) != 0) return abandon(Acad::eFileAccessErr, "flushing to disk failed");
  if (::close(fd) != 0) {
    ::unlink(temp.c_str());
    return tdhost::fail(Acad::eFileAccessErr, path + ": closing failed");
  }
  if (::rename(temp.c_str(), path.c_str()) != 0) {
    const std::string reason = path + ": cannot replace the file: " + std::strerror(errno);
    ::unlink(temp.c_str());
    return tdhost::fail(Acad::eFileAccessErr, reason);
  }
  tdhost::message().clear();
  return Acad::eOk;
}
