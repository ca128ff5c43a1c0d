// AcDbHandle text conversions and the eight-byte form.
#include "dbhandle.h"

#include <cwctype>

AcDbHandle& AcDbHandle::operator=(const ACHAR* text) {
  mValue = 0;
  if (text == nullptr || *text == 0) return *this;
  Adesk::UInt64 value = 0;
  int digits = 0;
  for (const ACHAR* p = text; *p; ++p) {
    wint_t c = static_cast<wint_t>(*p);
    int d;
    if (c >= L'0' && c <= L'9') d = static_cast<int>(c - L'0');
    else if (c >= L'a' && c <= L'f') d = static_cast<int>(c - L'a' + 10);
    else if (c >= L'A' && c <= L'F') d = static_cast<int>(c - L'A' + 10);
    else return *this;
    if (++digits > 16) return *this;
    value = (value << 4) | static_cast<Adesk::UInt64>(d);
  }
  mValue = value;
  return *this;
}

bool AcDbHandle::getIntoAsciiBuffer(ACHAR* buffer, size_t bufferLength) const {
  if (buffer == nullptr || bufferLength == 0) return false;
  ACHAR digits[17];
  int n = 0;
  Adesk::UInt64 v = mValue;
  do {
    digits[n++] = L"0123456789ABCDEF"[v & 0xF];
    v >>= 4;
  } while (v != 0);
  if (static_cast<size_t>(n) + 1 > bufferLength) {
    buffer[0] = 0;
    return false;
  }
  for (int i = 0; i < n; ++i) buffer[i] = digits[n - 1 - i];
  buffer[n] = 0;
  return true;
}

void AcDbHandle::copyToOldType(unsigned char hand[8]) const {
  for (int i = 0; i < 8; ++i) hand[i] = static_cast<unsigned char>(mValue >> (56 - 8 * i));
}

void AcDbHandle::copyFromOldType(const unsigned char hand[8]) {
  mValue = 0;
  for (int i = 0; i < 8; ++i) mValue = (mValue << 8) | hand[i];
}
