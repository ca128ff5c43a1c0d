// The string and container classes' error: thrown for an invalid argument, as the host's does.
#pragma once

#include <cstdint>

#include "platformexport.h"

using HRESULT = std::int32_t;

#ifndef E_INVALIDARG
#define E_INVALIDARG (static_cast<HRESULT>(0x80070057L))
#endif
#ifndef E_OUTOFMEMORY
#define E_OUTOFMEMORY (static_cast<HRESULT>(0x8007000EL))
#endif

class TDHOST_API CAtlException {
 public:
  explicit CAtlException(HRESULT hr) : m_hr(hr) {}
  operator HRESULT() const { return m_hr; }
  HRESULT m_hr;
};

[[noreturn]] TDHOST_API void AtlThrow(HRESULT hr);
