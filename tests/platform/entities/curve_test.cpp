// AcDbCurve queries against analytic results: the parameterisation of every curve kind, and
// lines, arcs and circles in detail.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "arxHeaders.h"
#include "entity_test_support.h"

using enttest::expectNear;
using enttest::kPi;

namespace {

constexpr double kTol = 1e-9;

// Each curve kind's parameterisation at hand-worked points: from the parameter, the distance
// and the point, every other of the three.
TEST(CurveParameterisation, ParamPointAndDistanceAgreeWithHandValues) {
  AcDbLine line(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3));  // the distance from the start
  AcDbArc arc(AcGePoint3d(10, 20, 0), 5.0, kPi / 2, 0.0);    // the angle, from 90 degrees
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 3.0);
  AcDbRay ray;  // the distance from the base
  ray.setBasePoint(AcGePoint3d(1, 2, 3));
  ray.setUnitDir(AcGeVector3d(0.6, 0.8, 0));
  // Vertex index plus fraction: a semicircle below the chord (0,0)-(10,0), then north.
  const enttest::RefPolyline semi{{AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(10, 10)}, {1.0, 0.0, 0.0}, false};
  std::unique_ptr<AcDbPolyline> lw(semi.make(4.0));
  const auto old2d = enttest::make2d(enttest::kLineAndHalfCircle);
  AcDb3dPolyline old3d(AcDb::k3dSimplePoly, AcGePoint3dArray{AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 12),
                                                             AcGePoint3d(3, 4, 20), AcGePoint3d(5, 6, 21)});
  struct Row {
    const AcDbCurve* curve;
    double param;
    AcGePoint3d point;
    double dist;
  };
  const Row rows[] = {
      {&line, 2.5, {2.5, 4, 3}, 2.5},
      {&line, 5.0, {4, 6, 3}, 5.0},
      {&arc, kPi, {5, 20, 0}, 2.5 * kPi},
      {&arc, 1.5 * kPi, {10, 15, 0}, 5 * kPi},
      {&circle, kPi / 2, {0, 3, 0}, 1.5 * kPi},
      {&ray, 0.5, {1.3, 2.4, 3}, 0.5},
      {&ray, 10.0, {7, 10, 3}, 10.0},
      {&ray, 1e6, {1 + 6e5, 2 + 8e5, 3}, 1e6},
      {lw.get(), 0.5, {5, -5, 4}, 2.5 * kPi},
      {lw.get(), 1.25, {10, 2.5, 4}, 5 * kPi + 2.5},
      {old2d.get(), 0.5, {5, 0, 0}, 5.0},
      {old2d.get(), 1.5, {15, 5, 0}, 10 + 2.5 * kPi},  // due east of the half circle's centre
      {&old3d, 1.25, {3, 4, 14}, 15.0},
      {&old3d, 2.5, {4, 5, 20.5}, 22.5},
  };
  static_assert(std::size(rows) == 14);
  int n = 0;
  for (const Row& r : rows) {
    SCOPED_TRACE(testing::Message() << "row " << n++);
    const double tol = 1e-9 * std::max(1.0, r.dist);
    AcGePoint3d p;
    double t = 0, d = 0;
    ASSERT_EQ(r.curve->getPointAtParam(r.param, p), Acad::eOk);
    expectNear(p, r.point, tol);
    ASSERT_EQ(r.curve->getDistAtParam(r.param, d), Acad::eOk);
    EXPECT_NEAR(d, r.dist, tol);
    ASSERT_EQ(r.curve->getParamAtPoint(r.point, t), Acad::eOk);
    EXPECT_NEAR(t, r.param, tol);
    ASSERT_EQ(r.curve->getDistAtPoint(r.point, d), Acad::eOk);
    EXPECT_NEAR(d, r.dist, tol);
    ASSERT_EQ(r.curve->getPointAtDist(r.dist, p), Acad::eOk);
    expectNear(p, r.point, tol);
    ASSERT_EQ(r.curve->getParamAtDist(r.dist, t), Acad::eOk);
    EXPECT_NEAR(t, r.param, tol);
  }
}

TEST(AcDbLineCurve, DerivativesAndOffTheLineIsRefused) {
  AcDbLine line(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3));  // length 5
  double p0 = -1, p1 = -1, d = 0;
  ASSERT_EQ(line.getStartParam(p0), Acad::eOk);
  ASSERT_EQ(line.getEndParam(p1), Acad::eOk);
  EXPECT_DOUBLE_EQ(p0, 0.0);
  EXPECT_NEAR(p1, 5.0, kTol);
  AcGePoint3d p;
  AcGeVector3d v;
  ASSERT_EQ(line.getFirstDeriv(1.0, v), Acad::eOk);
  EXPECT_TRUE(v.isEqualTo(AcGeVector3d(0.6, 0.8, 0)));
  ASSERT_EQ(line.getSecondDeriv(1.0, v), Acad::eOk);
  EXPECT_NEAR(v.length(), 0.0, kTol);
  // Just past the end clamps within tolerance; further is refused, as is a point beside it.
  EXPECT_EQ(line.getPointAtParam(5.0 + 1e-12, p), Acad::eOk);
  expectNear(p, AcGePoint3d(4, 6, 3));
  EXPECT_EQ(line.getPointAtParam(5.1, p), Acad::eInvalidInput);
  EXPECT_EQ(line.getPointAtDist(-0.1, p), Acad::eInvalidInput);
  EXPECT_EQ(line.getParamAtPoint(AcGePoint3d(2.5, 4.001, 3), d), Acad::eInvalidInput);
  EXPECT_EQ(line.getDistAtPoint(AcGePoint3d(2.5, 4.001, 3), d), Acad::eInvalidInput);
}

TEST(AcDbLineCurve, ClosestPointExtendAndSplit) {
  AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  expectNear(enttest::closest(line, AcGePoint3d(4, 3, 7)), AcGePoint3d(4, 0, 0));
  expectNear(enttest::closest(line, AcGePoint3d(-4, 3, 0)), AcGePoint3d(0, 0, 0));
  expectNear(enttest::closest(line, AcGePoint3d(-4, 3, 0), true), AcGePoint3d(-4, 0, 0));
  ASSERT_EQ(line.extend(12.0), Acad::eOk);
  expectNear(line.endPoint(), AcGePoint3d(12, 0, 0));
  ASSERT_EQ(line.extend(true, AcGePoint3d(-3, 5, 0)), Acad::eOk);
  expectNear(line.startPoint(), AcGePoint3d(-3, 0, 0));
  EXPECT_EQ(line.extend(5.0), Acad::eInvalidInput);  // inside: nothing to extend
  const auto pieces = enttest::splitAt(line, {10.0, 2.0});
  ASSERT_EQ(pieces.size(), 3u);
  const double expected[3][2] = {{-3, -1}, {-1, 7}, {7, 12}};
  for (int i = 0; i < 3; ++i) {
    const AcDbLine* piece = AcDbLine::cast(pieces[i].get());
    ASSERT_NE(piece, nullptr);
    EXPECT_NEAR(piece->startPoint().x, expected[i][0], kTol);
    EXPECT_NEAR(piece->endPoint().x, expected[i][1], kTol);
  }
}

TEST(AcDbArcCurve, EndParamsDerivativesClosestPointAndArea) {
  const double r = 5.0;
  AcDbArc arc(AcGePoint3d(10, 20, 0), r, kPi / 2, 0.0);  // runs 90 -> 360 degrees
  double p0 = 0, p1 = 0;
  ASSERT_EQ(arc.getStartParam(p0), Acad::eOk);
  ASSERT_EQ(arc.getEndParam(p1), Acad::eOk);
  EXPECT_NEAR(p0, kPi / 2, kTol);
  EXPECT_NEAR(p1, 2 * kPi, kTol);
  AcGeVector3d v;
  ASSERT_EQ(arc.getFirstDeriv(kPi, v), Acad::eOk);
  EXPECT_TRUE(v.isEqualTo(AcGeVector3d(0, -r, 0)));  // counter-clockwise at the left-most point
  ASSERT_EQ(arc.getSecondDeriv(kPi, v), Acad::eOk);
  EXPECT_TRUE(v.isEqualTo(AcGeVector3d(r, 0, 0)));  // towards the centre
  // The quarter not swept: its nearest points are the ends.
  expectNear(enttest::closest(arc, AcGePoint3d(12, 21, 0)), AcGePoint3d(15, 20, 0));
  expectNear(enttest::closest(arc, AcGePoint3d(12, 21, 0), true),
             AcGePoint3d(10 + r * 2 / std::sqrt(5.0), 20 + r / std::sqrt(5.0), 0));
  double area = 0;
  ASSERT_EQ(arc.getArea(area), Acad::eOk);
  const double t = 1.5 * kPi;
  EXPECT_NEAR(area, r * r * (t - std::sin(t)) / 2, 1e-9);
}

TEST(AcDbArcCurve, TiltedNormalKeepsArcLengthAndPlane) {
  const AcGeVector3d n = AcGeVector3d(1, 1, 1).normal();
  AcDbArc arc(AcGePoint3d(1, 2, 3), n, 2.0, 0.3, 2.0);
  const double len = enttest::curveLength(arc);
  EXPECT_NEAR(len, 2.0 * 1.7, 1e-9);
  for (int k = 0; k <= 10; ++k) {
    AcGePoint3d p;
    ASSERT_EQ(arc.getPointAtDist(len * k / 10, p), Acad::eOk);
    EXPECT_NEAR((p - AcGePoint3d(1, 2, 3)).dotProduct(n), 0.0, 1e-9);
    EXPECT_NEAR(p.distanceTo(AcGePoint3d(1, 2, 3)), 2.0, 1e-9);
  }
}

TEST(AcDbCircleCurve, ClosedPeriodicAreaAndSplit) {
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 3.0);
  EXPECT_TRUE(circle.isClosed());
  EXPECT_TRUE(circle.isPeriodic());
  double area = 0;
  ASSERT_EQ(circle.getArea(area), Acad::eOk);
  EXPECT_NEAR(area, kPi * 9, 1e-9);
  AcGePoint3d p;
  ASSERT_EQ(circle.getPointAtParam(2 * kPi + kPi / 2, p), Acad::eOk);  // wraps
  expectNear(p, AcGePoint3d(0, 3, 0));
  const auto pieces = enttest::splitAt(circle, {0.5, 2.0, 4.0});
  ASSERT_EQ(pieces.size(), 3u);
  double total = 0;
  for (const auto& c : pieces) {
    ASSERT_NE(AcDbArc::cast(c.get()), nullptr);
    total += enttest::curveLength(*c);
  }
  EXPECT_NEAR(total, 2 * kPi * 3, 1e-9);
}

// A transform and its inverse give back every point; the ends of open curves follow the
// transform (a mirrored arc must swap its angles to keep them).
TEST(CurveTransforms, RoundTripRestoresGeometryAndMovesTheEnds) {
  AcGeMatrix3d m = AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3).normal(), AcGePoint3d(5, 5, 5));
  m.preMultBy(AcGeMatrix3d::scaling(2.5, AcGePoint3d(1, 0, 0)));
  m.preMultBy(AcGeMatrix3d::translation(AcGeVector3d(100, -50, 7)));
  const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 0), AcGeVector3d::kXAxis));
  int checked = 0;
  for (const AcGeMatrix3d& x : {m, mirror}) {
    AcDbArc arc(AcGePoint3d(1, 2, 0), 3.0, 0.4, 2.5);
    AcDbCircle circle(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 3.0);
    AcDbLine line(AcGePoint3d(1, 2, 0), AcGePoint3d(5, 7, 1));
    AcDbCurve* const curves[] = {&arc, &circle, &line};
    for (AcDbCurve* c : curves) {
      AcGePoint3d before[5], s, e, moved;
      double s0 = 0, e0 = 0;
      c->getStartParam(s0);
      c->getEndParam(e0);
      for (int k = 0; k < 5; ++k) ASSERT_EQ(c->getPointAtParam(s0 + (e0 - s0) * k / 4, before[k]), Acad::eOk);
      c->getStartPoint(s);
      c->getEndPoint(e);
      ASSERT_EQ(c->transformBy(x), Acad::eOk);
      // A circle's start follows the new normal's OCS x axis, not the old start.
      if (!c->isClosed()) {
        c->getStartPoint(moved);
        expectNear(moved, s.transformBy(x), 1e-8);
        c->getEndPoint(moved);
        expectNear(moved, e.transformBy(x), 1e-8);
      }
      ASSERT_EQ(c->transformBy(x.inverse()), Acad::eOk);
      for (int k = 0; k < 5; ++k) {
        AcGePoint3d p;
        ASSERT_EQ(c->getPointAtParam(s0 + (e0 - s0) * k / 4, p), Acad::eOk);
        expectNear(p, before[k], 1e-8);
      }
      ++checked;
    }
  }
  EXPECT_EQ(checked, 6);
}

TEST(CurveClosestAlong, SeenAlongADirectionAndExtendedPastTheEnds) {
  AcDbLine slanted(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 10));
  expectNear(enttest::closest(slanted, AcGePoint3d(3, 0, 100), AcGeVector3d::kZAxis), AcGePoint3d(3, 0, 3), 1e-6);
  expectNear(enttest::closest(slanted, AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis), AcGePoint3d(0, 0, 0));
  expectNear(enttest::closest(slanted, AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis, true), AcGePoint3d(-3, 0, -3));
  // A quarter arc seen from above: beyond its end the extended query follows the circle.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 5.0, 0.0, kPi / 2);
  expectNear(enttest::closest(arc, AcGePoint3d(-5, 1, 50), AcGeVector3d::kZAxis), AcGePoint3d(0, 5, 0), 1e-6);
  expectNear(enttest::closest(arc, AcGePoint3d(-5, 1, 50), AcGeVector3d::kZAxis, true),
             AcGePoint3d(-25 / std::sqrt(26.0), 5 / std::sqrt(26.0), 0), 1e-6);
  // A closed curve has no ends to extend.
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
  expectNear(enttest::closest(circle, AcGePoint3d(0, 9, 3), AcGeVector3d::kZAxis, true), AcGePoint3d(0, 2, 0), 1e-6);
}

// The quarter arc of radius 5 about the origin from (5, 0) to (0, 5), stretched at its grips
// (start, end, middle); the circle through the three moved grips is worked out by hand.
TEST(ArcStretch, EndsAndMiddleRefitTheArc) {
  auto quarter = [] { return std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 0), 5.0, 0.0, kPi / 2); };
  auto grips = [](std::initializer_list<int> i) {
    AcGeIntArray a;
    for (int k : i) a.append(k);
    return a;
  };
  auto arc = quarter();
  const double m = 5 / std::sqrt(2.0);
  AcGePoint3dArray pts;
  ASSERT_EQ(arc->getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 3);
  expectNear(pts[0], AcGePoint3d(5, 0, 0));
  expectNear(pts[1], AcGePoint3d(0, 5, 0));
  expectNear(pts[2], AcGePoint3d(m, m, 0));
  ASSERT_EQ(arc->moveStretchPointsAt(grips({2, 0, 1}), AcGeVector3d(1, 2, 3)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(1, 2, 3));
  EXPECT_NEAR(arc->radius(), 5.0, 1e-12);
  EXPECT_NEAR(arc->totalAngle(), kPi / 2, 1e-12);

  // The end swung down to (-5, 0): the circle through the three is the same, the arc a half.
  arc = quarter();
  ASSERT_EQ(arc->moveStretchPointsAt(grips({1}), AcGeVector3d(-5, -5, 0)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(0, 0, 0));
  EXPECT_NEAR(arc->radius(), 5.0, 1e-12);
  EXPECT_NEAR(arc->startAngle(), 0.0, 1e-12);
  EXPECT_NEAR(arc->endAngle(), kPi, 1e-12);

  // The middle pulled across the chord to (1, 1): the arc now bends the other way, through
  // the circle centred (23/6, 23/6) by symmetry; its normal stays up, its ends trade places.
  arc = quarter();
  ASSERT_EQ(arc->moveStretchPointsAt(grips({2}), AcGeVector3d(1 - m, 1 - m, 0)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(23.0 / 6, 23.0 / 6, 0));
  EXPECT_NEAR(arc->radius(), std::sqrt(578.0) / 6, 1e-9);
  EXPECT_EQ(arc->normal(), AcGeVector3d(0, 0, 1));
  for (const AcGePoint3d& p : {AcGePoint3d(5, 0, 0), AcGePoint3d(0, 5, 0), AcGePoint3d(1, 1, 0)}) {
    double d = 0;
    EXPECT_EQ(arc->getDistAtPoint(p, d), Acad::eOk) << p.x << "," << p.y;
  }

  // The middle onto the chord leaves no arc; nothing changes.
  arc = quarter();
  EXPECT_EQ(arc->moveStretchPointsAt(grips({2}), AcGeVector3d(2.5 - m, 2.5 - m, 0)), Acad::eDegenerateGeometry);
  EXPECT_EQ(arc->center(), AcGePoint3d(0, 0, 0));
  EXPECT_EQ(arc->radius(), 5.0);
  EXPECT_EQ(arc->moveStretchPointsAt(grips({3}), AcGeVector3d(1, 0, 0)), Acad::eInvalidIndex);

  // A circle only moves.
  AcDbCircle circle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0);
  pts.setLogicalLength(0);
  ASSERT_EQ(circle.getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  ASSERT_EQ(circle.moveStretchPointsAt(grips({0}), AcGeVector3d(2, 0, 0)), Acad::eOk);
  EXPECT_EQ(circle.center(), AcGePoint3d(3, 1, 0));
  EXPECT_EQ(circle.radius(), 2.0);
}

TEST(CurveExtents, ArcExtentsAreExact) {
  AcDbArc arc(AcGePoint3d(0, 0, 0), 2.0, -0.5, 2.0);  // passes 0 and 90 degrees
  AcDbExtents ext;
  ASSERT_EQ(arc.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.maxPoint(), AcGePoint3d(2, 2, 0));
  expectNear(ext.minPoint(), AcGePoint3d(2.0 * std::cos(2.0), 2.0 * std::sin(-0.5), 0));
}

}  // namespace
