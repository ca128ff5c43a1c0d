// Point files: format detection, headers, comments and error locations.
#include "point_file.h"

#include <gtest/gtest.h>

#include "temp_dir.h"

using tdutil::InputError;
using tdutil::PointFormat;
using tdutil::readPointFile;

TEST(PointFile, ReadsSurveyRowsWithHeaderAndComments) {
  TempDir dir;
  const auto path = dir.write("p.csv", "# pick-up\nP,N,E,Z,D\n\n7,100.5,200.25,10,TREE\n8, 101 ,201,,\n");
  const auto file = readPointFile(path, PointFormat::Auto);
  ASSERT_EQ(file.format, PointFormat::Pnezd);
  ASSERT_EQ(file.rows.size(), 2u);
  // Northing is y, easting x.
  EXPECT_EQ(file.rows[0].number, "7");
  EXPECT_DOUBLE_EQ(file.rows[0].x, 200.25);
  EXPECT_DOUBLE_EQ(file.rows[0].y, 100.5);
  EXPECT_EQ(file.rows[0].description, "TREE");
  EXPECT_EQ(file.rows[0].line, 4);
  EXPECT_FALSE(file.rows[1].hasZ);
  EXPECT_EQ(tdutil::formatRow(file.rows[0], file.format), "7,100.5,200.25,10,TREE");
}

TEST(PointFile, ReadsPlainRowsSeparatedByBlanksOrCommas) {
  TempDir dir;
  const auto blanks = readPointFile(dir.write("a.xyz", "1 2\n3 4 5\n"), PointFormat::Auto);
  ASSERT_EQ(blanks.rows.size(), 2u);
  EXPECT_FALSE(blanks.rows[0].hasZ);
  EXPECT_DOUBLE_EQ(blanks.rows[1].z, 5.0);
  const auto commas = readPointFile(dir.write("b.csv", "x,y\n-1.5e3,+2\n"), PointFormat::Xyz);
  ASSERT_EQ(commas.rows.size(), 1u);
  EXPECT_DOUBLE_EQ(commas.rows[0].x, -1500.0);
}

TEST(PointFile, ReportsFileLineAndFieldOfBadInput) {
  TempDir dir;
  using namespace std::string_literals;
  struct Case {
    std::string content;
    const char* expected;
  };
  const Case cases[] = {
      {"1,2\n3,abc\n", "bad.csv:2: expected a number for y in field 2, got \"abc\""},
      {"1,2\n3,4,5,6,7,8\n", "bad.csv:2: expected x,y[,z] (2 or 3 fields), got 6"},
      {"1,2,3,4,5,6\n", "bad.csv:1: cannot tell the format"},
      {"1,2\n3,nan\n", "bad.csv:2: expected a number for y"},
      {"1,2\n3,4\0junk\n"s, "bad.csv:2: binary data"},
  };
  static_assert(std::size(cases) == 5);
  for (const Case& c : cases) {
    const auto path = dir.write("bad.csv", c.content);
    try {
      readPointFile(path, PointFormat::Auto);
      ADD_FAILURE() << "accepted: " << c.content;
    } catch (const InputError& e) {
      EXPECT_NE(std::string(e.what()).find(c.expected), std::string::npos) << e.what();
    }
  }
  EXPECT_THROW(readPointFile(dir.path().string() + "/missing.csv", PointFormat::Auto), InputError);
}

TEST(PointFile, FailedWriteLeavesOldFileIntact) {
  TempDir dir;
  const auto target = dir.write("out.txt", "old");
  tdutil::writeOutput(target, "new");
  EXPECT_EQ(TempDir::read(target), "new");
  EXPECT_THROW(tdutil::writeOutput(dir.path().string() + "/no/such/dir/out.txt", "x"), InputError);
  EXPECT_EQ(TempDir::read(target), "new");
}
