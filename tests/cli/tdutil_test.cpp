// tdutil end to end: exit codes, outputs and messages of the real executable.
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "python_check.h"
#include "temp_dir.h"

namespace {

struct CommandResult {
  int exitCode;
  std::string output;  // standard output and error together
};

CommandResult tdutil(const std::string& arguments) {
  const std::string command = std::string(TDUTIL_EXE) + " " + arguments + " 2>&1";
  FILE* pipe = ::popen(command.c_str(), "r");
  if (!pipe) return {-1, "popen failed"};
  std::string output;
  std::array<char, 4096> buffer;
  size_t n;
  while ((n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) output.append(buffer.data(), n);
  const int status = ::pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

}  // namespace

TEST(Tdutil, HullOfSurveyPointsListsBoundaryRows) {
  TempDir dir;
  const auto input = dir.write("p.csv", "P,N,E,Z,D\n1,0,0,5,A\n2,0,10,5,B\n3,10,10,5,C\n4,10,0,5,D\n5,5,5,5,IN\n");
  const CommandResult indices = tdutil("hull " + input);
  EXPECT_EQ(indices.exitCode, 0);
  // Lowest-rightmost first (E 10, N 0), then counter-clockwise.
  EXPECT_EQ(indices.output, "1\n2\n3\n0\n");
  const CommandResult rows = tdutil("hull --points " + input);
  EXPECT_EQ(rows.output, "2,0,10,5,B\n3,10,10,5,C\n4,10,0,5,D\n1,0,0,5,A\n");
}

TEST(Tdutil, SimplifyWritesKeptVerticesToFile) {
  TempDir dir;
  const auto input = dir.write("line.xyz", "0 0 0\n1 0.01 0\n2 0 0\n2 5 0\n");
  const auto output = (dir.path() / "out.csv").string();
  const CommandResult run = tdutil("simplify -t 0.1 -o " + output + " " + input);
  EXPECT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(TempDir::read(output), "0,0,0\n2,0,0\n2,5,0\n");
  EXPECT_EQ(tdutil("simplify -t 0.1 --indices " + input).output, "0\n2\n3\n");
}

TEST(Tdutil, BadInputAndUsageGiveMessagesAndExitCodes) {
  TempDir dir;
  const auto bad = dir.write("bad.csv", "1,2\n3,x\n");
  const CommandResult malformed = tdutil("hull " + bad);
  EXPECT_EQ(malformed.exitCode, 1);
  EXPECT_NE(malformed.output.find("bad.csv:2: expected a number for y"), std::string::npos) << malformed.output;
  EXPECT_EQ(tdutil("hull " + dir.write("empty.csv", "# nothing\n")).exitCode, 1);
  EXPECT_EQ(tdutil("simplify " + bad).exitCode, 2);            // no tolerance
  EXPECT_EQ(tdutil("simplify -t -1 " + bad).exitCode, 2);      // negative tolerance
  EXPECT_EQ(tdutil("hull " + dir.path().string() + "/missing.csv").exitCode, 2);
  EXPECT_EQ(tdutil("").exitCode, 2);
  EXPECT_EQ(tdutil("--help").exitCode, 0);
}

TEST(Tdutil, BoundaryOfASurveyDrawingIsDrawnBackIntoIt) {
  TempDir dir;
  const std::string sample = std::string(TDUTILW_SAMPLES_DIR) + "/topo_survey_autocad_map_AC1024.dxf";
  const std::string output = (dir.path() / "boundary.dxf").string();
  const CommandResult run = tdutil("boundary " + sample + " -o " + output);
  ASSERT_EQ(run.exitCode, 0) << run.output;
  EXPECT_NE(run.output.find("1294 survey points, boundary of"), std::string::npos) << run.output;

  // An independent reader finds the closed boundary with every survey point inside or on it.
  const std::string script = dir.write("check.py",
                                       "import ezdxf, sys, math\n"
                                       "doc = ezdxf.readfile(sys.argv[1])\n"
                                       "a = doc.audit()\n"
                                       "msp = doc.modelspace()\n"
                                       "b = [e for e in msp if e.dxftype() == 'LWPOLYLINE' and e.dxf.layer == 'BOUNDARY']\n"
                                       "poly = [(p[0], p[1]) for p in b[0].get_points('xy')]\n"
                                       "pts = [e.dxf.location for e in msp if e.dxftype() == 'POINT']\n"
                                       "def outside(p):\n"
                                       "    # Largest distance to the right of a counter-clockwise edge.\n"
                                       "    worst = -math.inf\n"
                                       "    for (ax, ay), (bx, by) in zip(poly, poly[1:] + poly[:1]):\n"
                                       "        cross = (bx - ax) * (p.y - ay) - (by - ay) * (p.x - ax)\n"
                                       "        worst = max(worst, -cross / math.hypot(bx - ax, by - ay))\n"
                                       "    return worst\n"
                                       "far = sum(1 for p in pts if outside(p) > 1e-6)\n"
                                       "print('audit', len(a.errors), 'boundaries', len(b), 'closed', b[0].closed, 'points', len(pts), "
                                       "'outside', far)\n");
  if (python_check::ezdxfMissing()) GTEST_SKIP() << "python3-ezdxf is not installed";
  const std::string out = python_check::runScript(script, output);
  EXPECT_NE(out.find("audit 0 boundaries 1 closed True points 1294 outside 0"), std::string::npos) << out;
}

TEST(Tdutil, BoundaryRejectsWhatIsNotADrawing) {
  TempDir dir;
  const CommandResult run = tdutil("boundary " + dir.write("x.dxf", "hello\nworld\n") + " -o " +
                                   (dir.path() / "out.dxf").string());
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.output.find("x.dxf:1"), std::string::npos) << run.output;
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "out.dxf"));
}
