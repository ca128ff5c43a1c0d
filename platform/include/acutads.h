// Result-buffer and string utilities of the host (acut...).
#pragma once

#include "adscodes.h"
#include "adsdef.h"
#include "platformexport.h"

// Builds a chain from (code, value) pairs ending with 0 or RTNONE. Values by code type:
// strings const ACHAR*; reals double; 2D/3D points const ads_real*; 16-bit codes int;
// 32-bit codes Adesk::Int32; 64-bit codes Adesk::Int64; entity names const ads_name;
// binary chunks const ads_binary*; RTLB/RTLE/RTDOTE/RTNIL/RTT/RTVOID take no value. Null on
// an unknown code. The caller releases the chain with acutRelRb.
TDHOST_API resbuf* acutBuildList(int rtype, ...);
// A new element of type `v` with a zero value and no successor.
TDHOST_API resbuf* acutNewRb(int v);
// Releases a whole chain and the strings and binary data it owns. Returns RTNORM.
TDHOST_API int acutRelRb(resbuf* rb);

// Host strings: a new copy released with acutDelString.
TDHOST_API ACHAR* acutNewString(const ACHAR* text);
TDHOST_API void acutDelString(ACHAR*& text);
