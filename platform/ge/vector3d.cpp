// AcGeVector3d and AcGePoint3d operations that need matrices or planes.
#include <cmath>
#include <numbers>

#include "ge/arbitrary_axis.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec2d.h"
#include "gevec3d.h"

namespace {

// Solves a * axisU + b * axisV ~= v in the least-squares sense (the axes need not be orthogonal).
AcGeVector2d planeComponents(const AcGePlanarEnt& pln, const AcGeVector3d& v) {
  AcGePoint3d origin;
  AcGeVector3d u, w;
  pln.getCoordSystem(origin, u, w);
  const double uu = u.dotProduct(u), uw = u.dotProduct(w), ww = w.dotProduct(w);
  const double bu = v.dotProduct(u), bw = v.dotProduct(w);
  const double det = uu * ww - uw * uw;
  if (det == 0.0) return {};
  return {(bu * ww - bw * uw) / det, (bw * uu - bu * uw) / det};
}

}  // namespace

AcGeVector3d::AcGeVector3d(const AcGePlanarEnt& pln, const AcGeVector2d& vec) { set(pln, vec); }

AcGeVector3d& AcGeVector3d::set(const AcGePlanarEnt& pln, const AcGeVector2d& vec) {
  AcGePoint3d origin;
  AcGeVector3d u, v;
  pln.getCoordSystem(origin, u, v);
  return *this = u * vec.x + v * vec.y;
}

AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
  return {m(0, 0) * v.x + m(0, 1) * v.y + m(0, 2) * v.z, m(1, 0) * v.x + m(1, 1) * v.y + m(1, 2) * v.z,
          m(2, 0) * v.x + m(2, 1) * v.y + m(2, 2) * v.z};
}

AcGeVector3d& AcGeVector3d::setToProduct(const AcGeMatrix3d& mat, const AcGeVector3d& vec) { return *this = mat * vec; }
AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& leftSide) { return *this = leftSide * *this; }

AcGeVector3d& AcGeVector3d::rotateBy(double ang, const AcGeVector3d& axis) {
  const double len = axis.length();
  if (len == 0.0) return *this;
  // Rodrigues' rotation formula.
  const AcGeVector3d k = axis / len;
  const double c = std::cos(ang), s = std::sin(ang);
  return *this = *this * c + k.crossProduct(*this) * s + k * (k.dotProduct(*this) * (1.0 - c));
}

AcGeVector3d& AcGeVector3d::mirror(const AcGeVector3d& normalToPlane) {
  const double l2 = normalToPlane.lengthSqrd();
  if (l2 == 0.0) return *this;
  return *this -= normalToPlane * (2.0 * dotProduct(normalToPlane) / l2);
}

AcGeVector2d AcGeVector3d::convert2d(const AcGePlanarEnt& pln) const { return planeComponents(pln, *this); }

AcGeVector3d AcGeVector3d::perpVector() const {
  const double len = length();
  if (len == 0.0) return {};
  AcGeVector3d xAxis, yAxis;
  tdhost::ge::arbitraryAxes(*this, xAxis, yAxis);
  // The arbitrary x axis is ref x n, which for n in the XY plane is n turned +90 degrees about z.
  return xAxis * len;
}

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const {
  const double a = angleTo(v);
  if (refVec.dotProduct(crossProduct(v)) >= 0.0) return a;
  return 2.0 * std::numbers::pi - a;
}

double AcGeVector3d::angleOnPlane(const AcGePlanarEnt& pln) const {
  AcGePoint3d origin;
  AcGeVector3d u, v;
  pln.getCoordSystem(origin, u, v);
  const AcGeVector3d n = pln.normal();
  const AcGeVector3d p = orthoProject(n);
  if (p.isZeroLength()) return 0.0;
  const AcGeVector3d uu = u.normal();
  double a = std::atan2(n.crossProduct(uu).dotProduct(p), uu.dotProduct(p));
  if (a < 0.0) a += 2.0 * std::numbers::pi;
  return a;
}

AcGeVector3d AcGeVector3d::project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection) const {
  const double denom = projectDirection.dotProduct(planeNormal);
  if (std::fabs(denom) <= AcGeContext::gTol.equalVector() * projectDirection.length() * planeNormal.length())
    return *this;
  return *this - projectDirection * (dotProduct(planeNormal) / denom);
}

AcGeVector3d AcGeVector3d::orthoProject(const AcGeVector3d& planeNormal) const { return project(planeNormal, planeNormal); }

AcGePoint3d::AcGePoint3d(const AcGePlanarEnt& pln, const AcGePoint2d& pnt2d) { set(pln, pnt2d); }

AcGePoint3d& AcGePoint3d::set(const AcGePlanarEnt& pln, const AcGePoint2d& pnt2d) { return *this = pln.evalPoint(pnt2d); }

AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
  return {m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2) * p.z + m(0, 3),
          m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2) * p.z + m(1, 3),
          m(2, 0) * p.x + m(2, 1) * p.y + m(2, 2) * p.z + m(2, 3)};
}

AcGePoint3d& AcGePoint3d::setToProduct(const AcGeMatrix3d& mat, const AcGePoint3d& pnt) { return *this = mat * pnt; }
AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& leftSide) { return *this = leftSide * *this; }

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint) {
  AcGeVector3d d = *this - wrtPoint;
  d.rotateBy(angle, vec);
  return *this = wrtPoint + d;
}

AcGePoint3d& AcGePoint3d::mirror(const AcGePlane& pln) {
  const AcGeVector3d n = pln.normal();
  return *this -= n * (2.0 * pln.signedDistanceTo(*this));
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlanarEnt& pln) const {
  const AcGeVector2d v = planeComponents(pln, *this - pln.pointOnPlane());
  return {v.x, v.y};
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& pln, const AcGeVector3d& vec) const {
  AcGePoint3d result;
  pln.project(*this, vec, result);
  return result;
}

AcGePoint3d AcGePoint3d::orthoProject(const AcGePlane& pln) const { return pln.closestPointTo(*this); }
