// One plan segment of a lightweight polyline: a straight line, or a circular arc given by its bulge
// (tan of a quarter of the included angle, positive counter-clockwise). Exact arc geometry throughout;
// the polyline entity builds its curve queries on it.
#pragma once

#include "gepnt2d.h"
#include "gevec2d.h"
#include "gevec3d.h"
#include "platformexport.h"

class AcGeCircArc3d;
class AcGeLineSeg3d;

namespace tdhost::ge {

// Axis-aligned plan box.
struct Box2d {
  double minX = 0.0;
  double minY = 0.0;
  double maxX = 0.0;
  double maxY = 0.0;
};

// The point of a segment nearest a query point.
struct SegmentClosest {
  AcGePoint2d point;
  double distAlong = 0.0;  // length from the segment's start to `point`
  double distance = 0.0;   // from the query point to `point`
};

class TDHOST_API BulgeSegment {
 public:
  // Bulges with |bulge| <= kLineBulge are straight: the sagitta is below 1e-12 of the chord, and
  // arc arithmetic about a centre that far away would lose more than it gains.
  static constexpr double kLineBulge = 1e-12;

  BulgeSegment(const AcGePoint2d& start, const AcGePoint2d& end, double bulge);

  // The bulge of an arc of the given signed included angle (radians, counter-clockwise positive).
  static double bulgeOf(double includedAngle);

  const AcGePoint2d& startPoint() const { return mStart; }
  const AcGePoint2d& endPoint() const { return mEnd; }
  double bulge() const { return mBulge; }
  // False for straight segments and for zero-length chords (an arc needs two distinct ends).
  bool isArc() const { return mIsArc; }
  double chordLength() const { return mStart.distanceTo(mEnd); }
  // 4 atan(bulge): signed, counter-clockwise positive; 0 for a line.
  double includedAngle() const { return mIsArc ? mAngle : 0.0; }
  // Height of the arc over its chord midpoint: |bulge| * chord / 2 (0 for a line).
  double sagitta() const;
  // Arc radius; 0 for a line.
  double radius() const { return mRadius; }
  // Arc centre; the chord midpoint for a line.
  AcGePoint2d center() const { return mCenter; }
  // Directions of the start and end points seen from the centre, in [0, 2pi). The arc runs from the
  // start angle counter-clockwise when the bulge is positive, clockwise when negative. 0 for a line.
  double startAngle() const;
  double endAngle() const;

  // Length along the segment (arc length r * |included angle| or the chord).
  double length() const;
  // The point at distance s from the start; s is clamped to [0, length()].
  AcGePoint2d pointAtDist(double s) const;
  // Unit direction of travel at distance s (clamped); for a zero-length segment, the x axis.
  AcGeVector2d tangentAt(double s) const;
  // The nearest segment point to p (exact for arcs). When p is the arc centre every point ties and
  // the start is returned; ties between the two ends go to the start.
  SegmentClosest closestPoint(const AcGePoint2d& p) const;
  // Length from the start to the point of the segment nearest p.
  double distAtPoint(const AcGePoint2d& p) const { return closestPoint(p).distAlong; }
  // Exact plan box: the ends plus every axis extreme the arc sweeps through.
  Box2d boundingBox() const;

  // The segment in world space, its plan coordinates taken in the object coordinate system of
  // `normal` (arbitrary-axis rule) at height `elevation`. The arc runs from the start point
  // (refVec towards it, angles 0 to |included angle|) about the normal, or about its negation for
  // a clockwise bulge, so start and end keep their places. Call arc3d only when isArc().
  AcGeCircArc3d arc3d(const AcGeVector3d& normal = AcGeVector3d::kZAxis, double elevation = 0.0) const;
  AcGeLineSeg3d line3d(const AcGeVector3d& normal = AcGeVector3d::kZAxis, double elevation = 0.0) const;

 private:
  // Signed sweep from the start to the direction of v, in [0, 2pi) along the direction of travel.
  double sweepTo(const AcGeVector2d& v) const;

  AcGePoint2d mStart;
  AcGePoint2d mEnd;
  double mBulge = 0.0;
  bool mIsArc = false;
  double mAngle = 0.0;   // included angle
  double mRadius = 0.0;
  AcGePoint2d mCenter;
  double mStartDir = 0.0;  // atan2 of start - centre
};

}  // namespace tdhost::ge
