// AcGeCircArc3d: exact circular arcs; closest points, lengths and intersections are analytic.
#include "gearc3d.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "ge/arbitrary_axis.h"
#include "gelent3d.h"
#include "geline3d.h"
#include "gemat3d.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// Points where the line (point lp, direction d) meets the circle (centre c, radius r), both in one plane.
std::vector<AcGePoint3d> circleLinePoints(const AcGePoint3d& c, double r, const AcGePoint3d& lp, const AcGeVector3d& d,
                                          const AcGeTol& tol) {
  std::vector<AcGePoint3d> out;
  const double a = d.lengthSqrd();
  if (a == 0.0) return out;
  // Foot of the perpendicular from the centre, then +-h along the line.
  const double tFoot = (c - lp).dotProduct(d) / a;
  const AcGePoint3d foot = lp + d * tFoot;
  const double dist = foot.distanceTo(c);
  if (dist > r + tol.equalPoint()) return out;
  const double h2 = r * r - dist * dist;
  const double h = h2 > 0.0 ? std::sqrt(h2) : 0.0;
  if (h <= tol.equalPoint()) {
    out.push_back(foot);
    return out;
  }
  const AcGeVector3d u = d / std::sqrt(a);
  out.push_back(foot - u * h);
  out.push_back(foot + u * h);
  return out;
}

bool report(const std::vector<AcGePoint3d>& pts, int& intn, AcGePoint3d& p1, AcGePoint3d& p2) {
  intn = static_cast<int>(std::min<size_t>(pts.size(), 2));
  if (intn > 0) p1 = pts[0];
  if (intn > 1) p2 = pts[1];
  return intn > 0;
}

}  // namespace

AcGeCircArc3d& AcGeCircArc3d::setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec) {
  mNormal = normal.normal();
  AcGeVector3d r = refVec - mNormal * refVec.dotProduct(mNormal);
  if (r.isZeroLength()) {
    AcGeVector3d y;
    tdhost::ge::arbitraryAxes(mNormal, r, y);
  }
  mRefVec = r.normal();
  return *this;
}

AcGeCircArc3d& AcGeCircArc3d::setAngles(double startAngle, double endAngle) {
  double sweep = endAngle - startAngle;
  if (sweep <= 0.0) sweep += kTwoPi * std::ceil(-sweep / kTwoPi + 1e-15);
  if (sweep <= 0.0) sweep = kTwoPi;
  mStartAng = startAngle;
  mEndAng = startAngle + std::min(sweep, kTwoPi);
  return *this;
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius) {
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(nrm, x, y);
  return set(cent, nrm, x, radius, 0.0, kTwoPi);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& cent, const AcGeVector3d& nrm, const AcGeVector3d& refVec,
                                  double radius, double startAngle, double endAngle) {
  mCenter = cent;
  mRadius = radius;
  setAxes(nrm, refVec);
  return setAngles(startAngle, endAngle);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt, const AcGePoint3d& endPoint) {
  AcGeError error;
  return set(startPoint, pnt, endPoint, error);
}

AcGeCircArc3d& AcGeCircArc3d::set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt, const AcGePoint3d& endPoint,
                                  AcGeError& error) {
  const AcGeVector3d a = pnt - startPoint, b = endPoint - startPoint;
  const AcGeVector3d w = a.crossProduct(b);
  if (w.length() <= AcGeContext::gTol.equalVector() * a.length() * b.length() || a.isZeroLength() || b.isZeroLength()) {
    error = AcGe::kLinearlyDependentArg1Arg2Arg3;
    return *this;
  }
  error = AcGe::kOk;
  // Circumcentre of a triangle in space: ((|a|^2 b - |b|^2 a) x (a x b)) / (2 |a x b|^2).
  const AcGeVector3d num = (b * a.lengthSqrd() - a * b.lengthSqrd()).crossProduct(w);
  mCenter = startPoint + num / (2.0 * w.lengthSqrd());
  mRadius = mCenter.distanceTo(startPoint);
  // The triangle start, pnt, end turns counter-clockwise about w, so the arc does too.
  setAxes(w, startPoint - mCenter);
  mStartAng = 0.0;
  mEndAng = 0.0;
  const double e = angleOf(endPoint - mCenter);
  return setAngles(0.0, e);
}

double AcGeCircArc3d::angleOf(const AcGeVector3d& v) const {
  double a = std::atan2(v.dotProduct(yAxis()), v.dotProduct(mRefVec));
  a = std::fmod(a - mStartAng, kTwoPi);
  if (a < 0.0) a += kTwoPi;
  if (a >= kTwoPi) a = 0.0;
  return mStartAng + a;
}

AcGePoint3d AcGeCircArc3d::evalPoint(double param) const {
  return mCenter + (mRefVec * std::cos(param) + yAxis() * std::sin(param)) * mRadius;
}

AcGeVector3d AcGeCircArc3d::derivative(double param, int order) const {
  const double c = std::cos(param), s = std::sin(param);
  if (order == 1) return (mRefVec * -s + yAxis() * c) * mRadius;
  return (mRefVec * c + yAxis() * s) * -mRadius;
}

double AcGeCircArc3d::closestParam(const AcGePoint3d& pnt) const {
  const AcGeVector3d v = pnt - mCenter;
  const AcGeVector3d inPlane = v - mNormal * v.dotProduct(mNormal);
  if (inPlane.length() <= AcGeContext::gTol.equalPoint()) return mStartAng;  // on the axis: all points tie
  const double a = angleOf(inPlane);
  if (a <= mEndAng) return a;
  // Outside the sweep the distance grows with the angular gap, so an end point is nearest.
  return pnt.distanceTo(startPoint()) <= pnt.distanceTo(endPoint()) ? mStartAng : mEndAng;
}

double AcGeCircArc3d::projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const {
  // Seen along the normal the arc stays a circle and the in-plane answer holds.
  if (unitDir.isParallelTo(mNormal)) return closestParam(pnt);
  return AcGeCurve3d::projClosestParam(pnt, unitDir);
}

double AcGeCircArc3d::paramOf(const AcGePoint3d& pnt, const AcGeTol&) const { return closestParam(pnt); }

bool AcGeCircArc3d::isClosed(const AcGeTol& tol) const {
  return mEndAng - mStartAng >= kTwoPi - 1e-12 || startPoint().isEqualTo(endPoint(), tol);
}

double AcGeCircArc3d::length(double fromParam, double toParam, double) const {
  return mRadius * std::fabs(toParam - fromParam);
}

double AcGeCircArc3d::paramAtLength(double datumParam, double length, bool posParamDir, double) const {
  if (mRadius == 0.0) return datumParam;
  return datumParam + (posParamDir ? length : -length) / mRadius;
}

void AcGeCircArc3d::appendSampleParams(double fromParam, double toParam, double approxEps, AcGeDoubleArray& params) const {
  // Chord deviation of a step s is r (1 - cos(s / 2)).
  double step = std::numbers::pi / 2.0;
  if (approxEps > 0.0 && approxEps < mRadius) step = std::min(step, 2.0 * std::acos(1.0 - approxEps / mRadius));
  const int n = static_cast<int>(std::ceil((toParam - fromParam) / step));
  for (int i = 1; i < n; ++i) params.append(fromParam + (toParam - fromParam) * i / n);
}

bool AcGeCircArc3d::isOnArcAngle(const AcGePoint3d& pnt, const AcGeTol& tol) const {
  const AcGeVector3d v = pnt - mCenter;
  if (std::fabs(v.dotProduct(mNormal)) > tol.equalPoint()) return false;
  if (std::fabs(v.length() - mRadius) > tol.equalPoint()) return false;
  const double a = angleOf(v);
  if (a <= mEndAng) return true;
  const double slack = mRadius > 0.0 ? tol.equalPoint() / mRadius : 0.0;
  return a - mEndAng <= slack || mStartAng + kTwoPi - a <= slack;
}

bool AcGeCircArc3d::intersectWith(const AcGeLinearEnt3d& line, int& intn, AcGePoint3d& p1, AcGePoint3d& p2,
                                  const AcGeTol& tol) const {
  const AcGePoint3d lp = line.pointOnLine();
  const AcGeVector3d d = line.evalPoint(1.0) - lp;
  std::vector<AcGePoint3d> candidates;
  const double dn = d.dotProduct(mNormal);
  if (std::fabs(dn) > tol.equalVector() * d.length()) {
    // Crosses the arc's plane once.
    candidates.push_back(lp + d * ((mCenter - lp).dotProduct(mNormal) / dn));
  } else if (std::fabs((lp - mCenter).dotProduct(mNormal)) <= tol.equalPoint()) {
    candidates = circleLinePoints(mCenter, mRadius, lp, d, tol);
  }
  std::vector<AcGePoint3d> hits;
  for (const AcGePoint3d& p : candidates)
    if (isOnArcAngle(p, tol) && line.isOn(p, tol)) hits.push_back(p);
  return report(hits, intn, p1, p2);
}

bool AcGeCircArc3d::intersectWith(const AcGeCircArc3d& arc, int& intn, AcGePoint3d& p1, AcGePoint3d& p2,
                                  const AcGeTol& tol) const {
  std::vector<AcGePoint3d> candidates;
  if (mNormal.isParallelTo(arc.mNormal, tol)) {
    if (std::fabs((arc.mCenter - mCenter).dotProduct(mNormal)) > tol.equalPoint()) return report({}, intn, p1, p2);
    const AcGeVector3d cc = arc.mCenter - mCenter;
    const double d = cc.length();
    if (d <= tol.equalPoint()) return report({}, intn, p1, p2);  // concentric: none or overlapping
    if (d > mRadius + arc.mRadius + tol.equalPoint() || d < std::fabs(mRadius - arc.mRadius) - tol.equalPoint())
      return report({}, intn, p1, p2);
    // Radical line of two circles: distance a from this centre along cc, half-chord h.
    const double a = (d * d + mRadius * mRadius - arc.mRadius * arc.mRadius) / (2.0 * d);
    const double h2 = mRadius * mRadius - a * a;
    const double h = h2 > 0.0 ? std::sqrt(h2) : 0.0;
    const AcGeVector3d e = cc / d;
    const AcGePoint3d base = mCenter + e * a;
    const AcGeVector3d perp = mNormal.crossProduct(e);
    candidates.push_back(base + perp * h);
    if (h > tol.equalPoint()) candidates.push_back(base - perp * h);
  } else {
    AcGePlane mine, theirs;
    getPlane(mine);
    arc.getPlane(theirs);
    AcGeLine3d common;
    if (!mine.intersectWith(theirs, common, tol)) return report({}, intn, p1, p2);
    candidates = circleLinePoints(mCenter, mRadius, common.pointOnLine(), common.direction(), tol);
  }
  std::vector<AcGePoint3d> hits;
  for (const AcGePoint3d& p : candidates)
    if (isOnArcAngle(p, tol) && arc.isOnArcAngle(p, tol)) hits.push_back(p);
  return report(hits, intn, p1, p2);
}

bool AcGeCircArc3d::tangent(const AcGePoint3d& pnt, AcGeLine3d& line, const AcGeTol& tol) const {
  double t = 0.0;
  if (!isOn(pnt, t, tol)) return false;
  line.set(pnt, derivative(t, 1).normal());
  return true;
}

void AcGeCircArc3d::getPlane(AcGePlane& plane) const { plane.set(mCenter, mRefVec, yAxis()); }

bool AcGeCircArc3d::isInside(const AcGePoint3d& pnt, const AcGeTol& tol) const {
  const AcGeVector3d v = pnt - mCenter;
  return std::fabs(v.dotProduct(mNormal)) <= tol.equalPoint() && v.length() < mRadius;
}

bool AcGeCircArc3d::isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol) const {
  if (ent.type() != AcGe::kCircArc3d) return false;
  const auto& o = static_cast<const AcGeCircArc3d&>(ent);
  return mCenter.isEqualTo(o.mCenter, tol) && mNormal.isEqualTo(o.mNormal, tol) && mRefVec.isEqualTo(o.mRefVec, tol) &&
         std::fabs(mRadius - o.mRadius) <= tol.equalPoint() && std::fabs(mStartAng - o.mStartAng) <= tol.equalVector() &&
         std::fabs(mEndAng - o.mEndAng) <= tol.equalVector();
}

AcGeEntity3d& AcGeCircArc3d::transformBy(const AcGeMatrix3d& xfm) {
  const AcGeVector3d x = xfm * mRefVec, y = xfm * yAxis();
  mCenter.transformBy(xfm);
  mRadius *= x.length();
  // x' cross y' keeps the parameter direction through mirroring: the normal flips instead.
  mNormal = x.crossProduct(y).normal();
  mRefVec = x.normal();
  return *this;
}
