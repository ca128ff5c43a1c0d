// Shared helpers of the entity kinds: object coordinate systems, transforms, trait copies.
#pragma once

#include <cmath>

#include "dbmain.h"
#include "ge/arbitrary_axis.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

namespace tdhost {

inline constexpr double kTwoPi = 6.283185307179586;

// The entity's layer, colour, linetype, scale and visibility on a new entity.
void copyTraits(const AcDbEntity& from, AcDbEntity& to);

// Object coordinate system of a normal (arbitrary-axis rule) as a matrix OCS -> world.
inline AcGeMatrix3d ocsToWorld(const AcGeVector3d& normal) {
  AcGeVector3d x, y;
  ge::arbitraryAxes(normal, x, y);
  AcGeMatrix3d m;
  m.setCoordSystem(AcGePoint3d::kOrigin, x, y, normal.normal());
  return m;
}

// The angle of direction v in the OCS of normal, in [0, 2pi).
inline double ocsAngle(const AcGeVector3d& v, const AcGeVector3d& normal) {
  AcGeVector3d x, y;
  ge::arbitraryAxes(normal, x, y);
  double a = std::atan2(v.dotProduct(y), v.dotProduct(x));
  return a < 0.0 ? a + kTwoPi : a;
}

inline double wrapAngle(double a) {
  a = std::fmod(a, kTwoPi);
  return a < 0.0 ? a + kTwoPi : a;
}

// The uniform scale of a matrix whose linear part is a scaled rotation or reflection; false for
// a non-uniform one.
inline bool uniformScale(const AcGeMatrix3d& m, double& scale) {
  if (!m.isUniScaledOrtho()) return false;
  AcGeVector3d x = AcGeVector3d::kXAxis;
  x.transformBy(m);
  scale = x.length();
  return scale > 0.0;
}

// The normal after a transform (unit); the reflections keep it a proper normal.
inline AcGeVector3d transformNormal(const AcGeVector3d& n, const AcGeMatrix3d& m) {
  AcGeVector3d x, y;
  ge::arbitraryAxes(n, x, y);
  x.transformBy(m);
  y.transformBy(m);
  AcGeVector3d r = x.crossProduct(y);
  return r.isZeroLength() ? n : r.normal();
}

}  // namespace tdhost
