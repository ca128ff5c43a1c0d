// The tag layer on malformed input, in every code-line layout, and in round trips (the sample
// round trips in dxf_round_trip_test.cpp cover real files).
#include "dxf/dxf_tags.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace tdhost::dxf;

namespace {

std::vector<Tag> readAll(std::string_view text, const std::string& source = "test.dxf") {
  TagReader reader(text, source);
  std::vector<Tag> tags;
  Tag tag;
  while (reader.next(tag)) tags.push_back(tag);
  return tags;
}

std::string errorOf(std::string_view text) {
  try {
    readAll(text);
  } catch (const DxfError& e) {
    return e.what();
  }
  return "no error";
}

}  // namespace

TEST(DxfTags, MalformedInputNamesLineAndProblem) {
  using namespace std::string_literals;
  struct Case {
    std::string text;
    std::string expected;
  };
  const Case cases[] = {
      {"  0\nSECTION\n  2\n", "test.dxf:3: group code 2: the file ends where the value was expected"},
      {"  0\nSECTION\nabc\nHEADER\n", "test.dxf:3: expected a group code (an integer), found \"abc\""},
      {"  0\nSECTION\n 10\n", "test.dxf:3: group code 10: the file ends"},
      {"AutoCAD Binary DXF\r\n\x1a\0\x00\x01"s, "test.dxf:1: binary DXF is not supported"},
      {"\x7f\x45LF\x02\x01\0\0\0\n"s, "test.dxf:1: binary data where a group code was expected"},
      {"  0\nSECTION\n\n  2\n", "test.dxf:3: expected a group code (an integer), found \"\""},
      {"  0\nSECTION\n99999\nX\n", "test.dxf:3: expected a group code"},
  };
  static_assert(std::size(cases) == 7);
  for (const Case& c : cases) EXPECT_EQ(errorOf(c.text).rfind(c.expected, 0), 0u) << errorOf(c.text);

  const auto tags = readAll("0\r\nSECTION\r\n 10\r\n  1.5  \r\n  0\r\nEOF\r\n\r\n\r\n");
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_EQ(parseDouble(tags[1], "t"), 1.5);
  Tag bad{10, 7, "1.5x"};
  EXPECT_THROW(parseDouble(bad, "t"), DxfError);
  Tag real{70, 7, "3.0"};
  EXPECT_EQ(parseInteger(real, "t"), 3);
}

TEST(DxfTags, DoublesRoundTripExactlyAndLookLikeReals) {
  EXPECT_EQ(formatDouble(0.0), "0.0");
  EXPECT_EQ(formatDouble(-2.0), "-2.0");
  EXPECT_EQ(formatDouble(0.1), "0.1");
  std::mt19937_64 rng(42);
  std::uniform_real_distribution<double> any(-1e7, 1e7);
  for (int i = 0; i < 10000; ++i) {
    const double value = any(rng);
    const std::string text = formatDouble(value);
    EXPECT_EQ(std::stod(text), value) << text;
  }
  TagWriter writer;
  writer.integer(1071, 5);
  writer.string(0, "EOF");
  EXPECT_EQ(writer.text(), "1071\n5\n  0\nEOF\n");
}

TEST(DxfTags, CodeLinesReadAlikeInEveryLayoutOtherProgramsWrite) {
  struct Case {
    const char* text;
    int code;
  };
  const Case cases[] = {
      {"  0\nX\n", 0},    {"0\r\nX\r\n", 0}, {"\t 10\nX\n", 10}, {"+5\nX\n", 5},     {" -1\nX\n", -1},
      {"1071\nX\n", 1071}, {"  8  \nX\n", 8}, {"00010\nX\n", 10}, {"999\r\nX\n", 999},
  };
  static_assert(std::size(cases) == 9);
  for (const Case& c : cases) {
    const auto tags = readAll(c.text);
    ASSERT_EQ(tags.size(), 1u) << c.text;
    EXPECT_EQ(tags[0].code, c.code) << c.text;
    EXPECT_EQ(tags[0].value, "X") << c.text;
  }
  // A reader moved back to where a tag started reads it, and the lines after it, again.
  TagReader reader("  0\nA\n  0\nB\n  0\nC\n", "t");
  Tag tag;
  ASSERT_TRUE(reader.next(tag));
  const std::size_t at = reader.position();
  const int line = reader.line();
  ASSERT_TRUE(reader.next(tag) && reader.next(tag));
  reader.seek(at, line);
  ASSERT_TRUE(reader.next(tag));
  EXPECT_EQ(tag.value, "B");
  EXPECT_EQ(tag.line, 3);
}

TEST(DxfTags, WriterFormatsCodesHandlesAndIntegersAndGrowsPastItsBuffer) {
  TagWriter writer;
  writer.handle(5, 0x1A2F);
  writer.handle(330, 0);
  writer.handle(105, 0xFFFFFFFFFFFFFFFFull);
  writer.integer(-1, -7);
  writer.real(40, 1e300);
  EXPECT_EQ(writer.text(), "  5\n1A2F\n330\n0\n105\nFFFFFFFFFFFFFFFF\n -1\n-7\n 40\n1e+300\n");
  // Writing goes on after the text was looked at, well past the first buffer.
  const std::string start = writer.text();
  std::string expected = start;
  const std::string longValue(10000, 'v');
  for (int i = 0; i < 50; ++i) {
    writer.string(1, longValue);
    expected += "  1\n" + longValue + "\n";
  }
  EXPECT_EQ(writer.text(), expected);
  EXPECT_EQ(writer.take(), expected);
  EXPECT_EQ(writer.text(), "");
}
