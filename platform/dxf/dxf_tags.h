// The DXF tag layer: group-code/value pairs read from and written to ASCII DXF text. Knows
// nothing of entities or objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

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
ValueKind valueKindOf(int groupCode);

// Splits DXF text into tags. Accepts LF and CRLF line ends, blanks around group codes and a
// UTF-8 byte-order mark; rejects binary DXF and anything that is not a sequence of tags.
class TagReader {
 public:
  TagReader(std::string_view text, std::string source);

  // The next tag; false at the end of the text. A group code line that is not an integer, or a
  // group code without its value line, throws DxfError.
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

  std::string_view mText;
  size_t mPos = 0;
  int mLine = 0;
  std::string mSource;
};

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
