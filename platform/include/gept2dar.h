// AcGePoint2dArray: the host's growable array of that element.
#pragma once

#include "acarray.h"
#include "gepnt2d.h"
