// The geometry library's global constants and tolerance.
#include "gepnt3d.h"
#include "gevec3d.h"
#include "getol.h"

AcGeTol AcGeContext::gTol;

const AcGePoint3d AcGePoint3d::kOrigin(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kIdentity(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);
