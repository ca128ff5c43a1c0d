// Vectors, points, scales and intervals: analytic cases and properties on random inputs.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "ge_test_support.h"
#include "geintrvl.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "gepnt2d.h"
#include "gevec2d.h"

namespace {

using getest::near2;
using getest::near3;
constexpr double kPi = std::numbers::pi;

TEST(Vector2d, AngleCoversFullTurnCounterClockwiseFromX) {
  struct Case { double x, y, angle; };
  const Case cases[] = {{1, 0, 0}, {1, 1, kPi / 4}, {0, 2, kPi / 2}, {-3, 0, kPi},
                        {0, -1, 3 * kPi / 2}, {1, -1, 7 * kPi / 4}, {0, 0, 0}};
  ASSERT_EQ(std::size(cases), 7u);
  for (const Case& c : cases) EXPECT_NEAR(AcGeVector2d(c.x, c.y).angle(), c.angle, 1e-15) << c.x << "," << c.y;
  EXPECT_NEAR(AcGeVector2d(1, 0).angleTo(AcGeVector2d(-1, 1)), 3 * kPi / 4, 1e-15);
  AcGeVector2d m(1, 2);
  EXPECT_TRUE(m.mirror(AcGeVector2d(1, 0)).isEqualTo(AcGeVector2d(1, -2)));
}

TEST(Point2d, MatrixTransformsMatchRotationAndScaling) {
  getest::Random rnd;
  for (int i = 0; i < 50; ++i) {
    const AcGePoint2d p = rnd.point2d(100), c = rnd.point2d(100);
    const double a = rnd.uniform(-7, 7), s = rnd.uniform(-3, 3);
    AcGePoint2d r = p;
    r.rotateBy(a, c);
    EXPECT_TRUE(near2(AcGeMatrix2d::rotation(a, c) * p, r, 1e-11));
    AcGePoint2d q = p;
    q.scaleBy(s, c);
    EXPECT_TRUE(near2(AcGeMatrix2d::scaling(s, c) * p, q, 1e-11));
    const AcGeMatrix2d m = AcGeMatrix2d::rotation(a, c) * AcGeMatrix2d::scaling(s + 4.0, p);
    EXPECT_TRUE((m * m.inverse()).isEqualTo(AcGeMatrix2d::kIdentity, AcGeTol()));
  }
}

TEST(Vector3d, RotateByMatchesHandComputedRotations) {
  struct Case { AcGeVector3d v; double angle; AcGeVector3d axis; AcGeVector3d expected; };
  const double h = std::sqrt(0.5);
  const Case cases[] = {
      {{1, 0, 0}, kPi / 2, {0, 0, 1}, {0, 1, 0}},
      {{0, 1, 0}, kPi / 2, {1, 0, 0}, {0, 0, 1}},
      {{0, 0, 1}, kPi / 2, {0, 1, 0}, {1, 0, 0}},
      {{1, 0, 0}, kPi / 4, {0, 0, 5}, {h, h, 0}},
      {{1, 0, 0}, 2 * kPi / 3, {1, 1, 1}, {0, 1, 0}},  // a third turn about the diagonal cycles the axes
      {{2, 3, 4}, kPi, {0, 0, 1}, {-2, -3, 4}},
      {{2, 3, 4}, 1.0, {0, 0, 0}, {2, 3, 4}},  // zero axis: unchanged
  };
  ASSERT_EQ(std::size(cases), 7u);
  for (const Case& c : cases) {
    AcGeVector3d v = c.v;
    EXPECT_TRUE(near3(v.rotateBy(c.angle, c.axis), c.expected, 1e-14));
  }
}

TEST(Vector3d, PerpVectorIsPerpendicularSameLengthAndCounterClockwiseInPlan) {
  EXPECT_TRUE(near3(AcGeVector3d(0, -2, 0).perpVector(), AcGeVector3d(2, 0, 0), 1e-15));
  getest::Random rnd;
  for (int i = 0; i < 200; ++i) {
    const AcGeVector3d v = i % 4 == 0 ? AcGeVector3d(rnd.uniform(-0.01, 0.01), rnd.uniform(-0.01, 0.01), 1) : rnd.vector(10);
    const AcGeVector3d p = v.perpVector();
    EXPECT_NEAR(p.dotProduct(v), 0.0, 1e-12 * v.lengthSqrd());
    EXPECT_NEAR(p.length(), v.length(), 1e-12 * v.length());
  }
}

TEST(Vector3d, AngleToWithReferenceSpansFullTurn) {
  const AcGeVector3d x(1, 0, 0), z(0, 0, 1);
  for (int deg = 0; deg < 360; deg += 15) {
    const double a = deg * kPi / 180;
    const AcGeVector3d v(std::cos(a), std::sin(a), 0);
    EXPECT_NEAR(x.angleTo(v, z), a, 1e-12) << deg;
    EXPECT_NEAR(x.angleTo(v, -z), deg == 0 ? 0.0 : 2 * kPi - a, 1e-12) << deg;
  }
}

TEST(Vector3d, ProjectionsLandInThePlaneAlongTheDirection) {
  getest::Random rnd;
  for (int i = 0; i < 100; ++i) {
    const AcGeVector3d v = rnd.vector(10), n = rnd.unitVector(), d = rnd.unitVector();
    if (std::fabs(n.dotProduct(d)) < 0.1) continue;
    const AcGeVector3d p = v.project(n, d);
    EXPECT_NEAR(p.dotProduct(n), 0.0, 1e-11);
    EXPECT_NEAR((v - p).crossProduct(d).length(), 0.0, 1e-10);
    const AcGeVector3d o = v.orthoProject(n);
    EXPECT_NEAR(o.dotProduct(n), 0.0, 1e-12);
    EXPECT_NEAR((v - o).crossProduct(n).length(), 0.0, 1e-11);
  }
}

TEST(Vector3d, MirrorAndTransformByIgnoreTranslation) {
  AcGeVector3d v(1, 2, 3);
  EXPECT_TRUE(near3(v.mirror(AcGeVector3d(0, 0, 2)), AcGeVector3d(1, 2, -3), 1e-15));
  AcGeVector3d w(1, 0, 0);
  w.transformBy(AcGeMatrix3d::translation(AcGeVector3d(5, 5, 5)) * AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis));
  EXPECT_TRUE(near3(w, AcGeVector3d(0, 1, 0), 1e-15));
}

TEST(Point3d, RotateAndMirrorMatchHandResults) {
  // Quarter turn about the vertical through (1, 1, 0): (2, 1, 5) -> (1, 2, 5).
  AcGePoint3d q(2, 1, 5);
  EXPECT_TRUE(near3(q.rotateBy(kPi / 2, AcGeVector3d::kZAxis, AcGePoint3d(1, 1, 0)), AcGePoint3d(1, 2, 5), 1e-14));
  AcGePoint3d m(1, 2, 7);
  EXPECT_TRUE(near3(m.mirror(AcGePlane(AcGePoint3d(0, 0, 1), AcGeVector3d::kZAxis)), AcGePoint3d(1, 2, -5), 1e-14));
  EXPECT_NEAR(AcGeVector3d(0, -1, 0).angleOnPlane(AcGePlane()), 3 * kPi / 2, 1e-15);
}

TEST(Point3d, PlaneConversionRoundTripsAndProjects) {
  getest::Random rnd;
  for (int i = 0; i < 50; ++i) {
    const AcGePlane pln(rnd.point(100), rnd.unitVector());
    const AcGePoint3d p = rnd.point(100);
    const AcGePoint3d onPlane = p.orthoProject(pln);
    EXPECT_TRUE(pln.isOn(onPlane, AcGeTol()));
    EXPECT_TRUE(near3(AcGePoint3d(pln, onPlane.convert2d(pln)), onPlane, 1e-10));
    EXPECT_NEAR(p.distanceTo(onPlane), std::fabs(pln.signedDistanceTo(p)), 1e-10);
  }
}

TEST(Interval, BoundsContainmentAndSetOperations) {
  const AcGeInterval a(0.0, 2.0), b(1.0, 5.0), below(true, 3.0);
  EXPECT_FALSE(below.isBoundedAbove());
  EXPECT_DOUBLE_EQ(below.length(), -1.0);
  EXPECT_TRUE(a.contains(2.0));
  EXPECT_FALSE(a.contains(2.001));
  EXPECT_TRUE(below.contains(1e9));
  AcGeInterval r;
  ASSERT_TRUE(a.intersectWith(b, r));
  EXPECT_DOUBLE_EQ(r.lowerBound(), 1.0);
  EXPECT_DOUBLE_EQ(r.upperBound(), 2.0);
  EXPECT_TRUE(a.isDisjoint(AcGeInterval(3.0, 4.0)));
  a.getMerge(b, r);
  EXPECT_EQ(r, AcGeInterval(0.0, 5.0));
  EXPECT_TRUE(b.contains(AcGeInterval(2.0, 3.0)));
  EXPECT_FALSE(a.contains(AcGeInterval(1.0, 3.0)));
  EXPECT_TRUE(AcGeInterval(4.0, 1.0) == AcGeInterval(1.0, 4.0));
}

}  // namespace
