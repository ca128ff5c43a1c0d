// CStringW: the wide string class of the host's Windows libraries (the subset plug-ins use).
//
// Like the original, the stored length is independent of embedded NUL characters:
// SetAt(i, 0) shortens the text seen through the C-string view but not GetLength().
#pragma once

#include <cstdarg>
#include <string>

#include "atlexcept.h"
#include "platformexport.h"

class TDHOST_API CStringW {
 public:
  CStringW() = default;
  CStringW(const wchar_t* text) : mText(text ? text : L"") {}
  CStringW(const wchar_t* text, int length) : mText(text, static_cast<size_t>(length < 0 ? 0 : length)) {}
  CStringW(wchar_t ch, int repeat = 1) : mText(static_cast<size_t>(repeat < 0 ? 0 : repeat), ch) {}
  explicit CStringW(const std::wstring& text) : mText(text) {}

  CStringW& operator=(const wchar_t* text) { mText = text ? text : L""; return *this; }
  CStringW& operator+=(const CStringW& other) { mText += other.mText; return *this; }
  CStringW& operator+=(const wchar_t* text) { if (text) mText += text; return *this; }
  CStringW& operator+=(wchar_t ch) { mText += ch; return *this; }

  operator const wchar_t*() const { return mText.c_str(); }
  const wchar_t* GetString() const { return mText.c_str(); }
  int GetLength() const { return static_cast<int>(mText.size()); }
  bool IsEmpty() const { return mText.empty(); }
  void Empty() { mText.clear(); }

  // Index outside [0, GetLength()) throws CAtlException(E_INVALIDARG).
  wchar_t GetAt(int index) const;
  void SetAt(int index, wchar_t ch);
  wchar_t operator[](int index) const { return GetAt(index); }

  // printf-style formatting with the host's conventions: %s and %c take wide arguments.
  void Format(const wchar_t* format, ...);
  void FormatV(const wchar_t* format, va_list args);
  void AppendFormat(const wchar_t* format, ...);

  int Compare(const wchar_t* other) const;
  int CompareNoCase(const wchar_t* other) const;
  int Find(const wchar_t* sub, int start = 0) const;
  int Find(wchar_t ch, int start = 0) const;
  CStringW Left(int count) const;
  CStringW Right(int count) const;
  CStringW Mid(int first) const;
  CStringW Mid(int first, int count) const;
  CStringW& MakeUpper();
  CStringW& MakeLower();
  CStringW& Trim();
  CStringW& TrimLeft();
  CStringW& TrimRight();

  friend CStringW operator+(const CStringW& a, const CStringW& b) { return CStringW(a.mText + b.mText); }
  friend bool operator==(const CStringW& a, const CStringW& b) { return a.mText == b.mText; }
  friend bool operator==(const CStringW& a, const wchar_t* b) { return a.mText == (b ? b : L""); }

 private:
  std::wstring mText;
};

using CString = CStringW;
