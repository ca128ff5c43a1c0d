// AcGeVector2dArray: the host's growable array of that element.
#pragma once

#include "acarray.h"
#include "gevec2d.h"
