// Basic integer and boolean types of the host SDK.
#pragma once

#include <cstddef>
#include <cstdint>

struct Adesk {
  using Int8 = std::int8_t;
  using Int16 = std::int16_t;
  using Int32 = std::int32_t;
  using Int64 = std::int64_t;
  using UInt8 = std::uint8_t;
  using UInt16 = std::uint16_t;
  using UInt32 = std::uint32_t;
  using UInt64 = std::uint64_t;
  using IntPtr = std::intptr_t;
  using UIntPtr = std::uintptr_t;
  using LongPtr = std::intptr_t;
  using ULongPtr = std::uintptr_t;
  using GsMarker = std::intptr_t;
  using Boolean = bool;
  using Byte = unsigned char;
  static constexpr Boolean kFalse = false;
  static constexpr Boolean kTrue = true;
};

// The host builds with wide characters throughout.
#ifndef ACHAR_DEFINED
#define ACHAR_DEFINED
using ACHAR = wchar_t;
#endif
#ifndef ACRX_T
#define ACRX_T(x) L##x
#endif
#ifndef _T
#define _T(x) L##x
#endif
