// Translates the host's wide printf conventions to the C library's and formats.
#include "wide_format.h"

#include <cwchar>
#include <vector>

namespace {

bool isFlag(wchar_t c) { return c == L'-' || c == L'+' || c == L' ' || c == L'#' || c == L'0' || c == L'\''; }
bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Rewrites one format so that the C library reads the arguments the host's way.
std::wstring translate(const wchar_t* format) {
  std::wstring out;
  const wchar_t* p = format;
  while (*p) {
    if (*p != L'%') {
      out += *p++;
      continue;
    }
    out += *p++;
    if (*p == L'%') {
      out += *p++;
      continue;
    }
    while (isFlag(*p)) out += *p++;
    while (isDigit(*p) || *p == L'*') out += *p++;
    if (*p == L'.') {
      out += *p++;
      while (isDigit(*p) || *p == L'*') out += *p++;
    }
    std::wstring length;
    bool narrow = false, wide = false;
    for (;;) {
      if (p[0] == L'I' && p[1] == L'6' && p[2] == L'4') { length = L"ll"; p += 3; }
      else if (p[0] == L'I' && p[1] == L'3' && p[2] == L'2') { p += 3; }
      else if (*p == L'I') { length = L"z"; ++p; }
      else if (*p == L'h' && (p[1] == L's' || p[1] == L'S' || p[1] == L'c' || p[1] == L'C')) { narrow = true; ++p; }
      else if ((*p == L'l' || *p == L'w') && (p[1] == L's' || p[1] == L'S' || p[1] == L'c' || p[1] == L'C')) { wide = true; ++p; }
      else if (*p == L'h' || *p == L'l' || *p == L'L' || *p == L'z' || *p == L'j' || *p == L't' || *p == L'q') { length += *p == L'q' ? L'l' : *p; ++p; }
      else break;
    }
    if (!*p) break;
    const wchar_t conv = *p++;
    switch (conv) {
      case L's': case L'c':
        out += narrow ? std::wstring(1, conv) : std::wstring(L"l") + conv;
        break;
      case L'S': case L'C':  // the other width: narrow in wide functions
        out += wide ? std::wstring(L"l") + static_cast<wchar_t>(conv + (L'a' - L'A'))
                    : std::wstring(1, static_cast<wchar_t>(conv + (L'a' - L'A')));
        break;
      default:
        out += length;
        out += conv;
    }
  }
  return out;
}

}  // namespace

std::wstring hostFormatV(const wchar_t* format, va_list args) {
  if (!format) return {};
  const std::wstring fmt = translate(format);
  std::vector<wchar_t> buffer(256);
  for (;;) {
    va_list copy;
    va_copy(copy, args);
    const int n = std::vswprintf(buffer.data(), buffer.size(), fmt.c_str(), copy);
    va_end(copy);
    if (n >= 0) return std::wstring(buffer.data(), static_cast<size_t>(n));
    // vswprintf reports both "too small" and encoding errors as -1; cap the growth.
    if (buffer.size() >= (size_t{1} << 24)) return {};
    buffer.resize(buffer.size() * 4);
  }
}

std::wstring hostFormat(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  std::wstring text = hostFormatV(format, args);
  va_end(args);
  return text;
}
