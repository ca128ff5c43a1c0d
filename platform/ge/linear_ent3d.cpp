// AcGeLinearEnt3d and its lines, rays and segments.
#include "gelent3d.h"

#include <algorithm>
#include <cmath>

#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"
#include "geplane.h"

namespace {

// The parameter interval widened by a point tolerance converted to parameter units.
bool paramWithin(const AcGeLinearEnt3d& ent, double t, double vecLength, const AcGeTol& tol) {
  AcGeInterval range;
  ent.getInterval(range);
  const double slack = vecLength > 0.0 ? tol.equalPoint() / vecLength : 0.0;
  return (!range.isBoundedBelow() || t >= range.lowerBound() - slack) &&
         (!range.isBoundedAbove() || t <= range.upperBound() + slack);
}

}  // namespace

double AcGeLinearEnt3d::footParam(const AcGePoint3d& pnt) const {
  const double l2 = mVec.lengthSqrd();
  return l2 > 0.0 ? (pnt - mPoint).dotProduct(mVec) / l2 : 0.0;
}

double AcGeLinearEnt3d::clampParam(double t) const {
  AcGeInterval range;
  getInterval(range);
  if (range.isBoundedBelow()) t = std::max(t, range.lowerBound());
  if (range.isBoundedAbove()) t = std::min(t, range.upperBound());
  return t;
}

double AcGeLinearEnt3d::projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const {
  // Closest point in the plane normal to unitDir: drop the components along it.
  const AcGeVector3d v = mVec - unitDir * mVec.dotProduct(unitDir);
  const double l2 = v.lengthSqrd();
  if (l2 <= AcGeContext::gTol.equalVector() * AcGeContext::gTol.equalVector() * mVec.lengthSqrd())
    return closestParam(pnt);  // seen end-on, every point projects alike
  AcGeVector3d w = pnt - mPoint;
  w -= unitDir * w.dotProduct(unitDir);
  return clampParam(w.dotProduct(v) / l2);
}

double AcGeLinearEnt3d::paramOf(const AcGePoint3d& pnt, const AcGeTol&) const { return footParam(pnt); }

double AcGeLinearEnt3d::length(double fromParam, double toParam, double) const {
  return mVec.length() * std::fabs(toParam - fromParam);
}

double AcGeLinearEnt3d::paramAtLength(double datumParam, double length, bool posParamDir, double) const {
  const double len = mVec.length();
  if (len == 0.0) return datumParam;
  return datumParam + (posParamDir ? length : -length) / len;
}

bool AcGeLinearEnt3d::intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& intPt, const AcGeTol& tol) const {
  const AcGeVector3d& d1 = mVec;
  const AcGeVector3d& d2 = line.mVec;
  if (d1.isZeroLength(tol) || d2.isZeroLength(tol) || d1.isParallelTo(d2, tol)) return false;
  // Closest points of two lines (Eberly, "Distance Between Two Lines").
  const AcGeVector3d w = mPoint - line.mPoint;
  const double a = d1.dotProduct(d1), b = d1.dotProduct(d2), c = d2.dotProduct(d2);
  const double d = d1.dotProduct(w), e = d2.dotProduct(w);
  const double den = a * c - b * b;
  const double s = (b * e - c * d) / den;
  const double t = (a * e - b * d) / den;
  const AcGePoint3d p1 = evalPoint(s), p2 = line.evalPoint(t);
  if (p1.distanceTo(p2) > tol.equalPoint()) return false;
  if (!paramWithin(*this, s, std::sqrt(a), tol) || !paramWithin(line, t, std::sqrt(c), tol)) return false;
  intPt = p1 + (p2 - p1) * 0.5;
  return true;
}

bool AcGeLinearEnt3d::intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& intPnt, const AcGeTol& tol) const {
  return plane.intersectWith(*this, intPnt, tol);
}

bool AcGeLinearEnt3d::isOn(const AcGePlane& plane, const AcGeTol& tol) const {
  return plane.isOn(mPoint, tol) && plane.isOn(mPoint + mVec.normal(), tol);
}

bool AcGeLinearEnt3d::isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
  return mVec.isParallelTo(line.mVec, tol);
}
bool AcGeLinearEnt3d::isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
  return plane.isParallelTo(*this, tol);
}
bool AcGeLinearEnt3d::isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
  return mVec.isPerpendicularTo(line.mVec, tol);
}
bool AcGeLinearEnt3d::isPerpendicularTo(const AcGePlanarEnt& plane, const AcGeTol& tol) const {
  return plane.isPerpendicularTo(*this, tol);
}

bool AcGeLinearEnt3d::isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol) const {
  if (!isParallelTo(line, tol)) return false;
  const double t = footParam(line.mPoint);
  return (mPoint + mVec * t).distanceTo(line.mPoint) <= tol.equalPoint();
}

void AcGeLinearEnt3d::getPerpPlane(const AcGePoint3d& pnt, AcGePlane& plane) const { plane.set(pnt, direction()); }

void AcGeLinearEnt3d::getLine(AcGeLine3d& line) const { line.set(mPoint, mVec); }

bool AcGeLinearEnt3d::isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol) const {
  if (ent.type() != type()) return false;
  const auto& other = static_cast<const AcGeLinearEnt3d&>(ent);
  return mPoint.isEqualTo(other.mPoint, tol) && (mPoint + mVec).isEqualTo(other.mPoint + other.mVec, tol);
}

AcGeEntity3d& AcGeLinearEnt3d::transformBy(const AcGeMatrix3d& xfm) {
  mPoint.transformBy(xfm);
  mVec.transformBy(xfm);
  return *this;
}

void AcGeLineSeg3d::getBisector(AcGePlane& plane) const { plane.set(midPoint(), direction()); }
