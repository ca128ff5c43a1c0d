// AcDbObjectIdArray: the host's array of object ids.
#pragma once

#include "acarray.h"
#include "dbid.h"

using AcDbObjectIdArray = AcArray<AcDbObjectId>;
