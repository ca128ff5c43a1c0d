// CurvePath: exact line/arc pieces of an entity outline and the nearest-point machinery.
#include "entities/curve_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ge/arbitrary_axis.h"
#include "geline3d.h"

namespace tdhost {
namespace {

constexpr double kTwoPi = 6.283185307179586;

AcGeVector3d arcY(const AcGeCircArc3d& arc) { return arc.normal().crossProduct(arc.refVec()); }

void grow(AcGePoint3d& min, AcGePoint3d& max, const AcGePoint3d& p) {
  min.set(std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z));
  max.set(std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z));
}

// Angle a in [from, from + 2pi).
double wrapFrom(double a, double from) {
  double d = std::fmod(a - from, kTwoPi);
  if (d < 0.0) d += kTwoPi;
  return from + d;
}

}  // namespace

AcGePoint3d PathPiece::pointAt(double s) const {
  if (!isArc) {
    const AcGeVector3d d = line.endPoint() - line.startPoint();
    return length > 0.0 ? line.startPoint() + d * (s / length) : line.startPoint();
  }
  return arc.evalPoint(arc.startAng() + s / arc.radius());
}

AcGeVector3d PathPiece::tangentAt(double s) const {
  if (!isArc) {
    const AcGeVector3d d = line.endPoint() - line.startPoint();
    return length > 0.0 ? d / length : AcGeVector3d::kXAxis;
  }
  const double a = arc.startAng() + s / arc.radius();
  return arc.refVec() * -std::sin(a) + arcY(arc) * std::cos(a);
}

AcGeVector3d PathPiece::curvatureAt(double s) const {
  if (!isArc) return AcGeVector3d();
  const double a = arc.startAng() + s / arc.radius();
  return (arc.refVec() * std::cos(a) + arcY(arc) * std::sin(a)) * (-1.0 / arc.radius());
}

double PathPiece::distOf(const AcGePoint3d& p) const {
  if (!isArc) {
    if (length <= 0.0) return 0.0;
    const AcGeVector3d d = line.endPoint() - line.startPoint();
    const double t = (p - line.startPoint()).dotProduct(d) / (length * length);
    return std::clamp(t, 0.0, 1.0) * length;
  }
  const AcGeVector3d v = p - arc.center();
  const double x = v.dotProduct(arc.refVec()), y = v.dotProduct(arcY(arc));
  if (x == 0.0 && y == 0.0) return 0.0;  // the centre: every point ties, the start wins
  const double rel = wrapFrom(std::atan2(y, x), arc.startAng()) - arc.startAng();
  const double sweep = length / arc.radius();
  if (rel <= sweep) return rel * arc.radius();
  // Outside the sweep: the nearer end (the start on a tie).
  return p.distanceTo(endPoint()) < p.distanceTo(startPoint()) ? length : 0.0;
}

void CurvePath::addLine(const AcGePoint3d& from, const AcGePoint3d& to, double param0, double param1) {
  PathPiece piece;
  piece.line.set(from, to);
  piece.length = from.distanceTo(to);
  piece.param0 = param0;
  piece.param1 = param1;
  mPieces.push_back(piece);
  mPlanar = false;
}

void CurvePath::addArc(const AcGeCircArc3d& arc, double param0, double param1) {
  PathPiece piece;
  piece.isArc = true;
  piece.arc = arc;
  piece.length = arc.radius() * (arc.endAng() - arc.startAng());
  piece.param0 = param0;
  piece.param1 = param1;
  mPieces.push_back(piece);
  mPlanar = false;
}

void CurvePath::addBulge(const ge::BulgeSegment& seg, const AcGeVector3d& normal, double elevation, double param0,
                         double param1) {
  const bool wasPlanar = mPlanar && (mPieces.empty() || (normal == mNormal && elevation == mElevation));
  PathPiece piece;
  piece.isArc = seg.isArc();
  if (piece.isArc) piece.arc = seg.arc3d(normal, elevation);
  else piece.line = seg.line3d(normal, elevation);
  piece.length = seg.length();
  piece.param0 = param0;
  piece.param1 = param1;
  mPieces.push_back(piece);
  mPlan.push_back(seg);
  mNormal = normal;
  mElevation = elevation;
  ge::arbitraryAxes(normal, mXAxis, mYAxis);
  mPlanar = wasPlanar;
}

void CurvePath::finish(bool closed, bool periodic) {
  mClosed = closed;
  mPeriodic = periodic;
  double dist = 0.0, scale = 1.0;
  for (PathPiece& p : mPieces) {
    p.dist0 = dist;
    dist += p.length;
    const AcGePoint3d a = p.startPoint();
    scale = std::max({scale, std::fabs(a.x), std::fabs(a.y), std::fabs(a.z), p.length});
  }
  mTol = 1e-9 * scale;
  if (!mPlanar) mPlan.clear();
  mIndex.reset();
}

bool CurvePath::normalizeParam(double& param) const {
  if (mPieces.empty()) return false;
  const double lo = startParam(), hi = endParam();
  if (mPeriodic && hi > lo) {
    const double period = hi - lo;
    param = lo + std::fmod(param - lo, period);
    if (param < lo) param += period;
    return true;
  }
  const double tol = paramTolerance();
  if (param < lo - tol || param > hi + tol) return false;
  param = std::clamp(param, lo, hi);
  return true;
}

PathLocation CurvePath::locateParam(double param) const {
  // The first piece whose end parameter reaches param.
  auto it = std::lower_bound(mPieces.begin(), mPieces.end(), param,
                             [](const PathPiece& p, double v) { return p.param1 < v; });
  if (it == mPieces.end()) --it;
  const PathPiece& p = *it;
  const double span = p.param1 - p.param0;
  const double s = span > 0.0 ? std::clamp((param - p.param0) / span, 0.0, 1.0) * p.length : 0.0;
  return {static_cast<std::size_t>(it - mPieces.begin()), s};
}

PathLocation CurvePath::locateDist(double dist) const {
  auto it = std::lower_bound(mPieces.begin(), mPieces.end(), dist,
                             [](const PathPiece& p, double v) { return p.dist0 + p.length < v; });
  if (it == mPieces.end()) --it;
  return {static_cast<std::size_t>(it - mPieces.begin()), std::clamp(dist - it->dist0, 0.0, it->length)};
}

const ge::SegmentIndex& CurvePath::index() const {
  if (!mIndex) mIndex = std::make_unique<ge::SegmentIndex>(ge::SegmentIndex::boxesOf(mPlan));
  return *mIndex;
}

PathLocation CurvePath::closest(const AcGePoint3d& p) const {
  PathLocation best;
  if (mPieces.empty()) return best;
  constexpr std::size_t kIndexFrom = 16;
  if (isPlanar() && mPieces.size() >= kIndexFrom) {
    // Distance to a plane curve = plan distance combined with the height off the plane, which is
    // the same for every piece: the plan nearest is the space nearest.
    const AcGeVector3d v = p.asVector();
    const AcGePoint2d q(v.dotProduct(mXAxis), v.dotProduct(mYAxis));
    const std::size_t i =
        index().nearestSegment(q, [&](std::size_t k) { return mPlan[k].closestPoint(q).distance; });
    return {i, std::clamp(mPlan[i].closestPoint(q).distAlong, 0.0, mPieces[i].length)};
  }
  double bestDist = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < mPieces.size(); ++i) {
    const double s = mPieces[i].distOf(p);
    const double d = p.distanceTo(mPieces[i].pointAt(s));
    if (d < bestDist) {
      bestDist = d;
      best = {i, s};
    }
  }
  return best;
}

PathLocation CurvePath::closestAlong(const AcGePoint3d& p, const AcGeVector3d& dir) const {
  PathLocation best;
  double bestDist = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < mPieces.size(); ++i) {
    const PathPiece& piece = mPieces[i];
    const AcGePoint3d c = piece.isArc ? piece.arc.projClosestPointTo(p, dir) : piece.line.projClosestPointTo(p, dir);
    const double s = piece.distOf(c);
    AcGeVector3d d = piece.pointAt(s) - p;
    d -= dir * d.dotProduct(dir);
    if (d.length() < bestDist) {
      bestDist = d.length();
      best = {i, s};
    }
  }
  return best;
}

namespace {

// The point of the line through a with direction d nearest p as seen along unit dir: the
// squared distance across dir is quadratic in the line parameter. A line seen end-on answers a.
AcGePoint3d lineClosestAlong(const AcGePoint3d& a, const AcGeVector3d& d, const AcGePoint3d& p,
                             const AcGeVector3d& dir) {
  const AcGeVector3d across = d - dir * d.dotProduct(dir);
  const double k = across.lengthSqrd();
  if (k <= 1e-24 * d.lengthSqrd()) return a;
  AcGeVector3d w = a - p;
  w -= dir * w.dotProduct(dir);
  return a + d * (-w.dotProduct(across) / k);
}

double acrossDistance(const AcGePoint3d& q, const AcGePoint3d& p, const AcGeVector3d& dir) {
  AcGeVector3d d = q - p;
  d -= dir * d.dotProduct(dir);
  return d.length();
}

}  // namespace

AcGePoint3d CurvePath::closestExtended(const AcGePoint3d& p) const {
  AcGePoint3d best = pointAt(closest(p));
  double bestDist = p.distanceTo(best);
  forExtendedEnds([&](const PathPiece& piece) {
    const AcGePoint3d c = piece.isArc ? wholeCircle(piece.arc).closestPointTo(p)
                                      : AcGeLine3d(piece.line.startPoint(), piece.line.endPoint()).closestPointTo(p);
    if (p.distanceTo(c) < bestDist) {
      bestDist = p.distanceTo(c);
      best = c;
    }
  });
  return best;
}

AcGePoint3d CurvePath::closestAlongExtended(const AcGePoint3d& p, const AcGeVector3d& dir) const {
  AcGePoint3d best = pointAt(closestAlong(p, dir));
  double bestDist = acrossDistance(best, p, dir);
  forExtendedEnds([&](const PathPiece& piece) {
    const AcGePoint3d c =
        piece.isArc ? wholeCircle(piece.arc).projClosestPointTo(p, dir)
                    : lineClosestAlong(piece.line.startPoint(), piece.line.endPoint() - piece.line.startPoint(), p, dir);
    if (acrossDistance(c, p, dir) < bestDist) {
      bestDist = acrossDistance(c, p, dir);
      best = c;
    }
  });
  return best;
}

AcGeCircArc3d CurvePath::wholeCircle(const AcGeCircArc3d& arc) {
  return AcGeCircArc3d(arc.center(), arc.normal(), arc.refVec(), arc.radius(), 0.0, kTwoPi);
}

void arcExtents(const AcGeCircArc3d& arc, double sweep, AcGePoint3d& min, AcGePoint3d& max) {
  const AcGeVector3d u = arc.refVec(), v = arcY(arc);
  grow(min, max, arc.evalPoint(arc.startAng()));
  grow(min, max, arc.evalPoint(arc.startAng() + sweep));
  const double ux[3] = {u.x, u.y, u.z}, vx[3] = {v.x, v.y, v.z};
  for (int k = 0; k < 3; ++k) {
    if (ux[k] == 0.0 && vx[k] == 0.0) continue;
    const double a = std::atan2(vx[k], ux[k]);
    for (double cand : {a, a + kTwoPi / 2}) {
      if (wrapFrom(cand, arc.startAng()) - arc.startAng() <= sweep) grow(min, max, arc.evalPoint(cand));
    }
  }
}

void CurvePath::extents(AcGePoint3d& min, AcGePoint3d& max) const {
  constexpr double kBig = std::numeric_limits<double>::max();
  min.set(kBig, kBig, kBig);
  max.set(-kBig, -kBig, -kBig);
  for (const PathPiece& p : mPieces) {
    if (p.isArc) {
      arcExtents(p.arc, p.length / p.arc.radius(), min, max);
    } else {
      grow(min, max, p.line.startPoint());
      grow(min, max, p.line.endPoint());
    }
  }
}

}  // namespace tdhost
