// AcGeEntity3d helpers, AcGePlanarEnt and AcGePlane.
#include "geplane.h"

#include <cmath>

#include "ge/arbitrary_axis.h"
#include "gelent3d.h"
#include "geline3d.h"
#include "gemat3d.h"

AcGeEntity3d::~AcGeEntity3d() = default;

AcGeEntity3d& AcGeEntity3d::translateBy(const AcGeVector3d& v) { return transformBy(AcGeMatrix3d::translation(v)); }
AcGeEntity3d& AcGeEntity3d::rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint) {
  return transformBy(AcGeMatrix3d::rotation(angle, vec, wrtPoint));
}
AcGeEntity3d& AcGeEntity3d::mirror(const AcGePlane& plane) { return transformBy(AcGeMatrix3d::mirroring(plane)); }
AcGeEntity3d& AcGeEntity3d::scaleBy(double f, const AcGePoint3d& wrtPoint) {
  return transformBy(AcGeMatrix3d::scaling(f, wrtPoint));
}

void AcGePlanarEnt::setFrame(const AcGePoint3d& origin, const AcGeVector3d& axisU, const AcGeVector3d& axisV) {
  mOrigin = origin;
  mAxisU = axisU;
  mAxisV = axisV;
  const AcGeVector3d n = axisU.crossProduct(axisV);
  const double len = n.length();
  mNormal = len > 0.0 ? n / len : AcGeVector3d();
}

void AcGePlanarEnt::transformFrame(const AcGeMatrix3d& xfm) {
  // A mirroring matrix flips the normal with the axes, keeping the frame right-handed.
  setFrame(xfm * mOrigin, xfm * mAxisU, xfm * mAxisV);
}

void AcGePlanarEnt::getCoefficients(double& a, double& b, double& c, double& d) const {
  a = mNormal.x;
  b = mNormal.y;
  c = mNormal.z;
  d = -mNormal.dotProduct(mOrigin.asVector());
}

AcGePoint2d AcGePlanarEnt::paramOf(const AcGePoint3d& pnt, const AcGeTol&) const { return pnt.convert2d(*this); }

AcGePoint3d AcGePlanarEnt::closestPointTo(const AcGePoint3d& pnt, const AcGeTol&) const {
  return pnt - mNormal * (pnt - mOrigin).dotProduct(mNormal);
}

bool AcGePlanarEnt::project(const AcGePoint3d& p, const AcGeVector3d& direction, AcGePoint3d& projP,
                            const AcGeTol& tol) const {
  const double dn = direction.dotProduct(mNormal);
  if (std::fabs(dn) <= tol.equalVector() * direction.length() || mNormal.isZeroLength()) {
    projP = p;
    return false;
  }
  projP = p - direction * ((p - mOrigin).dotProduct(mNormal) / dn);
  return true;
}

bool AcGePlanarEnt::intersectWith(const AcGeLinearEnt3d& linEnt, AcGePoint3d& pnt, const AcGeTol& tol) const {
  const AcGeVector3d d = linEnt.evalPoint(1.0) - linEnt.evalPoint(0.0);
  const double dn = d.dotProduct(mNormal);
  if (std::fabs(dn) <= tol.equalVector() * d.length()) return false;
  const double t = (mOrigin - linEnt.pointOnLine()).dotProduct(mNormal) / dn;
  if (!linEnt.isOn(t, tol)) return false;
  pnt = linEnt.evalPoint(t);
  return true;
}

bool AcGePlanarEnt::isParallelTo(const AcGeLinearEnt3d& linEnt, const AcGeTol& tol) const {
  return linEnt.direction().isPerpendicularTo(mNormal, tol);
}
bool AcGePlanarEnt::isParallelTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
  return mNormal.isParallelTo(other.mNormal, tol);
}
bool AcGePlanarEnt::isPerpendicularTo(const AcGeLinearEnt3d& linEnt, const AcGeTol& tol) const {
  return linEnt.direction().isParallelTo(mNormal, tol);
}
bool AcGePlanarEnt::isPerpendicularTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
  return mNormal.isPerpendicularTo(other.mNormal, tol);
}
bool AcGePlanarEnt::isCoplanarTo(const AcGePlanarEnt& other, const AcGeTol& tol) const {
  return isParallelTo(other, tol) && std::fabs((other.mOrigin - mOrigin).dotProduct(mNormal)) <= tol.equalPoint();
}

bool AcGePlane::isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol) const {
  if (ent.type() != AcGe::kPlane) return false;
  const auto& other = static_cast<const AcGePlane&>(ent);
  return mOrigin.isEqualTo(other.mOrigin, tol) && mAxisU.isEqualTo(other.mAxisU, tol) &&
         mAxisV.isEqualTo(other.mAxisV, tol);
}

bool AcGePlane::intersectWith(const AcGePlane& other, AcGeLine3d& resultLine, const AcGeTol& tol) const {
  const AcGeVector3d dir = mNormal.crossProduct(other.mNormal);
  if (dir.length() <= tol.equalVector()) return false;
  // The point of the line nearest the world origin solves n1.p = d1, n2.p = d2, dir.p = 0.
  const double d1 = mNormal.dotProduct(mOrigin.asVector()), d2 = other.mNormal.dotProduct(other.mOrigin.asVector());
  const AcGeVector3d p = (other.mNormal.crossProduct(dir) * d1 + dir.crossProduct(mNormal) * d2) / dir.lengthSqrd();
  resultLine.set(AcGePoint3d::kOrigin + p, dir.normal());
  return true;
}

AcGePlane& AcGePlane::set(const AcGePoint3d& origin, const AcGeVector3d& normal) {
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(normal, x, y);
  setFrame(origin, x, y);
  if (normal.isZeroLength()) mNormal = AcGeVector3d();
  return *this;
}

AcGePlane& AcGePlane::set(const AcGePoint3d& pntU, const AcGePoint3d& org, const AcGePoint3d& pntV) {
  setFrame(org, pntU - org, pntV - org);
  return *this;
}

AcGePlane& AcGePlane::set(double a, double b, double c, double d) {
  const AcGeVector3d n(a, b, c);
  const double l2 = n.lengthSqrd();
  const AcGePoint3d origin = l2 > 0.0 ? AcGePoint3d::kOrigin - n * (d / l2) : AcGePoint3d::kOrigin;
  return set(origin, n);
}

AcGePlane& AcGePlane::set(const AcGePoint3d& org, const AcGeVector3d& uAxis, const AcGeVector3d& vAxis) {
  setFrame(org, uAxis, vAxis);
  return *this;
}
