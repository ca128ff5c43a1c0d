// CurvePath: an entity's outline as exact line and arc pieces with the curve's parameter mapped
// linearly onto each piece's length. The AcDbCurve queries and intersections work on it.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "gearc3d.h"
#include "ge/bulge_segment.h"
#include "ge/segment_index.h"
#include "gelnsg3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

namespace tdhost {

// One piece: a segment, or an arc running from arc.startAng() upwards over `length`.
struct PathPiece {
  bool isArc = false;
  AcGeLineSeg3d line;
  AcGeCircArc3d arc;
  double param0 = 0.0;  // curve parameter at the piece's start and end
  double param1 = 0.0;
  double dist0 = 0.0;   // curve length before the piece
  double length = 0.0;

  // The point at distance s from the piece's start; lines extrapolate, arcs follow their circle.
  AcGePoint3d pointAt(double s) const;
  // d(point)/ds (unit tangent) and d2(point)/ds2 (curvature vector).
  AcGeVector3d tangentAt(double s) const;
  AcGeVector3d curvatureAt(double s) const;
  // Distance along the piece of its point nearest p (clamped to the piece).
  double distOf(const AcGePoint3d& p) const;
  // Curve parameter at distance s along the piece; d(param)/ds.
  double paramAt(double s) const { return length > 0.0 ? param0 + (param1 - param0) * s / length : param0; }
  double paramPerDist() const { return length > 0.0 ? (param1 - param0) / length : 0.0; }
  AcGePoint3d startPoint() const { return pointAt(0.0); }
  AcGePoint3d endPoint() const { return pointAt(length); }
};

// A place on a path: the piece and the distance along it.
struct PathLocation {
  std::size_t piece = 0;
  double s = 0.0;
};

class CurvePath {
 public:
  // Builders; parameters must increase along the path. finish() once all pieces are in.
  void addLine(const AcGePoint3d& from, const AcGePoint3d& to, double param0, double param1);
  // The arc runs from startAng to endAng of `arc` (endAng > startAng).
  void addArc(const AcGeCircArc3d& arc, double param0, double param1);
  // A bulged plan segment in the object coordinate system of normal at elevation; a path made
  // only of these is planar and answers nearest-point queries through a segment index.
  void addBulge(const ge::BulgeSegment& seg, const AcGeVector3d& normal, double elevation, double param0,
                double param1);
  void finish(bool closed, bool periodic);
  // The last piece (a line) runs on without end, as a ray does; queries other than
  // intersections do not know of it.
  void setUnboundedEnd() { mUnboundedEnd = true; }
  bool unboundedEnd() const { return mUnboundedEnd; }

  const std::vector<PathPiece>& pieces() const { return mPieces; }
  bool empty() const { return mPieces.empty(); }
  bool isClosed() const { return mClosed; }
  bool isPeriodic() const { return mPeriodic; }
  double startParam() const { return mPieces.empty() ? 0.0 : mPieces.front().param0; }
  double endParam() const { return mPieces.empty() ? 0.0 : mPieces.back().param1; }
  double length() const { return mPieces.empty() ? 0.0 : mPieces.back().dist0 + mPieces.back().length; }
  // A tolerance for "on the curve" scaled to the path's coordinates.
  double pointTolerance() const { return mTol; }
  double paramTolerance() const { return 1e-9 * (1.0 + std::fabs(endParam() - startParam())); }
  bool isPlanar() const { return mPlanar && !mPieces.empty(); }
  AcGeVector3d planeNormal() const { return mNormal; }

  // The parameter wrapped (periodic paths) or clamped when a hair outside; false beyond.
  bool normalizeParam(double& param) const;
  PathLocation locateParam(double param) const;   // param within range
  PathLocation locateDist(double dist) const;     // dist within [0, length]
  double paramAt(const PathLocation& loc) const { return mPieces[loc.piece].paramAt(loc.s); }
  double distAt(const PathLocation& loc) const { return mPieces[loc.piece].dist0 + loc.s; }
  AcGePoint3d pointAt(const PathLocation& loc) const { return mPieces[loc.piece].pointAt(loc.s); }

  // The place of the path nearest p (segment index on long planar paths). Ties go to the
  // earlier piece.
  PathLocation closest(const AcGePoint3d& p) const;
  // The path point nearest p as seen along unit direction dir.
  PathLocation closestAlong(const AcGePoint3d& p, const AcGeVector3d& dir) const;
  // The same when an open path's end pieces are extended (as closestExtended).
  AcGePoint3d closestAlongExtended(const AcGePoint3d& p, const AcGeVector3d& dir) const;
  // The nearest point when an open path's end pieces are extended (lines to infinity, arcs to
  // their circles); the result may lie beyond the path's ends.
  AcGePoint3d closestExtended(const AcGePoint3d& p) const;

  // World box of the path (exact for arcs).
  void extents(AcGePoint3d& min, AcGePoint3d& max) const;

 private:
  const ge::SegmentIndex& index() const;
  static AcGeCircArc3d wholeCircle(const AcGeCircArc3d& arc);
  // Each end piece of an open path that extends: arcs to their circles, lines without end
  // (zero-length lines have no direction and stay out).
  template <class Visit>
  void forExtendedEnds(Visit visit) const {
    if (mClosed || mPieces.empty()) return;
    const std::size_t ends[2] = {0, mPieces.size() - 1};
    for (std::size_t e = 0; e < (ends[0] == ends[1] ? 1u : 2u); ++e) {
      const PathPiece& piece = mPieces[ends[e]];
      if (piece.isArc || piece.length > 0.0) visit(piece);
    }
  }

  std::vector<PathPiece> mPieces;
  std::vector<ge::BulgeSegment> mPlan;  // per piece, when planar
  AcGeVector3d mNormal{0, 0, 1};
  AcGeVector3d mXAxis{1, 0, 0}, mYAxis{0, 1, 0};
  double mElevation = 0.0;
  bool mPlanar = true;
  bool mClosed = false;
  bool mPeriodic = false;
  bool mUnboundedEnd = false;
  double mTol = 1e-9;
  mutable std::unique_ptr<ge::SegmentIndex> mIndex;
};

// The extent of an arc (exact axis extremes of the circle within the sweep).
void arcExtents(const AcGeCircArc3d& arc, double sweep, AcGePoint3d& min, AcGePoint3d& max);

}  // namespace tdhost
