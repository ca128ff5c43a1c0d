// printf-style formatting of wide text with the host's conventions (%s/%c take wide arguments,
// %hs/%hc narrow ones, %I64d a 64-bit integer), on top of the C library's vswprintf.
#pragma once

#include <cstdarg>
#include <string>

#include "platformexport.h"

TDHOST_API std::wstring hostFormatV(const wchar_t* format, va_list args);
TDHOST_API std::wstring hostFormat(const wchar_t* format, ...);
