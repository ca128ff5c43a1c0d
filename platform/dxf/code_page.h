// Text encodings of DXF files: the drawing code page of files before R2007, and the \U+XXXX
// escapes those files use for characters outside it. The host keeps text as UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tdhost::dxf {

// The iconv name for a $DWGCODEPAGE value ("ANSI_1251" -> "CP1251"); empty when unknown.
std::string iconvNameOf(std::string_view dwgCodePage);

// Converts text in a single- or double-byte code page to UTF-8, then decodes \U+XXXX escapes.
// Bytes the code page cannot map become U+FFFD rather than failing the load.
class CodePageDecoder {
 public:
  // An empty or unknown name means the text is already UTF-8 (R2007 and later).
  explicit CodePageDecoder(const std::string& iconvName);
  ~CodePageDecoder();
  CodePageDecoder(const CodePageDecoder&) = delete;
  CodePageDecoder& operator=(const CodePageDecoder&) = delete;

  std::string toUtf8(std::string_view text);
  bool isIdentity() const { return mHandle == nullptr; }

 private:
  void* mHandle = nullptr;
};

// Converts UTF-8 to a code page for writing old-version files; characters the code page lacks
// are written as \U+XXXX escapes.
std::string fromUtf8(std::string_view utf8, const std::string& iconvName);

// The host's wide text (one wchar_t per code point) and UTF-8; the *Into forms reuse `out`.
std::wstring widen(std::string_view utf8);
void widenInto(std::wstring& out, std::string_view utf8);
std::string narrow(const std::wstring& wide);
void narrowInto(std::string& out, const std::wstring& wide);

// Appends one code point in UTF-8.
void appendUtf8(std::string& out, std::uint32_t codePoint);

// Replaces every \U+XXXX (four hex digits) with the character's UTF-8 form.
std::string decodeUnicodeEscapes(std::string_view text);

}  // namespace tdhost::dxf
