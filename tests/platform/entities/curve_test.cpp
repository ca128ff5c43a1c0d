// AcDbCurve queries on lines, arcs and circles against analytic results.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "arxHeaders.h"
#include "entity_test_support.h"

using enttest::kPi;

namespace {

constexpr double kTol = 1e-9;

void expectNear(const AcGePoint3d& a, const AcGePoint3d& b, double tol = kTol) {
  EXPECT_LE(a.distanceTo(b), tol) << "(" << a.x << "," << a.y << "," << a.z << ") vs (" << b.x << "," << b.y << ","
                                  << b.z << ")";
}

TEST(AcDbLineCurve, ParameterIsDistanceFromStart) {
  AcDbLine line(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3));  // length 5
  double p0 = -1, p1 = -1;
  ASSERT_EQ(line.getStartParam(p0), Acad::eOk);
  ASSERT_EQ(line.getEndParam(p1), Acad::eOk);
  EXPECT_DOUBLE_EQ(p0, 0.0);
  EXPECT_NEAR(p1, 5.0, kTol);
  AcGePoint3d p;
  ASSERT_EQ(line.getPointAtParam(2.5, p), Acad::eOk);
  expectNear(p, AcGePoint3d(2.5, 4, 3));
  double d = 0;
  ASSERT_EQ(line.getDistAtPoint(AcGePoint3d(2.5, 4, 3), d), Acad::eOk);
  EXPECT_NEAR(d, 2.5, kTol);
  AcGeVector3d v;
  ASSERT_EQ(line.getFirstDeriv(1.0, v), Acad::eOk);
  EXPECT_NEAR(v.x, 0.6, kTol);
  EXPECT_NEAR(v.y, 0.8, kTol);
  ASSERT_EQ(line.getSecondDeriv(1.0, v), Acad::eOk);
  EXPECT_NEAR(v.length(), 0.0, kTol);
}

TEST(AcDbLineCurve, OutOfRangeClampsWithinToleranceAndFailsBeyond) {
  AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  AcGePoint3d p;
  EXPECT_EQ(line.getPointAtParam(10.0 + 1e-12, p), Acad::eOk);
  expectNear(p, AcGePoint3d(10, 0, 0));
  EXPECT_EQ(line.getPointAtParam(10.1, p), Acad::eInvalidInput);
  EXPECT_EQ(line.getPointAtDist(-0.1, p), Acad::eInvalidInput);
  double param = 0;
  EXPECT_EQ(line.getParamAtPoint(AcGePoint3d(5, 0.001, 0), param), Acad::eInvalidInput);
  EXPECT_EQ(line.getDistAtPoint(AcGePoint3d(5, 0.001, 0), param), Acad::eInvalidInput);
}

TEST(AcDbLineCurve, ClosestPointWithAndWithoutExtension) {
  AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  AcGePoint3d c;
  ASSERT_EQ(line.getClosestPointTo(AcGePoint3d(4, 3, 7), c), Acad::eOk);
  expectNear(c, AcGePoint3d(4, 0, 0));
  ASSERT_EQ(line.getClosestPointTo(AcGePoint3d(-4, 3, 0), c), Acad::eOk);
  expectNear(c, AcGePoint3d(0, 0, 0));
  ASSERT_EQ(line.getClosestPointTo(AcGePoint3d(-4, 3, 0), c, true), Acad::eOk);
  expectNear(c, AcGePoint3d(-4, 0, 0));
  // Seen along z, a point above the line finds the line point below it.
  AcDbLine slanted(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 10));
  ASSERT_EQ(slanted.getClosestPointTo(AcGePoint3d(3, 0, 100), AcGeVector3d::kZAxis, c), Acad::eOk);
  expectNear(c, AcGePoint3d(3, 0, 3), 1e-6);
}

TEST(AcDbLineCurve, ExtendAndSplitKeepTheLine) {
  AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  ASSERT_EQ(line.extend(12.0), Acad::eOk);
  expectNear(line.endPoint(), AcGePoint3d(12, 0, 0));
  ASSERT_EQ(line.extend(true, AcGePoint3d(-3, 5, 0)), Acad::eOk);
  expectNear(line.startPoint(), AcGePoint3d(-3, 0, 0));
  EXPECT_EQ(line.extend(5.0), Acad::eInvalidInput);  // inside: nothing to extend
  AcGeDoubleArray params;
  params.append(10.0);
  params.append(2.0);
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(line.getSplitCurves(params, pieces), Acad::eOk);
  ASSERT_EQ(pieces.length(), 3);
  const double expected[3][2] = {{-3, -1}, {-1, 7}, {7, 12}};
  for (int i = 0; i < 3; ++i) {
    std::unique_ptr<AcDbLine> piece(AcDbLine::cast(static_cast<AcRxObject*>(static_cast<AcDbCurve*>(pieces[i]))));
    ASSERT_NE(piece, nullptr);
    EXPECT_NEAR(piece->startPoint().x, expected[i][0], kTol);
    EXPECT_NEAR(piece->endPoint().x, expected[i][1], kTol);
  }
}

TEST(AcDbArcCurve, ParameterIsAngle) {
  const double r = 5.0;
  AcDbArc arc(AcGePoint3d(10, 20, 0), r, kPi / 2, 0.0);  // runs 90 -> 360 degrees
  double p0 = 0, p1 = 0;
  ASSERT_EQ(arc.getStartParam(p0), Acad::eOk);
  ASSERT_EQ(arc.getEndParam(p1), Acad::eOk);
  EXPECT_NEAR(p0, kPi / 2, kTol);
  EXPECT_NEAR(p1, 2 * kPi, kTol);
  AcGePoint3d p;
  ASSERT_EQ(arc.getPointAtParam(kPi, p), Acad::eOk);
  expectNear(p, AcGePoint3d(5, 20, 0));
  double d = 0;
  ASSERT_EQ(arc.getDistAtParam(kPi, d), Acad::eOk);
  EXPECT_NEAR(d, r * kPi / 2, kTol);
  ASSERT_EQ(arc.getDistAtPoint(AcGePoint3d(10, 15, 0), d), Acad::eOk);
  EXPECT_NEAR(d, r * kPi, kTol);
  AcGeVector3d v;
  ASSERT_EQ(arc.getFirstDeriv(kPi, v), Acad::eOk);
  EXPECT_NEAR(v.length(), r, kTol);
  EXPECT_NEAR(v.y, -r, kTol);  // moving counter-clockwise at the left-most point: downwards
  ASSERT_EQ(arc.getSecondDeriv(kPi, v), Acad::eOk);
  EXPECT_NEAR(v.x, r, kTol);  // towards the centre, |r|
  // The quarter not swept: its nearest points are the ends.
  AcGePoint3d c;
  ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(12, 21, 0), c), Acad::eOk);
  expectNear(c, AcGePoint3d(15, 20, 0));
  ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(12, 21, 0), c, true), Acad::eOk);
  expectNear(c, AcGePoint3d(10 + r * 2 / std::sqrt(5.0), 20 + r / std::sqrt(5.0), 0));
  double area = 0;
  ASSERT_EQ(arc.getArea(area), Acad::eOk);
  const double t = 1.5 * kPi;
  EXPECT_NEAR(area, r * r * (t - std::sin(t)) / 2, 1e-9);
}

TEST(AcDbArcCurve, TiltedNormalKeepsArcLengthAndPlane) {
  const AcGeVector3d n = AcGeVector3d(1, 1, 1).normal();
  AcDbArc arc(AcGePoint3d(1, 2, 3), n, 2.0, 0.3, 2.0);
  double len = 0, p1 = 0;
  ASSERT_EQ(arc.getEndParam(p1), Acad::eOk);
  ASSERT_EQ(arc.getDistAtParam(p1, len), Acad::eOk);
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
  AcGeDoubleArray params;
  for (double a : {0.5, 2.0, 4.0}) params.append(a);
  AcDbVoidPtrArray pieces;
  ASSERT_EQ(circle.getSplitCurves(params, pieces), Acad::eOk);
  ASSERT_EQ(pieces.length(), 3);
  double total = 0;
  for (void* v : pieces) {
    std::unique_ptr<AcDbCurve> c(static_cast<AcDbCurve*>(v));
    ASSERT_NE(AcDbArc::cast(c.get()), nullptr);
    double e = 0, d = 0;
    c->getEndParam(e);
    c->getDistAtParam(e, d);
    total += d;
  }
  EXPECT_NEAR(total, 2 * kPi * 3, 1e-9);
}

TEST(CurveTransforms, RoundTripRestoresGeometry) {
  AcGeMatrix3d m = AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, 3).normal(), AcGePoint3d(5, 5, 5));
  m.preMultBy(AcGeMatrix3d::scaling(2.5, AcGePoint3d(1, 0, 0)));
  m.preMultBy(AcGeMatrix3d::translation(AcGeVector3d(100, -50, 7)));
  const AcGeMatrix3d inv = m.inverse();
  AcDbArc arc(AcGePoint3d(1, 2, 0), 3.0, 0.4, 2.5);
  AcDbCircle circle(AcGePoint3d(1, 2, 0), AcGeVector3d::kZAxis, 3.0);
  AcDbLine line(AcGePoint3d(1, 2, 0), AcGePoint3d(5, 7, 1));
  AcDbCurve* curves[] = {&arc, &circle, &line};
  int checked = 0;
  for (AcDbCurve* c : curves) {
    AcGePoint3d before[5];
    double s = 0, e = 0;
    c->getStartParam(s);
    c->getEndParam(e);
    for (int k = 0; k < 5; ++k) ASSERT_EQ(c->getPointAtParam(s + (e - s) * k / 4, before[k]), Acad::eOk);
    ASSERT_EQ(c->transformBy(m), Acad::eOk);
    AcGePoint3d moved;
    c->getStartPoint(moved);
    AcGePoint3d expect = before[0];
    // A circle's start follows the new normal's OCS x axis, not the old start.
    if (!c->isClosed()) expectNear(moved, expect.transformBy(m), 1e-8);
    ASSERT_EQ(c->transformBy(inv), Acad::eOk);
    for (int k = 0; k < 5; ++k) {
      AcGePoint3d p;
      ASSERT_EQ(c->getPointAtParam(s + (e - s) * k / 4, p), Acad::eOk);
      expectNear(p, before[k], 1e-8);
    }
    ++checked;
  }
  EXPECT_EQ(checked, 3);
}

TEST(CurveTransforms, MirrorKeepsArcPoints) {
  AcDbArc arc(AcGePoint3d(1, 2, 0), 3.0, 0.4, 2.5);
  AcGePoint3d s, e;
  arc.getStartPoint(s);
  arc.getEndPoint(e);
  const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGePlane(AcGePoint3d(0, 0, 0), AcGeVector3d::kXAxis));
  ASSERT_EQ(arc.transformBy(mirror), Acad::eOk);
  AcGePoint3d s2, e2;
  arc.getStartPoint(s2);
  arc.getEndPoint(e2);
  expectNear(s2, s.transformBy(mirror), 1e-9);
  expectNear(e2, e.transformBy(mirror), 1e-9);
}

TEST(CurveClosestAlong, ExtendReachesPastTheEnds) {
  AcDbLine slanted(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 10));
  AcGePoint3d c;
  ASSERT_EQ(slanted.getClosestPointTo(AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis, c), Acad::eOk);
  expectNear(c, AcGePoint3d(0, 0, 0));
  ASSERT_EQ(slanted.getClosestPointTo(AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis, c, true), Acad::eOk);
  expectNear(c, AcGePoint3d(-3, 0, -3), 1e-9);
  // A quarter arc seen from above: beyond its end the extended query follows the circle.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 5.0, 0.0, kPi / 2);
  ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(-5, 1, 50), AcGeVector3d::kZAxis, c), Acad::eOk);
  expectNear(c, AcGePoint3d(0, 5, 0), 1e-6);
  ASSERT_EQ(arc.getClosestPointTo(AcGePoint3d(-5, 1, 50), AcGeVector3d::kZAxis, c, true), Acad::eOk);
  expectNear(c, AcGePoint3d(-25 / std::sqrt(26.0), 5 / std::sqrt(26.0), 0), 1e-6);
  // A closed curve has no ends to extend.
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
  ASSERT_EQ(circle.getClosestPointTo(AcGePoint3d(0, 9, 3), AcGeVector3d::kZAxis, c, true), Acad::eOk);
  expectNear(c, AcGePoint3d(0, 2, 0), 1e-6);
}

// The quarter arc of radius 5 about the origin from (5, 0) to (0, 5).
TEST(ArcStretch, EndsAndMiddleRefitTheArc) {
  auto quarter = [] { return std::make_unique<AcDbArc>(AcGePoint3d(0, 0, 0), 5.0, 0.0, kPi / 2); };
  auto arc = quarter();
  AcGePoint3dArray pts;
  ASSERT_EQ(arc->getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 3);
  expectNear(pts[0], AcGePoint3d(5, 0, 0));
  expectNear(pts[1], AcGePoint3d(0, 5, 0));
  expectNear(pts[2], AcGePoint3d(5 / std::sqrt(2.0), 5 / std::sqrt(2.0), 0));
  AcGeIntArray all;
  for (int i : {2, 0, 1}) all.append(i);
  ASSERT_EQ(arc->moveStretchPointsAt(all, AcGeVector3d(1, 2, 3)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(1, 2, 3));
  EXPECT_NEAR(arc->radius(), 5.0, 1e-12);
  EXPECT_NEAR(arc->totalAngle(), kPi / 2, 1e-12);

  // The end swung down to (-5, 0): the circle through the three is the same, the arc a half.
  arc = quarter();
  AcGeIntArray end;
  end.append(1);
  ASSERT_EQ(arc->moveStretchPointsAt(end, AcGeVector3d(-5, -5, 0)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(0, 0, 0));
  EXPECT_NEAR(arc->radius(), 5.0, 1e-12);
  EXPECT_NEAR(arc->startAngle(), 0.0, 1e-12);
  EXPECT_NEAR(arc->endAngle(), kPi, 1e-12);

  // The middle pulled across the chord to (1, 1): the arc now bends the other way, through
  // the circle centred (23/6, 23/6) by symmetry; its normal stays up, its ends trade places.
  arc = quarter();
  AcGeIntArray mid;
  mid.append(2);
  const double m = 5 / std::sqrt(2.0);
  ASSERT_EQ(arc->moveStretchPointsAt(mid, AcGeVector3d(1 - m, 1 - m, 0)), Acad::eOk);
  expectNear(arc->center(), AcGePoint3d(23.0 / 6, 23.0 / 6, 0), 1e-9);
  EXPECT_NEAR(arc->radius(), std::sqrt(578.0) / 6, 1e-9);
  EXPECT_EQ(arc->normal(), AcGeVector3d(0, 0, 1));
  for (const AcGePoint3d& p : {AcGePoint3d(5, 0, 0), AcGePoint3d(0, 5, 0), AcGePoint3d(1, 1, 0)}) {
    double d = 0;
    EXPECT_EQ(arc->getDistAtPoint(p, d), Acad::eOk) << p.x << "," << p.y;
  }

  // The middle onto the chord leaves no arc; nothing changes.
  arc = quarter();
  EXPECT_EQ(arc->moveStretchPointsAt(mid, AcGeVector3d(2.5 - m, 2.5 - m, 0)), Acad::eDegenerateGeometry);
  EXPECT_EQ(arc->center(), AcGePoint3d(0, 0, 0));
  EXPECT_EQ(arc->radius(), 5.0);
  AcGeIntArray bad;
  bad.append(3);
  EXPECT_EQ(arc->moveStretchPointsAt(bad, AcGeVector3d(1, 0, 0)), Acad::eInvalidIndex);

  // A circle only moves.
  AcDbCircle circle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0);
  pts.setLogicalLength(0);
  ASSERT_EQ(circle.getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  AcGeIntArray centre;
  centre.append(0);
  ASSERT_EQ(circle.moveStretchPointsAt(centre, AcGeVector3d(2, 0, 0)), Acad::eOk);
  EXPECT_EQ(circle.center(), AcGePoint3d(3, 1, 0));
  EXPECT_EQ(circle.radius(), 2.0);
}

TEST(CurveExtents, ArcExtentsAreExact) {
  AcDbArc arc(AcGePoint3d(0, 0, 0), 2.0, -0.5, 2.0);  // passes 0 and 90 degrees
  AcDbExtents ext;
  ASSERT_EQ(arc.getGeomExtents(ext), Acad::eOk);
  EXPECT_NEAR(ext.maxPoint().x, 2.0, kTol);
  EXPECT_NEAR(ext.maxPoint().y, 2.0, kTol);
  EXPECT_NEAR(ext.minPoint().x, 2.0 * std::cos(2.0), kTol);
  EXPECT_NEAR(ext.minPoint().y, 2.0 * std::sin(-0.5), kTol);
}

}  // namespace
