// CStringW members that are not trivial enough to stay inline.
#include "atlstr.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

#include "wide_format.h"

void AtlThrow(HRESULT hr) { throw CAtlException(hr); }

wchar_t CStringW::GetAt(int index) const {
  if (index < 0 || index >= GetLength()) AtlThrow(E_INVALIDARG);
  return mText[static_cast<size_t>(index)];
}

void CStringW::SetAt(int index, wchar_t ch) {
  if (index < 0 || index >= GetLength()) AtlThrow(E_INVALIDARG);
  mText[static_cast<size_t>(index)] = ch;
}

void CStringW::Format(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  mText = hostFormatV(format, args);
  va_end(args);
}

void CStringW::FormatV(const wchar_t* format, va_list args) { mText = hostFormatV(format, args); }

void CStringW::AppendFormat(const wchar_t* format, ...) {
  va_list args;
  va_start(args, format);
  mText += hostFormatV(format, args);
  va_end(args);
}

int CStringW::Compare(const wchar_t* other) const { return std::wcscmp(mText.c_str(), other ? other : L""); }

int CStringW::CompareNoCase(const wchar_t* other) const {
  return wcscasecmp(mText.c_str(), other ? other : L"");
}

int CStringW::Find(const wchar_t* sub, int start) const {
  if (!sub || start < 0 || start > GetLength()) return -1;
  const size_t at = mText.find(sub, static_cast<size_t>(start));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

int CStringW::Find(wchar_t ch, int start) const {
  if (start < 0 || start > GetLength()) return -1;
  const size_t at = mText.find(ch, static_cast<size_t>(start));
  return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

CStringW CStringW::Left(int count) const {
  return CStringW(mText.substr(0, static_cast<size_t>(std::clamp(count, 0, GetLength()))));
}

CStringW CStringW::Right(int count) const {
  const int n = std::clamp(count, 0, GetLength());
  return CStringW(mText.substr(static_cast<size_t>(GetLength() - n)));
}

CStringW CStringW::Mid(int first) const { return Mid(first, GetLength()); }

CStringW CStringW::Mid(int first, int count) const {
  const int from = std::clamp(first, 0, GetLength());
  const int n = std::clamp(count, 0, GetLength() - from);
  return CStringW(mText.substr(static_cast<size_t>(from), static_cast<size_t>(n)));
}

CStringW& CStringW::MakeUpper() {
  for (auto& c : mText) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return *this;
}

CStringW& CStringW::MakeLower() {
  for (auto& c : mText) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return *this;
}

CStringW& CStringW::Trim() { return TrimRight().TrimLeft(); }

CStringW& CStringW::TrimLeft() {
  size_t i = 0;
  while (i < mText.size() && std::iswspace(static_cast<wint_t>(mText[i]))) ++i;
  mText.erase(0, i);
  return *this;
}

CStringW& CStringW::TrimRight() {
  size_t n = mText.size();
  while (n > 0 && std::iswspace(static_cast<wint_t>(mText[n - 1]))) --n;
  mText.resize(n);
  return *this;
}
