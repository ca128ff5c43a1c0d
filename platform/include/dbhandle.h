// AcDbHandle: the persistent 64-bit name of a database object, written as hexadecimal text.
#pragma once

#include <cstddef>

#include "adesk.h"
#include "platformexport.h"

class TDHOST_API AcDbHandle {
 public:
  AcDbHandle() = default;
  AcDbHandle(int lo, int hi)
      : mValue((static_cast<Adesk::UInt64>(static_cast<Adesk::UInt32>(hi)) << 32) | static_cast<Adesk::UInt32>(lo)) {}
  AcDbHandle(Adesk::UInt64 value) : mValue(value) {}  // NOLINT: implicit as in the SDK
  // Parses hexadecimal text ("1F", case-insensitive); text that is not hexadecimal, empty or
  // longer than 16 digits gives the null handle.
  explicit AcDbHandle(const ACHAR* text) { *this = text; }

  AcDbHandle& operator=(Adesk::UInt64 value) { mValue = value; return *this; }
  AcDbHandle& operator=(const ACHAR* text);
  operator Adesk::UInt64() const { return mValue; }

  bool isNull() const { return mValue == 0; }
  void setNull() { mValue = 0; }
  Adesk::UInt32 low() const { return static_cast<Adesk::UInt32>(mValue); }
  Adesk::UInt32 high() const { return static_cast<Adesk::UInt32>(mValue >> 32); }
  void setLow(Adesk::UInt32 low) { mValue = (mValue & 0xFFFFFFFF00000000ull) | low; }
  void setHigh(Adesk::UInt32 high) { mValue = (mValue & 0xFFFFFFFFull) | (static_cast<Adesk::UInt64>(high) << 32); }

  // Upper-case hexadecimal without leading zeros ("0" for the null handle). The buffer
  // must hold 17 characters for the longest handle; the one-argument form assumes so.
  bool getIntoAsciiBuffer(ACHAR* buffer, size_t bufferLength) const;
  bool getIntoAsciiBuffer(ACHAR* buffer) const { return getIntoAsciiBuffer(buffer, 17); }

  void increment() { ++mValue; }
  void decrement() { --mValue; }
  AcDbHandle& operator++() { ++mValue; return *this; }
  AcDbHandle operator++(int) { AcDbHandle old = *this; ++mValue; return old; }
  AcDbHandle operator+(const AcDbHandle& other) const { return AcDbHandle(mValue + other.mValue); }
  AcDbHandle& operator+=(const AcDbHandle& other) { mValue += other.mValue; return *this; }
  AcDbHandle operator-(const AcDbHandle& other) const { return AcDbHandle(mValue - other.mValue); }

  bool operator==(const AcDbHandle& o) const { return mValue == o.mValue; }
  bool operator!=(const AcDbHandle& o) const { return mValue != o.mValue; }
  bool operator<(const AcDbHandle& o) const { return mValue < o.mValue; }
  bool operator>(const AcDbHandle& o) const { return mValue > o.mValue; }
  bool operator<=(const AcDbHandle& o) const { return mValue <= o.mValue; }
  bool operator>=(const AcDbHandle& o) const { return mValue >= o.mValue; }

  // The eight-byte form used by resbuf ihandle: most significant byte first.
  void copyToOldType(unsigned char hand[8]) const;
  void copyFromOldType(const unsigned char hand[8]);

 private:
  Adesk::UInt64 mValue = 0;
};
