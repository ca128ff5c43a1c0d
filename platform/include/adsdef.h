// Basic types of the host's C-level (ADS) interface, with the result buffer.
#pragma once

#include "adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
using ads_pointp = ads_real*;
using ads_name = Adesk::Int64[2];
using ads_namep = Adesk::Int64*;
using ads_matrix = ads_real[4][4];

enum { X = 0, Y = 1, Z = 2 };

#pragma pack(push, 8)

struct ads_binary {
  short clen;  // byte count of buf
  char* buf;
};

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  Adesk::Int64 rlname[2];
  Adesk::Int64 mnLongPtr;
  Adesk::Int32 rlong;
  Adesk::Int64 mnInt64;
  struct ads_binary rbinary;
  unsigned char ihandle[8];
};

// One element of a result-buffer chain: a DXF group code or RT type code and its value.
struct resbuf {
  struct resbuf* rbnext;
  short restype;
  union ads_u_val resval;
};

#pragma pack(pop)

using pResbuf = resbuf*;
using kpResbuf = const resbuf*;
