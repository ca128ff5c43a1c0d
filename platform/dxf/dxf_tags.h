// The DXF tag layer: group-code/value pairs read from and written to ASCII DXF text. Knows
// nothing of entities or objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tdhost::dxf {

// A malformed file: where it went wrong and what was expected there.
class DxfError : public std::runtime_error {
 public:
  DxfError(const std::string& source, int line, int groupCode, const std::string& problem);
  const std::string& source() const { return mSource; }
  int line() const { return mLine; }
  int groupCode() const { return mGroupCode; }  // -1 when no group code was read

 private:
  std::string mSource;
  int mLine;
  int mGroupCode;
};

// One tag. value views into the reader's text (without line ends); line is the 1-based line of
// the group code. 24 bytes: a whole file's tags are held at once while it loads.
struct Tag {
  int code = 0;
  int line = 0;
  std::string_view value;
};

// The value kinds group codes carry.
enum class ValueKind : unsigned char { String, Double, Int16, Int32, Int64, Bool, Handle, Binary };
namespace detail {
inline constexpr int kFirstCode = -5, kLastCode = 1071;
inline constexpr ValueKind kindOfCode(int c) {
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

// Every tag asks for its kind: one table lookup instead of the chain of ranges.
struct KindTable {
  ValueKind kinds[kLastCode - kFirstCode + 1] = {};
  constexpr KindTable() {
    for (int c = kFirstCode; c <= kLastCode; ++c) kinds[c - kFirstCode] = kindOfCode(c);
  }
};
inline constexpr KindTable kKinds;
}  // namespace detail

inline ValueKind valueKindOf(int c) {
  return (c >= detail::kFirstCode && c <= detail::kLastCode) ? detail::kKinds.kinds[c - detail::kFirstCode]
                                                             : ValueKind::String;
}

// Splits DXF text into tags. Accepts LF and CRLF line ends, blanks around group codes and a
// UTF-8 byte-order mark; rejects binary DXF and anything that is not a sequence of tags.
class TagReader {
 public:
  TagReader(std::string_view text, std::string source);

  // The next tag; false at the end of the text. A group code line that is not an integer, or a
  // group code without its value line, throws DxfError. Inline: it runs for every tag of a file.
  bool next(Tag& tag);
  const std::string& source() const { return mSource; }
  // Where the next tag starts (byte offset and the line before it), and going back there.
  std::size_t position() const { return mPos; }
  int line() const { return mLine; }
  void seek(std::size_t position, int line) {
    mPos = position;
    mLine = line;
  }

 private:
  bool readLine(std::string_view& line);
  bool readCodeSlowly(Tag& tag);
  bool readValue(Tag& tag);

  std::string_view mText;
  size_t mPos = 0;
  int mLine = 0;
  std::string mSource;
};

inline bool TagReader::next(Tag& tag) {
  if (mPos >= mText.size()) return false;
  // The usual layout first: blanks, an optional minus, digits, the line end, then a value line
  // that holds no carriage return. Anything else goes the general way, which also words errors.
  const char* const text = mText.data();
  const char* const end = text + mText.size();
  const char* p = text + mPos;
  while (p != end && *p == ' ') ++p;
  const bool negative = p != end && *p == '-';
  p += negative;
  const char* const digits = p;
  int code = 0;
  while (p != end && p - digits < 5 && static_cast<unsigned>(*p - '0') < 10) code = code * 10 + (*p++ - '0');
  if (p == digits || p == end) return readCodeSlowly(tag);
  if (*p == '\r' && p + 1 != end && p[1] == '\n') ++p;
  if (*p != '\n') return readCodeSlowly(tag);
  code = negative ? -code : code;
  if (code < detail::kFirstCode || code > detail::kLastCode) return readCodeSlowly(tag);
  ++p;
  tag.code = code;
  tag.line = ++mLine;
  // The value line: as it stands when it needs no carriage return taken off and no blanks
  // trimmed (only strings keep theirs).
  const auto* nl = static_cast<const char*>(p == end ? nullptr : std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  if (nl == nullptr || (nl != p && (nl[-1] == '\r' || (valueKindOf(code) != ValueKind::String &&
                                                         (blank(*p) || blank(nl[-1])))))) {
    mPos = static_cast<std::size_t>(p - text);
    return readValue(tag);
  }
  tag.value = std::string_view(p, static_cast<std::size_t>(nl - p));
  mPos = static_cast<std::size_t>(nl + 1 - text);
  ++mLine;
  return true;
}

// The tags of text read before (so well formed), comments left out, into `out`.
void readCheckedTags(std::string_view text, std::vector<Tag>& out);

// Numbers of a tag's value, with the error naming the tag when the text is not one.
double parseDouble(const Tag& tag, const std::string& source);
std::int64_t parseInteger(const Tag& tag, const std::string& source);

// Appends tags in the layout other programs write: the group code right-aligned in three
// columns, one value per line, CRLF-free. Doubles use the shortest text that reads back to the
// same value, so a second save of unchanged data is byte-identical.
class TagWriter {
 public:
  void string(int code, std::string_view value);
  void real(int code, double value);
  void integer(int code, std::int64_t value);
  // A handle: upper-case hexadecimal without leading zeros ("0" for none).
  void handle(int code, std::uint64_t value);
  void point(int code, double x, double y, double z);
  void point2d(int code, double x, double y);

  // Room for `bytes` of text without growing again.
  void reserve(std::size_t bytes);
  // The text so far; writing may go on after.
  const std::string& text();
  // The text, handed over; the writer is empty after.
  std::string take();

 private:
  // Writes go straight into the buffer; growing is the only call that can allocate.
  char* room(std::size_t bytes) {
    if (mText.size() - mUsed < bytes) grow(bytes);
    return mText.data() + mUsed;
  }
  void grow(std::size_t bytes);
  char* code(char* at, int groupCode);
  void commit(const char* end) { mUsed = static_cast<std::size_t>(end - mText.data()); }

  std::string mText;  // [0, mUsed) is written; the rest is room
  std::size_t mUsed = 0;
};

std::string formatDouble(double value);

}  // namespace tdhost::dxf
