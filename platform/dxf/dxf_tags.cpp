// Tokenising and writing DXF tags.
#include "dxf_tags.h"

#include <algorithm>
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

bool TagReader::readValue(Tag& tag) {
  std::string_view value;
  if (!readLine(value)) throw DxfError(mSource, mLine, tag.code, "the file ends where the value was expected");
  // Only strings keep their blanks; numbers are often padded.
  if (valueKindOf(tag.code) != ValueKind::String) value = trimBlanks(value);
  tag.value = value;
  return true;
}

bool TagReader::readCodeSlowly(Tag& tag) {
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
  return readValue(tag);
}

void readCheckedTags(std::string_view text, std::vector<Tag>& out) {
  out.clear();
  TagReader reader(text, std::string());
  for (Tag tag; reader.next(tag);)
    if (tag.code != 999) out.push_back(tag);
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

namespace {

// The shortest text that reads back to `value`, with ".0" added to whole numbers so that they
// still read as reals. Needs 26 bytes at `at`.
char* writeDouble(char* at, double value) {
  const auto [end, ec] = std::to_chars(at, at + 24, value);
  char* stop = ec == std::errc() ? end : at;
  for (const char* p = at; p != stop; ++p)
    if (*p == '.' || *p == 'e' || *p == 'E' || *p == 'n') return stop;
  stop[0] = '.';
  stop[1] = '0';
  return stop + 2;
}

}  // namespace

std::string formatDouble(double value) {
  char buffer[32];
  return std::string(buffer, writeDouble(buffer, value));
}

void TagWriter::reserve(std::size_t bytes) {
  if (mText.size() - mUsed < bytes) grow(bytes);
}

void TagWriter::grow(std::size_t bytes) {
  // Doubling keeps appends amortised constant; resize's zero fill touches each page once.
  mText.resize(std::max(mUsed + bytes, std::max<std::size_t>(2 * mText.size(), 4096)));
}

const std::string& TagWriter::text() {
  mText.resize(mUsed);
  return mText;
}

std::string TagWriter::take() {
  mText.resize(mUsed);
  mUsed = 0;
  return std::move(mText);
}

char* TagWriter::code(char* at, int groupCode) {
  if (groupCode >= 0 && groupCode < 1000) {
    at[0] = groupCode >= 100 ? static_cast<char>('0' + groupCode / 100) : ' ';
    at[1] = groupCode >= 10 ? static_cast<char>('0' + groupCode / 10 % 10) : ' ';
    at[2] = static_cast<char>('0' + groupCode % 10);
    at[3] = '\n';
    return at + 4;
  }
  char buffer[16];
  const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, groupCode);
  const size_t width = static_cast<size_t>(end - buffer);
  for (size_t i = width; i < 3; ++i) *at++ = ' ';
  at = std::copy(buffer, end, at);
  *at++ = '\n';
  return at;
}

namespace {
constexpr std::size_t kCodeRoom = 16;  // a group code line, and then some
}

void TagWriter::string(int groupCode, std::string_view value) {
  char* at = code(room(kCodeRoom + value.size() + 1), groupCode);
  if (!value.empty()) std::memcpy(at, value.data(), value.size());
  at[value.size()] = '\n';
  commit(at + value.size() + 1);
}

void TagWriter::real(int groupCode, double value) {
  char* at = writeDouble(code(room(kCodeRoom + 32), groupCode), value);
  *at = '\n';
  commit(at + 1);
}

void TagWriter::integer(int groupCode, std::int64_t value) {
  char* at = code(room(kCodeRoom + 24), groupCode);
  at = std::to_chars(at, at + 22, value).ptr;
  *at = '\n';
  commit(at + 1);
}

void TagWriter::handle(int groupCode, std::uint64_t value) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  char* at = code(room(kCodeRoom + 24), groupCode);
  int shift = 60;
  while (shift > 0 && (value >> shift) == 0) shift -= 4;
  for (; shift >= 0; shift -= 4) *at++ = kHex[(value >> shift) & 15];
  *at = '\n';
  commit(at + 1);
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
