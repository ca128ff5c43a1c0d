// Tokenising and writing DXF tags.
#include "dxf_tags.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace tdhost::dxf {
namespace {

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

bool parseInt(std::string_view text, std::int64_t& value) {
  text = trimBlanks(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc() && ptr == text.data() + text.size();
}

std::string quoted(std::string_view text) {
  constexpr size_t kShown = 40;
  std::string shown;
  for (char c : text.substr(0, kShown)) shown += (static_cast<unsigned char>(c) < 0x20) ? '?' : c;
  return "\"" + shown + (text.size() > kShown ? "...\"" : "\"");
}

}  // namespace

DxfError::DxfError(const std::string& source, int line, int groupCode, const std::string& problem)
    : std::runtime_error(source + ":" + std::to_string(line) + ": " +
                         (groupCode >= 0 ? "group code " + std::to_string(groupCode) + ": " : std::string()) + problem),
      mSource(source),
      mLine(line),
      mGroupCode(groupCode) {}

ValueKind valueKindOf(int c) {
  if (c >= 10 && c <= 59) return ValueKind::Double;
  if (c >= 60 && c <= 79) return ValueKind::Int16;
  if (c >= 90 && c <= 99) return ValueKind::Int32;
  if (c == 105) return ValueKind::Handle;
  if (c >= 110 && c <= 149) return ValueKind::Double;
  if (c >= 160 && c <= 169) return ValueKind::Int64;
  if (c >= 170 && c <= 179) return ValueKind::Int16;
  if (c >= 210 && c <= 239) return ValueKind::Double;
  if (c >= 270 && c <= 289) return ValueKind::Int16;
  if (c >= 290 && c <= 299) return ValueKind::Bool;
  if (c >= 310 && c <= 319) return ValueKind::Binary;
  if (c >= 320 && c <= 369) return ValueKind::Handle;
  if (c >= 370 && c <= 389) return ValueKind::Int16;
  if (c >= 390 && c <= 399) return ValueKind::Handle;
  if (c >= 400 && c <= 409) return ValueKind::Int16;
  if (c >= 420 && c <= 429) return ValueKind::Int32;
  if (c >= 440 && c <= 449) return ValueKind::Int32;
  if (c == 450 || c == 451 || c == 452 || c == 453 || c == 455 || c == 456 || c == 457 || c == 458 || c == 459)
    return ValueKind::Int32;
  if (c >= 460 && c <= 469) return ValueKind::Double;
  if (c >= 480 && c <= 481) return ValueKind::Handle;
  if (c == 1004) return ValueKind::Binary;
  if (c == 1005) return ValueKind::Handle;
  if (c >= 1010 && c <= 1059) return ValueKind::Double;
  if (c >= 1060 && c <= 1070) return ValueKind::Int16;
  if (c == 1071) return ValueKind::Int32;
  return ValueKind::String;
}

TagReader::TagReader(std::string_view text, std::string source) : mText(text), mSource(std::move(source)) {
  static constexpr std::string_view kBinarySentinel("AutoCAD Binary DXF");
  if (mText.substr(0, kBinarySentinel.size()) == kBinarySentinel)
    throw DxfError(mSource, 1, -1, "binary DXF is not supported; save the drawing as ASCII DXF");
  if (mText.substr(0, 3) == "\xEF\xBB\xBF") mPos = 3;
}

bool TagReader::readLine(std::string_view& line) {
  if (mPos >= mText.size()) return false;
  const char* start = mText.data() + mPos;
  const void* end = std::memchr(start, '\n', mText.size() - mPos);
  const size_t length = end ? static_cast<size_t>(static_cast<const char*>(end) - start) : mText.size() - mPos;
  line = std::string_view(start, length);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  mPos += length + (end ? 1 : 0);
  ++mLine;
  return true;
}

bool TagReader::next(Tag& tag) {
  std::string_view codeLine;
  if (!readLine(codeLine)) return false;
  // Some writers leave blank lines after the final EOF: the end when nothing but blanks follows.
  if (trimBlanks(codeLine).empty() &&
      mText.find_first_not_of(" \t\r\n", mPos) == std::string_view::npos)
    return false;
  std::int64_t code = 0;
  if (!parseInt(codeLine, code) || code < -5 || code > 1071) {
    if (codeLine.find('\0') != std::string_view::npos)
      throw DxfError(mSource, mLine, -1, "binary data where a group code was expected: not an ASCII DXF file");
    throw DxfError(mSource, mLine, -1, "expected a group code (an integer), found " + quoted(codeLine));
  }
  tag.code = static_cast<int>(code);
  tag.line = mLine;
  std::string_view value;
  if (!readLine(value)) throw DxfError(mSource, mLine, tag.code, "the file ends where the value was expected");
  // Only strings keep their blanks; numbers are often padded.
  if (valueKindOf(tag.code) != ValueKind::String) value = trimBlanks(value);
  tag.value = value;
  return true;
}

double parseDouble(const Tag& tag, const std::string& source) {
  std::string_view text = trimBlanks(tag.value);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0.0;
  const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || ptr != text.data() + text.size() || text.empty())
    throw DxfError(source, tag.line + 1, tag.code, "expected a real number, found " + quoted(tag.value));
  return value;
}

std::int64_t parseInteger(const Tag& tag, const std::string& source) {
  std::int64_t value = 0;
  if (parseInt(tag.value, value)) return value;
  // Some writers put reals where integers belong ("1.0"); accept whole values.
  double real = 0.0;
  const std::string_view text = trimBlanks(tag.value);
  const auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), real);
  if (ec == std::errc() && ptr == text.data() + text.size() && std::nearbyint(real) == real && std::fabs(real) < 9e18)
    return static_cast<std::int64_t>(real);
  throw DxfError(source, tag.line + 1, tag.code, "expected an integer, found " + quoted(tag.value));
}

std::string formatDouble(double value) {
  char buffer[64];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, ec == std::errc() ? ptr : buffer);
  if (text.find_first_of(".eEn") == std::string::npos) text += ".0";  // keep reals recognisable
  return text;
}

void TagWriter::code(int groupCode) {
  char buffer[16];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, groupCode);
  const size_t width = static_cast<size_t>(ptr - buffer);
  if (width < 3) mText.append(3 - width, ' ');
  mText.append(buffer, ptr);
  mText += '\n';
}

void TagWriter::string(int groupCode, std::string_view value) {
  code(groupCode);
  mText.append(value);
  mText += '\n';
}

void TagWriter::real(int groupCode, double value) {
  code(groupCode);
  mText += formatDouble(value);
  mText += '\n';
}

void TagWriter::integer(int groupCode, std::int64_t value) {
  code(groupCode);
  char buffer[32];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  mText.append(buffer, ptr);
  mText += '\n';
}

void TagWriter::point(int groupCode, double x, double y, double z) {
  real(groupCode, x);
  real(groupCode + 10, y);
  real(groupCode + 20, z);
}

void TagWriter::point2d(int groupCode, double x, double y) {
  real(groupCode, x);
  real(groupCode + 10, y);
}

}  // namespace tdhost::dxf
