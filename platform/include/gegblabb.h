// Short names of the geometry library's global enumerations.
#pragma once

#include "gegbl.h"

using AcGeError = AcGe::ErrorCondition;
using AcGeIntersectError = int;
