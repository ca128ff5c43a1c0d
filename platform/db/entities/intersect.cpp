// AcDbEntity::intersectWith on the exact line/arc pieces of both outlines: pairs of pieces are
// intersected in a plane (the given projection plane, or the plane of the pair) and the points
// are checked back on both entities in space.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "dbmain.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "geplane.h"

namespace {

using tdhost::CurvePath;
using tdhost::kTwoPi;
using tdhost::PathPiece;

constexpr double kInf = std::numeric_limits<double>::infinity();

struct Frame {
  AcGePoint3d origin;
  AcGeVector3d x, y, n;
  AcGePoint2d to2d(const AcGePoint3d& p) const {
    const AcGeVector3d v = p - origin;
    return {v.dotProduct(x), v.dotProduct(y)};
  }
};

Frame frameOf(const AcGePoint3d& origin, const AcGeVector3d& normal) {
  Frame f;
  f.origin = origin;
  f.n = normal.normal();
  tdhost::ge::arbitraryAxes(f.n, f.x, f.y);
  return f;
}

// A piece (or a chord of an arc seen edge-on) in plane coordinates. Distances along the piece:
// a segment maps t in [0, 1] to s0 + t (s1 - s0); a circle maps the angle to s by dir and a0.
struct Prim {
  bool circle = false;
  AcGePoint2d a, b;          // segment
  AcGePoint2d c;             // circle
  double r = 0.0, a0 = 0.0, sweep = 0.0, dir = 1.0;
  std::size_t piece = 0;
  double s0 = 0.0, s1 = 0.0;
  bool extBack = false, extFwd = false;
};

// Distance along the piece for a segment parameter or a circle angle; false when outside the
// allowed (possibly extended) range.
bool segmentDist(const Prim& p, double t, double tol, double& s) {
  const double lo = p.extBack ? -kInf : -tol, hi = p.extFwd ? kInf : 1.0 + tol;
  if (t < lo || t > hi) return false;
  s = p.s0 + t * (p.s1 - p.s0);
  return true;
}

bool circleDist(const Prim& p, double angle, double tolAngle, double& s) {
  double rel = std::fmod(p.dir * (angle - p.a0), kTwoPi);
  if (rel < 0.0) rel += kTwoPi;
  if (rel > kTwoPi - tolAngle) rel = rel - kTwoPi;  // a hair before the start
  if (!(p.extBack || p.extFwd) && (rel < -tolAngle || rel > p.sweep + tolAngle)) return false;
  if (rel < 0.0 && !(p.extBack || p.extFwd)) rel = 0.0;
  s = rel * p.r;
  return true;
}

void addPrims(const CurvePath& path, std::size_t i, const Frame& f, bool extBack, bool extFwd, std::vector<Prim>& out) {
  const PathPiece& piece = path.pieces()[i];
  Prim p;
  p.piece = i;
  p.extBack = extBack;
  p.extFwd = extFwd;
  if (piece.isArc && piece.arc.normal().isParallelTo(f.n)) {
    p.circle = true;
    p.c = f.to2d(piece.arc.center());
    p.r = piece.arc.radius();
    p.dir = piece.arc.normal().dotProduct(f.n) > 0.0 ? 1.0 : -1.0;
    const AcGePoint2d s = f.to2d(piece.startPoint());
    p.a0 = std::atan2(s.y - p.c.y, s.x - p.c.x);
    p.sweep = piece.length / p.r;
    out.push_back(p);
    return;
  }
  // Lines, and arcs seen at an angle (their projections are ellipses): chords.
  const int n = piece.isArc ? 64 : 1;
  for (int k = 0; k < n; ++k) {
    Prim q = p;
    q.s0 = piece.length * k / n;
    q.s1 = piece.length * (k + 1) / n;
    q.a = f.to2d(piece.pointAt(q.s0));
    q.b = f.to2d(piece.pointAt(q.s1));
    q.extBack = extBack && k == 0 && !piece.isArc;
    q.extFwd = extFwd && k == n - 1 && !piece.isArc;
    out.push_back(q);
  }
}

// Every intersection of two primitives as distances along their pieces.
void meet(const Prim& p, const Prim& q, double tol, const std::function<void(double, double)>& hit) {
  double sp = 0.0, sq = 0.0;
  if (!p.circle && !q.circle) {
    const AcGeVector2d d1 = p.b - p.a, d2 = q.b - q.a, w = q.a - p.a;
    const double den = d1.x * d2.y - d1.y * d2.x;
    const double scale = d1.length() * d2.length();
    if (scale == 0.0 || std::fabs(den) <= 1e-12 * scale) return;  // parallel or degenerate
    const double t = (w.x * d2.y - w.y * d2.x) / den, u = (w.x * d1.y - w.y * d1.x) / den;
    if (segmentDist(p, t, tol / d1.length(), sp) && segmentDist(q, u, tol / d2.length(), sq)) hit(sp, sq);
    return;
  }
  if (p.circle && q.circle) {
    const AcGeVector2d d = q.c - p.c;
    const double dist = d.length();
    if (dist == 0.0 || dist > p.r + q.r + tol || dist < std::fabs(p.r - q.r) - tol) return;
    const double along = (dist * dist + p.r * p.r - q.r * q.r) / (2.0 * dist);
    const double h = std::sqrt(std::max(0.0, p.r * p.r - along * along));
    const AcGeVector2d u = d / dist, v(-u.y, u.x);
    const int count = h <= tol ? 1 : 2;
    for (int k = 0; k < count; ++k) {
      const AcGePoint2d x = p.c + u * along + v * (k == 0 ? h : -h);
      if (circleDist(p, std::atan2(x.y - p.c.y, x.x - p.c.x), tol / p.r, sp) &&
          circleDist(q, std::atan2(x.y - q.c.y, x.x - q.c.x), tol / q.r, sq))
        hit(sp, sq);
    }
    return;
  }
  const bool swapped = p.circle;
  const Prim& l = swapped ? q : p;
  const Prim& c = swapped ? p : q;
  const AcGeVector2d d = l.b - l.a, w = l.a - c.c;
  const double len = d.length();
  if (len == 0.0) return;
  // |a + t d - c|^2 = r^2
  const double A = d.dotProduct(d), B = 2.0 * w.dotProduct(d), C = w.dotProduct(w) - c.r * c.r;
  double disc = B * B - 4.0 * A * C;
  const double foot = std::fabs(w.x * d.y - w.y * d.x) / len;  // distance from centre to line
  if (disc < 0.0) {
    if (foot > c.r + tol) return;
    disc = 0.0;  // tangent within tolerance
  }
  const double root = std::sqrt(disc);
  const int count = root == 0.0 ? 1 : 2;
  for (int k = 0; k < count; ++k) {
    const double t = (-B + (k == 0 ? -root : root)) / (2.0 * A);
    const AcGePoint2d x = l.a + d * t;
    double sl = 0.0, sc = 0.0;
    if (!segmentDist(l, t, tol / len, sl) || !circleDist(c, std::atan2(x.y - c.c.y, x.x - c.c.x), tol / c.r, sc))
      continue;
    if (swapped) hit(sc, sl);
    else hit(sl, sc);
  }
}

bool boxesMeet(const AcGePoint3d& lo1, const AcGePoint3d& hi1, const AcGePoint3d& lo2, const AcGePoint3d& hi2,
               double tol) {
  return lo1.x <= hi2.x + tol && lo2.x <= hi1.x + tol && lo1.y <= hi2.y + tol && lo2.y <= hi1.y + tol &&
         lo1.z <= hi2.z + tol && lo2.z <= hi1.z + tol;
}

void pieceBox(const PathPiece& p, AcGePoint3d& lo, AcGePoint3d& hi) {
  lo.set(kInf, kInf, kInf);
  hi.set(-kInf, -kInf, -kInf);
  if (p.isArc) {
    tdhost::arcExtents(p.arc, p.length / p.arc.radius(), lo, hi);
    return;
  }
  for (const AcGePoint3d& q : {p.line.startPoint(), p.line.endPoint()}) {
    lo.set(std::min(lo.x, q.x), std::min(lo.y, q.y), std::min(lo.z, q.z));
    hi.set(std::max(hi.x, q.x), std::max(hi.y, q.y), std::max(hi.z, q.z));
  }
}

void appendUnique(AcGePoint3dArray& points, const AcGePoint3d& p, double tol) {
  for (const AcGePoint3d& q : points)
    if (q.distanceTo(p) <= tol) return;
  points.append(p);
}

// A ray's path runs on past its last piece whatever the mode; extending it adds the half
// behind its base.
struct Operand {
  std::shared_ptr<const CurvePath> path;
  bool extend = false;
  bool extBack(std::size_t i) const { return extend && !path->isClosed() && i == 0; }
  bool extFwd(std::size_t i) const {
    return (extend || path->unboundedEnd()) && !path->isClosed() && i + 1 == path->pieces().size();
  }
  bool extended(std::size_t i) const { return extBack(i) || extFwd(i); }
};

Acad::ErrorStatus operands(const AcDbEntity& self, const AcDbEntity* other, AcDb::Intersect mode, Operand& a,
                           Operand& b) {
  if (other == nullptr) return Acad::eNullEntityPointer;
  a.path = self.subPath();
  b.path = other->subPath();
  a.extend = mode == AcDb::kExtendThis || mode == AcDb::kExtendBoth;
  b.extend = mode == AcDb::kExtendArg || mode == AcDb::kExtendBoth;
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, AcGePoint3dArray& points,
                                            Adesk::GsMarker, Adesk::GsMarker) const {
  if (Acad::ErrorStatus es = checkRead("intersectWith"); es != Acad::eOk) return es;
  Operand a, b;
  if (Acad::ErrorStatus es = operands(*this, pEnt, intType, a, b); es != Acad::eOk) return es;
  if (!a.path || !b.path || a.path->empty() || b.path->empty()) return Acad::eOk;
  const double tol = std::max(a.path->pointTolerance(), b.path->pointTolerance()) * 10.0;
  const auto& pa = a.path->pieces();
  const auto& pb = b.path->pieces();
  std::vector<AcGePoint3d> loA(pa.size()), hiA(pa.size()), loB(pb.size()), hiB(pb.size());
  for (std::size_t i = 0; i < pa.size(); ++i) pieceBox(pa[i], loA[i], hiA[i]);
  for (std::size_t j = 0; j < pb.size(); ++j) pieceBox(pb[j], loB[j], hiB[j]);
  AcGePoint3dArray found;
  std::vector<Prim> primsA, primsB;
  for (std::size_t i = 0; i < pa.size(); ++i) {
    for (std::size_t j = 0; j < pb.size(); ++j) {
      if (!a.extended(i) && !b.extended(j) && !boxesMeet(loA[i], hiA[i], loB[j], hiB[j], tol)) continue;
      // The plane of the pair: an arc's, or the one both segments' directions span.
      AcGeVector3d n;
      if (pa[i].isArc) n = pa[i].arc.normal();
      else if (pb[j].isArc) n = pb[j].arc.normal();
      else n = pa[i].tangentAt(0).crossProduct(pb[j].tangentAt(0));
      if (n.isZeroLength(AcGeTol())) continue;  // parallel segments meet in no single point
      const Frame f = frameOf(pa[i].startPoint(), n);
      primsA.clear();
      primsB.clear();
      addPrims(*a.path, i, f, a.extBack(i), a.extFwd(i), primsA);
      addPrims(*b.path, j, f, b.extBack(j), b.extFwd(j), primsB);
      for (const Prim& p : primsA)
        for (const Prim& q : primsB)
          meet(p, q, tol, [&](double sp, double sq) {
            const AcGePoint3d x = pa[i].pointAt(sp), y = pb[j].pointAt(sq);
            if (x.distanceTo(y) <= tol) appendUnique(found, x, tol);
          });
    }
  }
  for (const AcGePoint3d& p : found) points.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity* pEnt, AcDb::Intersect intType, const AcGePlane& projPlane,
                                            AcGePoint3dArray& points, Adesk::GsMarker, Adesk::GsMarker) const {
  if (Acad::ErrorStatus es = checkRead("intersectWith"); es != Acad::eOk) return es;
  Operand a, b;
  if (Acad::ErrorStatus es = operands(*this, pEnt, intType, a, b); es != Acad::eOk) return es;
  if (!a.path || !b.path || a.path->empty() || b.path->empty()) return Acad::eOk;
  if (projPlane.normal().isZeroLength()) return Acad::eInvalidInput;
  const double tol = std::max(a.path->pointTolerance(), b.path->pointTolerance()) * 10.0;
  const Frame f = frameOf(projPlane.pointOnPlane(), projPlane.normal());
  std::vector<Prim> primsA, primsB;
  for (std::size_t i = 0; i < a.path->pieces().size(); ++i) addPrims(*a.path, i, f, a.extBack(i), a.extFwd(i), primsA);
  for (std::size_t j = 0; j < b.path->pieces().size(); ++j) addPrims(*b.path, j, f, b.extBack(j), b.extFwd(j), primsB);
  auto box = [](const Prim& p, double& x0, double& y0, double& x1, double& y1) {
    if (p.extBack || p.extFwd) {
      x0 = y0 = -kInf;
      x1 = y1 = kInf;
    } else if (p.circle) {
      x0 = p.c.x - p.r, y0 = p.c.y - p.r, x1 = p.c.x + p.r, y1 = p.c.y + p.r;
    } else {
      x0 = std::min(p.a.x, p.b.x), y0 = std::min(p.a.y, p.b.y), x1 = std::max(p.a.x, p.b.x), y1 = std::max(p.a.y, p.b.y);
    }
  };
  AcGePoint3dArray found;
  for (const Prim& p : primsA) {
    double px0, py0, px1, py1;
    box(p, px0, py0, px1, py1);
    for (const Prim& q : primsB) {
      double qx0, qy0, qx1, qy1;
      box(q, qx0, qy0, qx1, qy1);
      if (px0 > qx1 + tol || qx0 > px1 + tol || py0 > qy1 + tol || qy0 > py1 + tol) continue;
      meet(p, q, tol, [&](double sp, double) { appendUnique(found, a.path->pieces()[p.piece].pointAt(sp), tol); });
    }
  }
  for (const AcGePoint3d& p : found) points.append(p);
  return Acad::eOk;
}
