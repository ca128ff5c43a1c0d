// Basic types of the host's C-level (ADS) interface.
#pragma once

#include "adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
using ads_pointp = ads_real*;
using ads_name = Adesk::Int64[2];
using ads_namep = Adesk::Int64*;
using ads_matrix = ads_real[4][4];

enum { X = 0, Y = 1, Z = 2 };
