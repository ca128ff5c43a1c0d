// AcDbEntity::intersectWith: analytic crossings, extension modes and points on both operands.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "arxHeaders.h"
#include "entity_test_support.h"

namespace {

// The distance from p to a curve (its closest point, not extended).
double offCurve(const AcDbCurve& c, const AcGePoint3d& p) {
  AcGePoint3d q;
  EXPECT_EQ(c.getClosestPointTo(p, q), Acad::eOk);
  return p.distanceTo(q);
}

TEST(IntersectWith, AnalyticCrossings) {
  AcDbLine horizontal(AcGePoint3d(-10, 1, 0), AcGePoint3d(10, 1, 0));
  AcDbCircle circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
  AcDbArc upper(AcGePoint3d(0, 0, 0), 2.0, 0.0, enttest::kPi);
  AcDbArc other(AcGePoint3d(2, 0, 0), 2.0, 0.0, 2 * enttest::kPi - 1e-3);
  AcDbLine diagonal(AcGePoint3d(-5, -4, 0), AcGePoint3d(5, 6, 0));
  struct Case {
    const AcDbEntity* a;
    const AcDbEntity* b;
    int count;
  };
  const Case cases[] = {
      {&horizontal, &circle, 2}, {&horizontal, &upper, 2}, {&circle, &other, 2},
      {&upper, &other, 1},       {&horizontal, &diagonal, 1}, {&diagonal, &circle, 2},
  };
  int n = 0;
  for (const Case& c : cases) {
    AcGePoint3dArray pts;
    ASSERT_EQ(c.a->intersectWith(c.b, AcDb::kOnBothOperands, pts), Acad::eOk);
    EXPECT_EQ(pts.length(), c.count) << "case " << n;
    for (const AcGePoint3d& p : pts) {
      EXPECT_LE(offCurve(*AcDbCurve::cast(c.a), p), 1e-9) << "case " << n;
      EXPECT_LE(offCurve(*AcDbCurve::cast(c.b), p), 1e-9) << "case " << n;
    }
    ++n;
  }
  EXPECT_EQ(n, 6);
}

TEST(IntersectWith, ExtensionModesDecideWhichOperandGrows) {
  AcDbLine a(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));   // reaches x = 5 only extended
  AcDbLine b(AcGePoint3d(5, 1, 0), AcGePoint3d(5, 10, 0));  // reaches y = 0 only extended
  AcDbLine c(AcGePoint3d(5, -1, 0), AcGePoint3d(5, 10, 0)); // crosses y = 0
  struct Case {
    const AcDbLine* arg;
    AcDb::Intersect mode;
    int count;
  };
  const Case cases[] = {
      {&b, AcDb::kOnBothOperands, 0}, {&b, AcDb::kExtendThis, 0}, {&b, AcDb::kExtendArg, 0},
      {&b, AcDb::kExtendBoth, 1},     {&c, AcDb::kOnBothOperands, 0}, {&c, AcDb::kExtendThis, 1},
      {&c, AcDb::kExtendArg, 0},      {&c, AcDb::kExtendBoth, 1},
  };
  int n = 0;
  for (const Case& cs : cases) {
    AcGePoint3dArray pts;
    ASSERT_EQ(a.intersectWith(cs.arg, cs.mode, pts), Acad::eOk);
    EXPECT_EQ(pts.length(), cs.count) << "case " << n;
    if (pts.length() == 1) {
      EXPECT_LE(pts[0].distanceTo(AcGePoint3d(5, 0, 0)), 1e-12);
    }
    ++n;
  }
  EXPECT_EQ(n, 8);
  // An arc extends to its circle.
  AcDbArc arc(AcGePoint3d(0, 0, 0), 1.0, 0.0, 0.5);
  AcDbLine vertical(AcGePoint3d(-1, -5, 0), AcGePoint3d(-1, 5, 0));
  AcGePoint3dArray pts;
  ASSERT_EQ(arc.intersectWith(&vertical, AcDb::kOnBothOperands, pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 0);
  ASSERT_EQ(arc.intersectWith(&vertical, AcDb::kExtendThis, pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_LE(pts[0].distanceTo(AcGePoint3d(-1, 0, 0)), 1e-9);
}

TEST(IntersectWith, SkewLinesMeetOnlyInProjection) {
  AcDbLine low(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 10, 0));
  AcDbLine high(AcGePoint3d(0, 10, 5), AcGePoint3d(10, 0, 5));
  AcGePoint3dArray pts;
  ASSERT_EQ(low.intersectWith(&high, AcDb::kOnBothOperands, pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 0);
  ASSERT_EQ(high.intersectWith(&low, AcDb::kOnBothOperands, AcGePlane(), pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_LE(pts[0].distanceTo(AcGePoint3d(5, 5, 5)), 1e-12);  // on the entity asked
  // Lines meeting in space off the XY plane.
  AcDbLine up(AcGePoint3d(0, 0, 0), AcGePoint3d(0, 0, 10));
  AcDbLine across(AcGePoint3d(-1, 0, 3), AcGePoint3d(1, 0, 3));
  pts.setLogicalLength(0);
  ASSERT_EQ(up.intersectWith(&across, AcDb::kOnBothOperands, pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  EXPECT_LE(pts[0].distanceTo(AcGePoint3d(0, 0, 3)), 1e-12);
}

TEST(IntersectWith, RandomBulgedPolylinesGivePointsOnBoth) {
  std::mt19937 rng(5);
  int points = 0;
  for (int k = 0; k < 10; ++k) {
    enttest::RefPolyline ra = enttest::randomPolyline(rng, 30, true);
    enttest::RefPolyline rb = enttest::randomPolyline(rng, 30, true);
    for (AcGePoint2d& p : rb.pts) p = AcGePoint2d(p.y - 1000.0, p.x + 1000.0 - 30.0);  // crossing the other
    std::unique_ptr<AcDbPolyline> a(ra.make()), b(rb.make());
    AcGePoint3dArray pts;
    ASSERT_EQ(a->intersectWith(b.get(), AcDb::kOnBothOperands, pts), Acad::eOk);
    for (const AcGePoint3d& p : pts) {
      EXPECT_LE(offCurve(*a, p), 1e-8);
      EXPECT_LE(offCurve(*b, p), 1e-8);
    }
    points += pts.length();
  }
  EXPECT_GT(points, 0);
}

}  // namespace
