// acadErrorStatusText: the printable name of a host status code.
#pragma once

#include "acadstrc.h"
#include "adesk.h"
#include "platformexport.h"

// The SDK name of `es` ("eOk", "eNotOpenForWrite"...); a static string, never null.
TDHOST_API const ACHAR* acadErrorStatusText(Acad::ErrorStatus es);
