// Independent geometry for entity tests: bulge arcs by the textbook formulas and length sums,
// plus the small helpers every entity test file needs.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <random>
#include <vector>

#include "arxHeaders.h"

namespace enttest {

constexpr double kPi = 3.14159265358979323846;

// A bulged plan segment sampled independently of the host: the centre lies at c(1-b^2)/(4b)
// left of the chord midpoint, the arc turns by 4 atan(b) about it.
struct RefSegment {
  AcGePoint2d a, b;
  double bulge = 0.0;
  double angle() const { return 4.0 * std::atan(bulge); }
  double chord() const { return a.distanceTo(b); }
  double radius() const { return chord() / (2.0 * std::fabs(std::sin(angle() / 2.0))); }
  AcGePoint2d centre() const {
    const double c = chord(), d = c * (1.0 - bulge * bulge) / (4.0 * bulge);
    const AcGeVector2d left((a.y - b.y) / c, (b.x - a.x) / c);
    return AcGePoint2d((a.x + b.x) / 2, (a.y + b.y) / 2) + left * d;
  }
  double length() const { return bulge == 0.0 ? chord() : radius() * std::fabs(angle()); }
  AcGePoint2d at(double f) const {
    if (bulge == 0.0) return a + (b - a) * f;
    AcGePoint2d p = a;
    return p.rotateBy(angle() * f, centre());
  }
  // Signed area between chord and arc (positive for a counter-clockwise arc).
  double segmentArea() const {
    if (bulge == 0.0) return 0.0;
    const double t = std::fabs(angle()), r = radius();
    return (bulge > 0 ? 1.0 : -1.0) * r * r * (t - std::sin(t)) / 2.0;
  }
};

struct RefPolyline {
  std::vector<AcGePoint2d> pts;
  std::vector<double> bulges;
  bool closed = false;
  std::vector<RefSegment> segments() const {
    std::vector<RefSegment> out;
    const size_t n = pts.size(), m = closed ? n : n - 1;
    for (size_t i = 0; i < m; ++i) out.push_back({pts[i], pts[(i + 1) % n], bulges[i]});
    return out;
  }
  double length() const {
    double s = 0.0;
    for (const RefSegment& g : segments()) s += g.length();
    return s;
  }
  // Shoelace plus circular segments (closed polylines).
  double area() const {
    double twice = 0.0, seg = 0.0;
    for (const RefSegment& g : segments()) {
      twice += g.a.x * g.b.y - g.b.x * g.a.y;
      seg += g.segmentArea();
    }
    return std::fabs(twice / 2.0 + seg);
  }
  std::vector<AcGePoint2d> samples(int perSegment) const {
    std::vector<AcGePoint2d> out;
    for (const RefSegment& g : segments())
      for (int k = 0; k <= perSegment; ++k) out.push_back(g.at(static_cast<double>(k) / perSegment));
    return out;
  }
  AcDbPolyline* make(double elevation = 0.0) const {
    auto* pl = new AcDbPolyline;
    for (size_t i = 0; i < pts.size(); ++i) pl->addVertexAt(static_cast<unsigned>(i), pts[i], bulges[i]);
    pl->setClosed(closed);
    pl->setElevation(elevation);
    return pl;
  }
};

// A wandering polyline: steps of 1..3 units turning gently, bulges within +-0.6 (no
// self-overlap is needed for the properties tested).
inline RefPolyline randomPolyline(std::mt19937& rng, int n, bool withBulges) {
  std::uniform_real_distribution<double> step(1.0, 3.0), turn(-0.6, 0.6), bulge(-0.6, 0.6);
  RefPolyline pl;
  AcGePoint2d p(1000.0, 2000.0);
  double heading = 0.0;
  for (int i = 0; i < n; ++i) {
    pl.pts.push_back(p);
    pl.bulges.push_back(withBulges && i % 3 != 0 ? bulge(rng) : 0.0);
    heading += turn(rng);
    p += AcGeVector2d(std::cos(heading), std::sin(heading)) * step(rng);
  }
  pl.bulges.back() = 0.0;
  return pl;
}

inline void expectNear(const AcGePoint3d& a, const AcGePoint3d& b, double tol = 1e-9) {
  EXPECT_LE(a.distanceTo(b), tol) << "(" << a.x << "," << a.y << "," << a.z << ") vs (" << b.x << "," << b.y << ","
                                  << b.z << ")";
}

// Appends to the database's model space and closes the entity.
inline AcDbObjectId appendToModel(AcDbDatabase& db, AcDbEntity* ent) {
  AcDbBlockTableRecord* space = nullptr;
  EXPECT_EQ(acdbOpenObject(space, db.currentSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(space->appendAcDbEntity(id, ent), Acad::eOk);
  ent->close();
  space->close();
  return id;
}

// The curve's closest point to p (seen along a direction when one is given).
inline AcGePoint3d closest(const AcDbCurve& c, const AcGePoint3d& p, bool extend = false) {
  AcGePoint3d q;
  EXPECT_EQ(c.getClosestPointTo(p, q, extend), Acad::eOk);
  return q;
}
inline AcGePoint3d closest(const AcDbCurve& c, const AcGePoint3d& p, const AcGeVector3d& along, bool extend = false) {
  AcGePoint3d q;
  EXPECT_EQ(c.getClosestPointTo(p, along, q, extend), Acad::eOk);
  return q;
}

inline double curveLength(const AcDbCurve& c) {
  double end = 0, len = 0;
  EXPECT_EQ(c.getEndParam(end), Acad::eOk);
  EXPECT_EQ(c.getDistAtParam(end, len), Acad::eOk);
  return len;
}

// Pieces of a split, owned.
inline std::vector<std::unique_ptr<AcDbCurve>> splitAt(const AcDbCurve& c, std::initializer_list<double> params) {
  AcGeDoubleArray arr;
  for (double p : params) arr.append(p);
  AcDbVoidPtrArray pieces;
  EXPECT_EQ(c.getSplitCurves(arr, pieces), Acad::eOk);
  std::vector<std::unique_ptr<AcDbCurve>> out;
  for (void* v : pieces) out.emplace_back(static_cast<AcDbCurve*>(v));
  return out;
}

inline std::unique_ptr<AcDb2dPolyline> make2d(const RefPolyline& ref, double elevation = 0.0,
                                              const std::vector<double>& widths = {}) {
  auto pl = std::make_unique<AcDb2dPolyline>();
  pl->setElevation(elevation);
  for (std::size_t i = 0; i < ref.pts.size(); ++i) {
    const double w0 = i < widths.size() ? widths[i] : 0.0, w1 = i + 1 < widths.size() ? widths[i + 1] : 0.0;
    EXPECT_EQ(pl->appendVertex(new AcDb2dVertex(AcGePoint3d(ref.pts[i].x, ref.pts[i].y, 0.0), ref.bulges[i], w0, w1)),
              Acad::eOk);
  }
  if (ref.closed) pl->makeClosed();
  return pl;
}

// A 10 unit line east, then a counter-clockwise half circle (centre (10,5), radius 5) north.
inline const RefPolyline kLineAndHalfCircle{
    {AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(10, 10)}, {0.0, 1.0, 0.0}, false};

// What every bulged polyline built from `ref` at `elevation` must answer, against the textbook
// formulas: length, area (closed), each segment's middle at its parameter, closest points no
// farther than dense sampling finds, station and parameter round trips, split pieces running
// between their cuts and lying on the curve, and a transform undone by its inverse.
inline void expectFollowsReference(AcDbCurve& pl, const RefPolyline& ref, double elevation, std::mt19937& rng,
                                   int queries) {
  const auto lift = [&](const AcGePoint2d& p) { return AcGePoint3d(p.x, p.y, elevation); };
  const double len = curveLength(pl);
  EXPECT_NEAR(len, ref.length(), 1e-8 * len);
  double area = 0;
  if (ref.closed) {
    EXPECT_EQ(pl.getArea(area), Acad::eOk);
    EXPECT_NEAR(area, ref.area(), 1e-7 * (1 + ref.area()));
  }
  const std::vector<RefSegment> segs = ref.segments();
  AcGePoint3d p, back;
  for (std::size_t i = 0; i < segs.size(); i += 1 + segs.size() / 20) {
    ASSERT_EQ(pl.getPointAtParam(i + 0.5, p), Acad::eOk);
    expectNear(p, lift(segs[i].at(0.5)));
  }
  const std::vector<AcGePoint2d> samples = ref.samples(64);
  std::uniform_int_distribution<std::size_t> pick(0, samples.size() - 1);
  std::uniform_real_distribution<double> jitter(-4.0, 4.0);
  for (int q = 0; q < queries; ++q) {
    const AcGePoint2d base = samples[pick(rng)];
    const AcGePoint3d query(base.x + jitter(rng), base.y + jitter(rng), 9.0);
    const AcGePoint3d c = closest(pl, query);
    EXPECT_NEAR(c.z, elevation, 1e-9);
    double best = 1e300, dist = 0, param = 0;
    for (const AcGePoint2d& s : samples) best = std::min(best, query.distanceTo(lift(s)));
    EXPECT_LE(query.distanceTo(c), best + 1e-9);
    ASSERT_EQ(pl.getDistAtPoint(c, dist), Acad::eOk);
    ASSERT_EQ(pl.getPointAtDist(dist, back), Acad::eOk);
    expectNear(back, c, 1e-8);
    ASSERT_EQ(pl.getParamAtPoint(c, param), Acad::eOk);
    ASSERT_EQ(pl.getPointAtParam(param, back), Acad::eOk);
    expectNear(back, c, 1e-8);
  }
  // Split at two random parameters; closed, the second piece wraps through the start.
  const auto refDist = [&](double at) {
    const std::size_t i = std::min<std::size_t>(static_cast<std::size_t>(at), segs.size() - 1);
    double d = 0.0;
    for (std::size_t k = 0; k < i; ++k) d += segs[k].length();
    return d + (at - i) * segs[i].length();
  };
  std::uniform_real_distribution<double> cut(0.05, segs.size() - 0.05);
  const double a = cut(rng), b = cut(rng), lo = std::min(a, b), hi = std::max(a, b);
  const auto pieces = splitAt(pl, {a, b});
  ASSERT_EQ(pieces.size(), ref.closed ? 2u : 3u);
  std::vector<double> expected = {refDist(lo), refDist(hi) - refDist(lo), ref.length() - refDist(hi)};
  if (ref.closed) expected = {expected[1], expected[2] + expected[0]};
  AcGePoint3d end;
  for (std::size_t k = 0; k < pieces.size(); ++k) {
    const double d = curveLength(*pieces[k]);
    EXPECT_NEAR(d, expected[k], 1e-8 * len) << "piece " << k;
    ASSERT_EQ(pieces[k]->getStartPoint(p), Acad::eOk);
    if (k > 0) {
      expectNear(p, end);
    }
    pieces[k]->getEndPoint(end);
    for (int j = 0; j <= 8; ++j) {
      ASSERT_EQ(pieces[k]->getPointAtDist(d * j / 8, p), Acad::eOk);
      expectNear(closest(pl, p), p, 1e-8);
    }
  }
  AcGeMatrix3d m = AcGeMatrix3d::rotation(1.1, AcGeVector3d(0.3, -0.2, 1).normal(), AcGePoint3d(1, 1, 1));
  m.preMultBy(AcGeMatrix3d::scaling(0.5));
  ASSERT_EQ(pl.transformBy(m), Acad::eOk);
  ASSERT_EQ(pl.transformBy(m.inverse()), Acad::eOk);
  for (std::size_t i = 0; i < segs.size(); i += 1 + segs.size() / 20) {
    ASSERT_EQ(pl.getPointAtParam(i + 0.5, p), Acad::eOk);
    expectNear(p, lift(segs[i].at(0.5)), 1e-8);
  }
}

}  // namespace enttest
