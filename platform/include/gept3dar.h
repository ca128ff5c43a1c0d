// AcGePoint3dArray: the host's growable array of that element.
#pragma once

#include "acarray.h"
#include "gepnt3d.h"
