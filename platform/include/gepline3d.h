// AcGePolyline3d under a second name.
#pragma once

#include "geplin3d.h"
