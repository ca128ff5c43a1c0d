// tdutil end to end: exit codes, outputs and messages of the real executable.
#include <array>
#include <cstdio>
#include <string>

#include <sys/wait.h>

#include <gtest/gtest.h>

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
