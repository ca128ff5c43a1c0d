// Code page conversion through the C library's iconv.
#include "code_page.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include <iconv.h>

namespace tdhost::dxf {
namespace {


int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isAscii(std::string_view text) {
  for (char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

// Decodes one UTF-8 sequence at text[i]; returns its length (1 for a stray byte).
size_t nextCodePoint(std::string_view text, size_t i, std::uint32_t& cp) {
  const auto b = static_cast<unsigned char>(text[i]);
  size_t n = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 1;
  if (i + n > text.size()) n = 1;
  cp = n == 1 ? b : (b & (0xFF >> (n + 1)));
  for (size_t k = 1; k < n; ++k) cp = (cp << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
  return n;
}

}  // namespace

void appendUtf8(std::string& out, std::uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::wstring widen(std::string_view s) {
  std::wstring out;
  widenInto(out, s);
  return out;
}

void widenInto(std::wstring& out, std::string_view s) {
  // Nearly every value is ASCII: one pass to check, one to copy.
  if (std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
    out.resize(s.size());
    std::copy(s.begin(), s.end(), out.begin());
    return;
  }
  out.clear();
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    char32_t cp = c;
    size_t len = 1;
    if (c >= 0xF0 && i + 3 < s.size() + 0) len = 4, cp = c & 0x07;
    else if (c >= 0xE0) len = 3, cp = c & 0x0F;
    else if (c >= 0xC0) len = 2, cp = c & 0x1F;
    if (i + len > s.size()) len = 1, cp = 0xFFFD;
    for (size_t k = 1; k < len; ++k) cp = (cp << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
    out += static_cast<wchar_t>(cp);
    i += len;
  }
}

std::string narrow(const std::wstring& w) {
  std::string out;
  narrowInto(out, w);
  return out;
}

void narrowInto(std::string& out, const std::wstring& w) {
  out.clear();
  out.reserve(w.size());
  for (wchar_t wc : w) appendUtf8(out, static_cast<std::uint32_t>(wc));
}

std::string iconvNameOf(std::string_view page) {
  std::string upper;
  for (char c : page) upper += static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
  if (upper.rfind("ANSI_", 0) == 0 && upper.size() > 5) return "CP" + upper.substr(5);
  if (upper.rfind("DOS", 0) == 0 && upper.size() > 3) return "CP" + upper.substr(3);
  if (upper.rfind("ISO8859-", 0) == 0) return "ISO-8859-" + upper.substr(8);
  if (upper == "BIG5") return "BIG5";
  if (upper == "GB2312") return "GB2312";
  if (upper == "KSC5601" || upper == "JOHAB") return "CP949";
  return {};
}

CodePageDecoder::CodePageDecoder(const std::string& iconvName) {
  if (iconvName.empty()) return;
  iconv_t handle = iconv_open("UTF-8", iconvName.c_str());
  if (handle != reinterpret_cast<iconv_t>(-1)) mHandle = handle;
}

CodePageDecoder::~CodePageDecoder() {
  if (mHandle) iconv_close(static_cast<iconv_t>(mHandle));
}

std::string CodePageDecoder::toUtf8(std::string_view text) {
  if (!mHandle || isAscii(text)) return decodeUnicodeEscapes(text);
  std::string out(text.size() * 4 + 4, '\0');
  char* in = const_cast<char*>(text.data());
  size_t inLeft = text.size();
  char* outPtr = out.data();
  size_t outLeft = out.size();
  auto* handle = static_cast<iconv_t>(mHandle);
  iconv(handle, nullptr, nullptr, nullptr, nullptr);
  while (inLeft > 0) {
    if (iconv(handle, &in, &inLeft, &outPtr, &outLeft) != static_cast<size_t>(-1)) break;
    if (errno == E2BIG) break;  // cannot happen: four bytes per input byte suffice
    // An unmappable or truncated byte: replace it and go on.
    ++in;
    --inLeft;
    static constexpr char kReplacement[] = "\xEF\xBF\xBD";
    for (char c : std::string_view(kReplacement, 3)) *outPtr++ = c, --outLeft;
  }
  out.resize(static_cast<size_t>(outPtr - out.data()));
  return decodeUnicodeEscapes(out);
}

std::string fromUtf8(std::string_view utf8, const std::string& iconvName) {
  if (isAscii(utf8)) return std::string(utf8);
  iconv_t handle = iconvName.empty() ? reinterpret_cast<iconv_t>(-1) : iconv_open(iconvName.c_str(), "UTF-8");
  std::string out;
  for (size_t i = 0; i < utf8.size();) {
    std::uint32_t cp = 0;
    const size_t n = nextCodePoint(utf8, i, cp);
    if (cp < 0x80) {
      out += static_cast<char>(cp);
    } else {
      char buffer[8];
      char* in = const_cast<char*>(utf8.data() + i);
      size_t inLeft = n;
      char* outPtr = buffer;
      size_t outLeft = sizeof buffer;
      if (handle != reinterpret_cast<iconv_t>(-1) && iconv(handle, &in, &inLeft, &outPtr, &outLeft) != static_cast<size_t>(-1)) {
        out.append(buffer, outPtr);
      } else {
        static constexpr char kHex[] = "0123456789ABCDEF";
        out += "\\U+";
        for (int shift = 12; shift >= 0; shift -= 4) out += kHex[(cp >> shift) & 0xF];
      }
    }
    i += n;
  }
  if (handle != reinterpret_cast<iconv_t>(-1)) iconv_close(handle);
  return out;
}

std::string decodeUnicodeEscapes(std::string_view text) {
  if (text.find("\\U+") == std::string_view::npos && text.find("\\u+") == std::string_view::npos)
    return std::string(text);
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 6 < text.size() && (text[i + 1] == 'U' || text[i + 1] == 'u') && text[i + 2] == '+') {
      int value = 0;
      bool ok = true;
      for (size_t k = 3; k < 7; ++k) {
        const int h = hexValue(text[i + k]);
        ok = ok && h >= 0;
        value = value * 16 + (h < 0 ? 0 : h);
      }
      if (ok) {
        appendUtf8(out, static_cast<std::uint32_t>(value));
        i += 6;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

}  // namespace tdhost::dxf
