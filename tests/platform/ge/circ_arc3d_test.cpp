// AcGeCircArc3d: construction, analytic lengths, closest points and intersections.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "curve_test_support.h"
#include "ge_test_support.h"
#include "gearc3d.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"

namespace {

using getest::near3;

AcGeLineSeg3d segment(const AcGePoint3d& a, const AcGePoint3d& b) { return AcGeLineSeg3d(a, b); }
constexpr double kPi = std::numbers::pi;

AcGeTol pointTol(double t) {
  AcGeTol tol;
  tol.setEqualPoint(t);
  return tol;
}

AcGeCircArc3d randomArc(getest::Random& rnd) {
  const AcGeVector3d n = rnd.unitVector();
  const double start = rnd.uniform(-kPi, kPi);
  return AcGeCircArc3d(rnd.point(100), n, n.perpVector().rotateBy(rnd.uniform(0, 6), n), rnd.uniform(0.5, 50), start,
                       start + rnd.uniform(0.1, 2 * kPi));
}

TEST(CircArc3d, ArcRunsCounterClockwiseFromTheReferenceVector) {
  const AcGeCircArc3d arc(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.0, 0.0, kPi / 2);
  EXPECT_TRUE(near3(arc.startPoint(), AcGePoint3d(3, 1, 0), 1e-15));
  EXPECT_TRUE(near3(arc.endPoint(), AcGePoint3d(1, 3, 0), 1e-15));
  EXPECT_NEAR(arc.paramOf(AcGePoint3d(1 + std::sqrt(2.0), 1 + std::sqrt(2.0), 7)), kPi / 4, 1e-15);
  EXPECT_TRUE(AcGeCircArc3d().isClosed());
}

TEST(CircArc3d, ArcLengthIsRadiusTimesAngle) {
  struct Case { double radius, start, end, length; };
  const Case cases[] = {{1, 0, kPi, kPi}, {2.5, -1, 1, 5}, {10, 0, 2 * kPi, 20 * kPi}, {3, 1, 0.5, 3 * (2 * kPi - 0.5)}};
  ASSERT_EQ(std::size(cases), 4u);
  for (const Case& c : cases) {
    const AcGeCircArc3d arc(AcGePoint3d::kOrigin, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, c.radius, c.start, c.end);
    EXPECT_NEAR(arc.length(arc.startAng(), arc.endAng()), c.length, 1e-13);
  }
  getest::Random rnd(23);
  for (int i = 0; i < 100; ++i) {
    const AcGeCircArc3d arc = randomArc(rnd);
    const double p = rnd.uniform(arc.startAng(), arc.endAng());
    EXPECT_NEAR(arc.length(arc.startAng(), p), arc.radius() * (p - arc.startAng()), 1e-12);
    EXPECT_NEAR(arc.paramAtLength(arc.startAng(), arc.length(arc.startAng(), p)), p, 1e-12);
    EXPECT_NEAR(arc.paramAtLength(arc.endAng(), arc.length(p, arc.endAng()), false), p, 1e-12);
  }
}

TEST(CircArc3d, ThreePointArcPassesThroughItsPointsInOrder) {
  getest::Random rnd(29);
  int built = 0;
  for (int i = 0; i < 100; ++i) {
    const AcGePoint3d a = rnd.point(50), b = rnd.point(50), c = rnd.point(50);
    AcGeError err;
    AcGeCircArc3d arc;
    arc.set(a, b, c, err);
    if (err != AcGe::kOk) continue;
    const double tol = 1e-9 * (1 + arc.radius());
    EXPECT_TRUE(near3(arc.startPoint(), a, tol));
    EXPECT_TRUE(near3(arc.endPoint(), c, tol));
    double t = 0;
    ASSERT_TRUE(arc.isOn(b, t, pointTol(tol)));
    EXPECT_GT(t, arc.startAng());
    EXPECT_LT(t, arc.endAng());
    ++built;
  }
  EXPECT_EQ(built, 100);
  AcGeError err;
  AcGeCircArc3d line;
  line.set(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1), AcGePoint3d(2, 2, 2), err);
  EXPECT_EQ(err, AcGe::kLinearlyDependentArg1Arg2Arg3);
}

TEST(CircArc3d, ClosestPointsMatchIndependentSearch) {
  getest::Random rnd(31);
  for (int i = 0; i < 200; ++i) {
    const AcGeCircArc3d arc = randomArc(rnd);
    const AcGePoint3d q = arc.center() + rnd.vector(2 * arc.radius());
    const AcGePoint3d c = arc.closestPointTo(q);
    const double searched = getest::searchedDistance(arc, arc.startAng(), arc.endAng(), q);
    EXPECT_LE(c.distanceTo(q), searched + 1e-12);
    EXPECT_NEAR(c.distanceTo(q), searched, 1e-9);
    EXPECT_TRUE(arc.isOn(c, pointTol(1e-9)));
    // Seen along a direction: distances measured in the plane normal to it.
    const AcGeVector3d dir = i % 3 == 0 ? arc.normal() : rnd.unitVector();
    const AcGePoint3d pc = arc.projClosestPointTo(q, dir);
    const AcGeVector3d d = (pc - q) - dir * (pc - q).dotProduct(dir);
    EXPECT_NEAR(d.length(), getest::searchedDistance(arc, arc.startAng(), arc.endAng(), q, &dir), 1e-7 * (1 + arc.radius()));
    EXPECT_TRUE(arc.isOn(pc, pointTol(1e-9)));
  }
}

TEST(CircArc3d, IntersectWithLinesTable) {
  const AcGeCircArc3d circle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 2.0);
  const AcGeCircArc3d upperHalf(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 2.0, 0, kPi);
  struct Case { const AcGeCircArc3d* arc; AcGeLineSeg3d seg; int count; };
  const Case cases[] = {
      {&circle, segment({-5, 0, 0}, {5, 0, 0}), 2},
      {&circle, segment({-5, 2, 0}, {5, 2, 0}), 1},     // tangent
      {&circle, segment({-5, 3, 0}, {5, 3, 0}), 0},
      {&circle, segment({0, 0, 0}, {5, 0, 0}), 1},      // segment ends inside
      {&upperHalf, segment({0, -5, 0}, {0, 5, 0}), 1},  // the lower crossing is off the arc
      {&circle, segment({2, 0, -1}, {2, 0, 1}), 1},     // pierces the plane on the circle
      {&circle, segment({1, 0, -1}, {1, 0, 1}), 0},     // pierces the plane inside
      {&circle, segment({-5, 0, 1}, {5, 0, 1}), 0},     // parallel plane
  };
  ASSERT_EQ(std::size(cases), 8u);
  int i = 0;
  for (const Case& c : cases) {
    int n = -1;
    AcGePoint3d p1, p2;
    c.arc->intersectWith(c.seg, n, p1, p2);
    EXPECT_EQ(n, c.count) << "case " << i;
    if (n > 0) {
      EXPECT_NEAR(p1.distanceTo(AcGePoint3d::kOrigin), 2.0, 1e-12) << "case " << i;
    }
    if (n > 1) {
      EXPECT_NEAR(p2.distanceTo(AcGePoint3d::kOrigin), 2.0, 1e-12) << "case " << i;
    }
    ++i;
  }
}

TEST(CircArc3d, IntersectWithArcsCoplanarAndCrossed) {
  int n = 0;
  AcGePoint3d p1, p2;
  const AcGeCircArc3d a(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0), b(AcGePoint3d(1, 0, 0), AcGeVector3d::kZAxis, 1.0);
  ASSERT_TRUE(a.intersectWith(b, n, p1, p2));
  ASSERT_EQ(n, 2);
  for (const AcGePoint3d& p : {p1, p2}) {
    EXPECT_NEAR(p.x, 0.5, 1e-15);
    EXPECT_NEAR(std::fabs(p.y), std::sqrt(0.75), 1e-15);
  }
  const AcGeCircArc3d upright(AcGePoint3d(0, 0, 0), AcGeVector3d::kYAxis, 1.0);
  ASSERT_TRUE(a.intersectWith(upright, n, p1, p2));
  EXPECT_EQ(n, 2);
  EXPECT_NEAR(std::fabs(p1.x), 1.0, 1e-15);
  EXPECT_NEAR(p1.x + p2.x, 0.0, 1e-15);
  EXPECT_FALSE(a.intersectWith(AcGeCircArc3d(AcGePoint3d(5, 0, 0), AcGeVector3d::kZAxis, 1.0), n, p1, p2));
  EXPECT_EQ(n, 0);
  EXPECT_FALSE(a.intersectWith(a, n, p1, p2));  // overlapping
}

TEST(CircArc3d, TangentInsideAndTransform) {
  const AcGeCircArc3d circle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 1.0);
  AcGeLine3d tangent;
  ASSERT_TRUE(circle.tangent(AcGePoint3d(2, 1, 0), tangent));
  EXPECT_TRUE(tangent.direction().isParallelTo(AcGeVector3d::kYAxis));
  EXPECT_FALSE(circle.tangent(AcGePoint3d(3, 1, 0), tangent));
  EXPECT_TRUE(circle.isInside(AcGePoint3d(1.5, 1, 0)));
  EXPECT_FALSE(circle.isInside(AcGePoint3d(1.5, 1, 0.5)));
  getest::Random rnd(41);
  for (int i = 0; i < 20; ++i) {
    AcGeCircArc3d arc = randomArc(rnd);
    const AcGePoint3d s = arc.startPoint(), m = arc.evalPoint(0.5 * (arc.startAng() + arc.endAng())), e = arc.endPoint();
    const AcGeMatrix3d xf = i % 2 ? AcGeMatrix3d::mirroring(AcGePlane(rnd.point(10), rnd.unitVector()))
                                  : AcGeMatrix3d::rotation(rnd.uniform(0, 6), rnd.unitVector(), rnd.point(10)) *
                                        AcGeMatrix3d::scaling(rnd.uniform(0.5, 2));
    arc.transformBy(xf);
    const double tol = 1e-9 * (1 + arc.radius());
    EXPECT_TRUE(near3(arc.startPoint(), xf * s, tol));
    EXPECT_TRUE(near3(arc.endPoint(), xf * e, tol));
    EXPECT_TRUE(arc.isOn(xf * m, pointTol(tol)));
  }
}

TEST(CircArc3d, SamplePointsStayWithinTheChordTolerance) {
  const AcGeCircArc3d arc(AcGePoint3d(3, 4, 5), AcGeVector3d(1, 2, 3), AcGeVector3d::kXAxis, 25.0, 0.3, 4.0);
  for (double eps : {1.0, 0.1, 0.001}) {
    AcGePoint3dArray pts;
    AcGeDoubleArray params;
    arc.getSamplePoints(arc.startAng(), arc.endAng(), eps, pts, params);
    ASSERT_GE(pts.length(), 2);
    EXPECT_EQ(pts.length(), params.length());
    EXPECT_TRUE(near3(pts.first(), arc.startPoint(), 1e-12));
    EXPECT_TRUE(near3(pts.last(), arc.endPoint(), 1e-12));
    for (int i = 0; i + 1 < pts.length(); ++i) {
      const AcGePoint3d mid = pts[i] + (pts[i + 1] - pts[i]) * 0.5;
      EXPECT_LE(arc.radius() - mid.distanceTo(arc.center()), eps + 1e-12);
    }
  }
  AcGePoint3dArray even;
  arc.getSamplePoints(5, even);
  ASSERT_EQ(even.length(), 5);
  EXPECT_TRUE(near3(even[2], arc.evalPoint(2.15), 1e-12));
}

}  // namespace
