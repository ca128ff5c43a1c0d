// The geometry library's global constants and tolerance.
#include "gegbl.h"
#include "gelnsg3d.h"
#include "geline3d.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gescl3d.h"
#include "getol.h"
#include "gevec2d.h"
#include "gevec3d.h"

AcGeTol AcGeContext::gTol;

const AcGePoint3d AcGePoint3d::kOrigin(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kIdentity(0.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kXAxis(1.0, 0.0, 0.0);
const AcGeVector3d AcGeVector3d::kYAxis(0.0, 1.0, 0.0);
const AcGeVector3d AcGeVector3d::kZAxis(0.0, 0.0, 1.0);

const AcGePoint2d AcGePoint2d::kOrigin(0.0, 0.0);
const AcGeVector2d AcGeVector2d::kIdentity(0.0, 0.0);
const AcGeVector2d AcGeVector2d::kXAxis(1.0, 0.0);
const AcGeVector2d AcGeVector2d::kYAxis(0.0, 1.0);

const AcGeMatrix2d AcGeMatrix2d::kIdentity;
const AcGeMatrix3d AcGeMatrix3d::kIdentity;
const AcGeScale3d AcGeScale3d::kIdentity(1.0, 1.0, 1.0);

const AcGePlane AcGePlane::kXYPlane(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(1.0, 0.0, 0.0), AcGeVector3d(0.0, 1.0, 0.0));
const AcGePlane AcGePlane::kYZPlane(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(0.0, 1.0, 0.0), AcGeVector3d(0.0, 0.0, 1.0));
const AcGePlane AcGePlane::kZXPlane(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(0.0, 0.0, 1.0), AcGeVector3d(1.0, 0.0, 0.0));

const AcGeLine3d AcGeLine3d::kXAxis(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(1.0, 0.0, 0.0));
const AcGeLine3d AcGeLine3d::kYAxis(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(0.0, 1.0, 0.0));
const AcGeLine3d AcGeLine3d::kZAxis(AcGePoint3d(0.0, 0.0, 0.0), AcGeVector3d(0.0, 0.0, 1.0));
