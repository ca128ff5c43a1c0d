// Plan segment geometry from bulges: centre, radius, lengths, points, tangents and closest points.
#include "ge/bulge_segment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "ge/arbitrary_axis.h"
#include "gearc3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"

namespace tdhost::ge {

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// Object coordinates of `normal` at `elevation` to world coordinates.
AcGeMatrix3d ocsToWorld(const AcGeVector3d& normal, double elevation) {
  AcGeVector3d x, y;
  arbitraryAxes(normal, x, y);
  const AcGeVector3d n = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
  AcGeMatrix3d m;
  return m.setCoordSystem(AcGePoint3d::kOrigin + n * elevation, x, y, n);
}

double normalizeAngle(double a) {
  a = std::fmod(a, kTwoPi);
  if (a < 0.0) a += kTwoPi;
  return a >= kTwoPi ? 0.0 : a;
}

}  // namespace

BulgeSegment::BulgeSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge)
    : mStart(start), mEnd(end), mBulge(bulge) {
  const double chord = start.distanceTo(end);
  mCenter = start + (end - start) * 0.5;
  mIsArc = std::fabs(bulge) > kLineBulge && chord > 0.0;
  if (!mIsArc) return;
  mAngle = 4.0 * std::atan(bulge);
  // Radius from the half chord: r = (c/2) / sin(theta/2) = c (1 + b^2) / (4 |b|).
  mRadius = chord * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
  // The centre lies left of the chord by (c/4)(1/b - b): right of it once |theta| passes pi.
  const AcGeVector2d u = (end - start) / chord;
  mCenter += u.perpVector() * (chord * (1.0 - bulge * bulge) / (4.0 * bulge));
  mStartDir = std::atan2(start.y - mCenter.y, start.x - mCenter.x);
}

double BulgeSegment::bulgeOf(double includedAngle) { return std::tan(includedAngle / 4.0); }

double BulgeSegment::sagitta() const { return mIsArc ? std::fabs(mBulge) * chordLength() / 2.0 : 0.0; }

double BulgeSegment::startAngle() const { return mIsArc ? normalizeAngle(mStartDir) : 0.0; }

double BulgeSegment::endAngle() const { return mIsArc ? normalizeAngle(mStartDir + mAngle) : 0.0; }

double BulgeSegment::length() const { return mIsArc ? mRadius * std::fabs(mAngle) : chordLength(); }

AcGePoint2d BulgeSegment::pointAtDist(double s) const {
  const double len = length();
  s = std::clamp(s, 0.0, len);
  if (!mIsArc) {
    if (len == 0.0) return mStart;
    if (s == len) return mEnd;
    return mStart + (mEnd - mStart) * (s / len);
  }
  // The ends exactly, not rounded evaluations: joined segments must meet.
  if (s == 0.0) return mStart;
  if (s == len) return mEnd;
  const double a = mStartDir + std::copysign(s / mRadius, mAngle);
  return {mCenter.x + mRadius * std::cos(a), mCenter.y + mRadius * std::sin(a)};
}

AcGeVector2d BulgeSegment::tangentAt(double s) const {
  if (!mIsArc) {
    const AcGeVector2d d = mEnd - mStart;
    return d.isZeroLength() ? AcGeVector2d::kXAxis : d.normal();
  }
  s = std::clamp(s, 0.0, length());
  const double a = mStartDir + std::copysign(s / mRadius, mAngle);
  // Counter-clockwise travel moves along the radial direction turned +90 degrees.
  const AcGeVector2d radial(std::cos(a), std::sin(a));
  return mAngle > 0.0 ? radial.perpVector() : -radial.perpVector();
}

double BulgeSegment::sweepTo(const AcGeVector2d& v) const {
  const double dir = std::atan2(v.y, v.x);
  return normalizeAngle(mAngle > 0.0 ? dir - mStartDir : mStartDir - dir);
}

SegmentClosest BulgeSegment::closestPoint(const AcGePoint2d& p) const {
  SegmentClosest out;
  if (!mIsArc) {
    const AcGeVector2d d = mEnd - mStart;
    const double l2 = d.lengthSqrd();
    const double f = l2 > 0.0 ? std::clamp((p - mStart).dotProduct(d) / l2, 0.0, 1.0) : 0.0;
    out.point = f == 1.0 ? mEnd : mStart + d * f;
    out.distAlong = std::sqrt(l2) * f;
    out.distance = p.distanceTo(out.point);
    return out;
  }
  const AcGeVector2d v = p - mCenter;
  const double vl = v.length();
  const double sweep = std::fabs(mAngle);
  if (vl > 0.0) {
    const double t = sweepTo(v);
    if (t <= sweep) {
      out.point = mCenter + v * (mRadius / vl);
      out.distAlong = mRadius * t;
      out.distance = std::fabs(vl - mRadius);
      return out;
    }
  }
  // Outside the sweep (or at the centre) the nearer end wins; the distance grows with the angular gap.
  const double ds = p.distanceTo(mStart), de = p.distanceTo(mEnd);
  if (ds <= de) {
    out.point = mStart;
    out.distance = ds;
  } else {
    out.point = mEnd;
    out.distAlong = length();
    out.distance = de;
  }
  return out;
}

Box2d BulgeSegment::boundingBox() const {
  Box2d box{std::min(mStart.x, mEnd.x), std::min(mStart.y, mEnd.y), std::max(mStart.x, mEnd.x),
            std::max(mStart.y, mEnd.y)};
  if (!mIsArc) return box;
  const double sweep = std::fabs(mAngle);
  // Axis extremes at directions 0, pi/2, pi, 3pi/2 from the centre.
  for (int k = 0; k < 4; ++k) {
    const double dir = k * std::numbers::pi / 2.0;
    if (sweepTo(AcGeVector2d(std::cos(dir), std::sin(dir))) > sweep) continue;
    const double x = mCenter.x + mRadius * (k == 0 ? 1.0 : k == 2 ? -1.0 : 0.0);
    const double y = mCenter.y + mRadius * (k == 1 ? 1.0 : k == 3 ? -1.0 : 0.0);
    box.minX = std::min(box.minX, x);
    box.maxX = std::max(box.maxX, x);
    box.minY = std::min(box.minY, y);
    box.maxY = std::max(box.maxY, y);
  }
  return box;
}

AcGeCircArc3d BulgeSegment::arc3d(const AcGeVector3d& normal, double elevation) const {
  const AcGeMatrix3d m = ocsToWorld(normal, elevation);
  const AcGePoint3d center = m * AcGePoint3d(mCenter.x, mCenter.y, 0.0);
  const AcGeVector3d toStart = m * AcGeVector3d(mStart.x - mCenter.x, mStart.y - mCenter.y, 0.0);
  const AcGeVector3d axis = m * AcGeVector3d::kZAxis;
  return AcGeCircArc3d(center, mAngle >= 0.0 ? axis : -axis, toStart, mRadius, 0.0, std::fabs(mAngle));
}

AcGeLineSeg3d BulgeSegment::line3d(const AcGeVector3d& normal, double elevation) const {
  const AcGeMatrix3d m = ocsToWorld(normal, elevation);
  return AcGeLineSeg3d(m * AcGePoint3d(mStart.x, mStart.y, 0.0), m * AcGePoint3d(mEnd.x, mEnd.y, 0.0));
}

}  // namespace tdhost::ge
