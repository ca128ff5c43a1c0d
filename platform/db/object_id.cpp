// Shared constants of object ids.
#include "dbid.h"

const AcDbObjectId AcDbObjectId::kNull;
