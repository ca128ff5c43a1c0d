// BulgeSegment: analytic arcs and properties on random bulges, checked against an independent construction.
#include "ge/bulge_segment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "bulge_test_support.h"
#include "ge_test_support.h"
#include "gearc3d.h"
#include "gelnsg3d.h"

namespace {

using getest::near2;
using tdhost::ge::BulgeSegment;
constexpr double kPi = std::numbers::pi;

TEST(BulgeSegment, KnownArcsHaveTheirCentreRadiusAndLength) {
  struct Case { AcGePoint2d p0, p1; double bulge; AcGePoint2d center; double radius, length; AcGePoint2d mid; };
  const double t8 = std::tan(kPi / 8), h = std::sqrt(0.5);
  const Case cases[] = {
      // A counter-clockwise half circle along +x passes below the chord.
      {{0, 0}, {2, 0}, 1.0, {1, 0}, 1.0, kPi, {1, -1}},
      {{0, 0}, {2, 0}, -1.0, {1, 0}, 1.0, kPi, {1, 1}},
      {{1, 0}, {0, 1}, t8, {0, 0}, 1.0, kPi / 2, {h, h}},
      {{0, 1}, {1, 0}, -t8, {0, 0}, 1.0, kPi / 2, {h, h}},
      // Three quarters of a circle of radius 2 about (5, 5).
      {{7, 5}, {5, 3}, std::tan(3 * kPi / 8), {5, 5}, 2.0, 3 * kPi, {5 - 2 * h, 5 + 2 * h}},
      {{0, 0}, {3, 4}, 0.0, {1.5, 2}, 0.0, 5.0, {1.5, 2}},
  };
  ASSERT_EQ(std::size(cases), 6u);
  int i = 0;
  for (const Case& c : cases) {
    const BulgeSegment seg(c.p0, c.p1, c.bulge);
    EXPECT_TRUE(near2(seg.center(), c.center, 1e-14)) << "case " << i;
    EXPECT_NEAR(seg.radius(), c.radius, 1e-14) << "case " << i;
    EXPECT_NEAR(seg.length(), c.length, 1e-14) << "case " << i;
    EXPECT_TRUE(near2(seg.pointAtDist(c.length / 2), c.mid, 1e-14)) << "case " << i;
    ++i;
  }
}

TEST(BulgeSegment, RandomArcsSatisfyBulgeGeometry) {
  getest::Random rnd(7);
  for (int i = 0; i < 300; ++i) {
    const AcGePoint2d p0 = rnd.point2d(1000), p1 = p0 + AcGeVector2d(rnd.uniform(-50, 50), rnd.uniform(-50, 50));
    const double b = rnd.uniform(-3, 3);
    const BulgeSegment seg(p0, p1, b);
    ASSERT_TRUE(seg.isArc());
    const double c = p0.distanceTo(p1), theta = 4 * std::atan(b), r = seg.radius();
    const double tol = 1e-9 * (1 + r);
    EXPECT_NEAR(seg.includedAngle(), theta, 1e-15);
    EXPECT_NEAR(BulgeSegment::bulgeOf(theta), b, 1e-12);
    EXPECT_NEAR(seg.center().distanceTo(p0), r, tol);
    EXPECT_NEAR(seg.center().distanceTo(p1), r, tol);
    EXPECT_NEAR(seg.length(), r * std::fabs(theta), tol);
    // Sagitta: the arc midpoint stands |b| c / 2 off the chord midpoint.
    const AcGePoint2d chordMid = p0 + (p1 - p0) * 0.5;
    EXPECT_NEAR(seg.pointAtDist(seg.length() / 2).distanceTo(chordMid), std::fabs(b) * c / 2, tol);
    EXPECT_NEAR(seg.sagitta(), std::fabs(b) * c / 2, 1e-12 * c);
    const getest::IndependentArc ind = getest::independentArc(p0, p1, b);
    EXPECT_TRUE(near2(seg.center(), ind.center, tol));
    EXPECT_TRUE(near2(seg.pointAtDist(0), p0, 0));
    EXPECT_TRUE(near2(seg.pointAtDist(seg.length()), p1, 0));
    for (double f : {0.1, 0.37, 0.5, 0.93}) {
      const AcGePoint2d q = seg.pointAtDist(f * seg.length());
      EXPECT_NEAR(q.distanceTo(seg.center()), r, tol);  // on the circle
      EXPECT_TRUE(near2(q, ind.at(f), tol));
      EXPECT_NEAR(seg.distAtPoint(q), f * seg.length(), tol);
      // The tangent is perpendicular to the radius and turns with the bulge's sign.
      const AcGeVector2d t = seg.tangentAt(f * seg.length()), radial = q - seg.center();
      EXPECT_NEAR(t.length(), 1.0, 1e-12);
      EXPECT_NEAR(t.dotProduct(radial), 0.0, tol);
      EXPECT_GT(std::copysign(1.0, b) * (radial.x * t.y - radial.y * t.x), 0.0);
    }
  }
}

TEST(BulgeSegment, ClosestPointMatchesDenseIndependentSearch) {
  getest::Random rnd(11);
  for (int i = 0; i < 200; ++i) {
    const AcGePoint2d p0 = rnd.point2d(100), p1 = p0 + AcGeVector2d(rnd.uniform(-20, 20), rnd.uniform(-20, 20));
    const double b = i % 5 == 0 ? 0.0 : rnd.uniform(-2.5, 2.5);
    const BulgeSegment seg(p0, p1, b);
    const getest::IndependentArc ind = getest::independentArc(p0, p1, b);
    const AcGePoint2d q = p0 + AcGeVector2d(rnd.uniform(-40, 40), rnd.uniform(-40, 40));
    const auto along = [&](double f) { return b == 0.0 ? p0 + (p1 - p0) * f : ind.at(f); };
    const double searched = getest::minimizeOnUnit([&](double f) { return q.distanceTo(along(f)); });
    const tdhost::ge::SegmentClosest c = seg.closestPoint(q);
    EXPECT_LE(c.distance, searched + 1e-12);
    EXPECT_NEAR(c.distance, searched, 1e-9);
    EXPECT_NEAR(c.point.distanceTo(q), c.distance, 1e-9);
    EXPECT_TRUE(near2(seg.pointAtDist(c.distAlong), c.point, 1e-9));
  }
}

TEST(BulgeSegment, BoundingBoxIsTightAroundTheArc) {
  getest::Random rnd(3);
  for (int i = 0; i < 100; ++i) {
    const AcGePoint2d p0 = rnd.point2d(50), p1 = rnd.point2d(50);
    const BulgeSegment seg(p0, p1, rnd.uniform(-4, 4));
    const tdhost::ge::Box2d box = seg.boundingBox();
    double minX = HUGE_VAL, minY = HUGE_VAL, maxX = -HUGE_VAL, maxY = -HUGE_VAL;
    const getest::IndependentArc ind = getest::independentArc(p0, p1, seg.bulge());
    for (int k = 0; k <= 20000; ++k) {
      const AcGePoint2d q = ind.at(k / 20000.0);
      minX = std::min(minX, q.x); maxX = std::max(maxX, q.x);
      minY = std::min(minY, q.y); maxY = std::max(maxY, q.y);
    }
    const double slack = 1e-9 * (1 + seg.radius()), sampling = seg.radius() * 1e-6;
    EXPECT_LE(box.minX, minX + slack); EXPECT_GE(box.minX, minX - sampling);
    EXPECT_LE(box.minY, minY + slack); EXPECT_GE(box.minY, minY - sampling);
    EXPECT_GE(box.maxX, maxX - slack); EXPECT_LE(box.maxX, maxX + sampling);
    EXPECT_GE(box.maxY, maxY - slack); EXPECT_LE(box.maxY, maxY + sampling);
  }
}

TEST(BulgeSegment, WorldArcsKeepEndsLengthAndDirectionOfTravel) {
  getest::Random rnd(59);
  for (int i = 0; i < 100; ++i) {
    const AcGePoint2d p0 = rnd.point2d(100), p1 = rnd.point2d(100);
    const BulgeSegment seg(p0, p1, rnd.uniform(-2, 2));
    ASSERT_TRUE(seg.isArc());
    const AcGeVector3d n = i % 2 ? AcGeVector3d::kZAxis : rnd.unitVector();
    const double elev = rnd.uniform(-10, 10);
    const AcGeCircArc3d arc = seg.arc3d(n, elev);
    const AcGeLineSeg3d chord = seg.line3d(n, elev);
    const double tol = 1e-9 * (1 + seg.radius());
    EXPECT_TRUE(getest::near3(arc.startPoint(), chord.startPoint(), tol));
    EXPECT_TRUE(getest::near3(arc.endPoint(), chord.endPoint(), tol));
    EXPECT_NEAR(arc.length(arc.startAng(), arc.endAng()), seg.length(), tol);
    EXPECT_NEAR(chord.length(), seg.chordLength(), 1e-9);
    // Heights in the object system: every point lies at the elevation along the normal.
    EXPECT_NEAR(arc.center().asVector().dotProduct(n), elev, 1e-9);
    if (n == AcGeVector3d::kZAxis) {
      const AcGePoint3d mid = arc.evalPoint(0.5 * arc.endAng());
      EXPECT_TRUE(near2(AcGePoint2d(mid.x, mid.y), seg.pointAtDist(seg.length() / 2), tol));
      EXPECT_NEAR(mid.z, elev, 1e-12);
    }
  }
}

TEST(BulgeSegment, DegenerateInputsStayFinite) {
  const BulgeSegment point({1, 1}, {1, 1}, 0.5);
  EXPECT_FALSE(point.isArc());
  EXPECT_DOUBLE_EQ(point.length(), 0.0);
  EXPECT_TRUE(near2(point.pointAtDist(3), AcGePoint2d(1, 1), 0));
  EXPECT_TRUE(point.tangentAt(0).isEqualTo(AcGeVector2d::kXAxis));
  const BulgeSegment nearlyStraight({0, 0}, {10, 0}, 1e-13);
  EXPECT_FALSE(nearlyStraight.isArc());
  EXPECT_NEAR(nearlyStraight.length(), 10.0, 1e-15);
  // Beyond the ends, points clamp; the centre of an arc is equidistant and maps to the start.
  const BulgeSegment half({0, 0}, {2, 0}, 1.0);
  EXPECT_TRUE(near2(half.pointAtDist(-1), AcGePoint2d(0, 0), 0));
  EXPECT_TRUE(near2(half.pointAtDist(99), AcGePoint2d(2, 0), 0));
  EXPECT_DOUBLE_EQ(half.closestPoint({1, 0}).distAlong, 0.0);
  EXPECT_NEAR(half.startAngle(), kPi, 1e-15);
  EXPECT_NEAR(half.endAngle(), 0.0, 1e-15);
}

}  // namespace
