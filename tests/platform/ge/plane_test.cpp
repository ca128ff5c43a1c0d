// AcGePlane: distances, projections, intersections and its coordinate system.
#include <gtest/gtest.h>

#include <cmath>

#include "ge_test_support.h"
#include "geline3d.h"
#include "gemat3d.h"
#include "gelnsg3d.h"
#include "geplane.h"

namespace {

using getest::near3;

TEST(Plane, SignedDistanceClosestPointAndCoefficients) {
  const AcGePlane pln(AcGePoint3d(0, 0, 5), AcGeVector3d(0, 0, -2));
  EXPECT_DOUBLE_EQ(pln.signedDistanceTo(AcGePoint3d(3, 4, 1)), 4.0);
  EXPECT_DOUBLE_EQ(pln.distanceTo(AcGePoint3d(3, 4, 8)), 3.0);
  EXPECT_TRUE(near3(pln.closestPointTo(AcGePoint3d(3, 4, 8)), AcGePoint3d(3, 4, 5), 1e-15));
  double a, b, c, d;
  pln.getCoefficients(a, b, c, d);
  EXPECT_DOUBLE_EQ(c * 5 + d, 0.0);
  const AcGePlane fromCoeffs(0, 0, 2, -10);
  EXPECT_TRUE(fromCoeffs.isOn(AcGePoint3d(7, -1, 5)));
  EXPECT_TRUE(AcGePlane(AcGePoint3d(1, 0, 0), AcGePoint3d::kOrigin, AcGePoint3d(0, 1, 0)).isCoplanarTo(AcGePlane()));
}

TEST(Plane, ProjectAlongDirectionAndIntersectLines) {
  getest::Random rnd;
  int hits = 0;
  for (int i = 0; i < 100; ++i) {
    const AcGePlane pln(rnd.point(100), rnd.unitVector());
    const AcGePoint3d p = rnd.point(100);
    const AcGeVector3d dir = rnd.unitVector();
    AcGePoint3d q;
    if (std::fabs(dir.dotProduct(pln.normal())) < 0.05) continue;
    ASSERT_TRUE(pln.project(p, dir, q));
    EXPECT_NEAR(pln.signedDistanceTo(q), 0.0, 1e-9);
    EXPECT_NEAR((q - p).crossProduct(dir).length(), 0.0, 1e-9);
    AcGePoint3d hit;
    ASSERT_TRUE(pln.intersectWith(AcGeLine3d(p, dir), hit));
    EXPECT_TRUE(near3(hit, q, 1e-9));
    // The segment reaches the plane only when its ends lie on opposite sides.
    const AcGeLineSeg3d seg(p, p + dir * 10.0);
    const bool crosses = pln.signedDistanceTo(p) * pln.signedDistanceTo(p + dir * 10.0) <= 0;
    EXPECT_EQ(pln.intersectWith(seg, hit), crosses);
    hits += crosses;
  }
  EXPECT_GT(hits, 0);
  AcGePoint3d unused;
  EXPECT_FALSE(AcGePlane().intersectWith(AcGeLine3d(AcGePoint3d(0, 0, 1), AcGeVector3d(1, 1, 0)), unused));
}

TEST(Plane, TwoPlanesMeetInTheirCommonLine) {
  getest::Random rnd;
  for (int i = 0; i < 30; ++i) {
    const AcGePlane a(rnd.point(100), rnd.unitVector()), b(rnd.point(100), rnd.unitVector());
    AcGeLine3d line;
    if (a.normal().crossProduct(b.normal()).length() < 0.1) continue;
    ASSERT_TRUE(a.intersectWith(b, line));
    for (double t : {-50.0, 0.0, 75.0}) {
      EXPECT_NEAR(a.signedDistanceTo(line.evalPoint(t)), 0.0, 1e-9);
      EXPECT_NEAR(b.signedDistanceTo(line.evalPoint(t)), 0.0, 1e-9);
    }
  }
  AcGeLine3d none;
  EXPECT_FALSE(AcGePlane().intersectWith(AcGePlane(AcGePoint3d(0, 0, 1), AcGeVector3d::kZAxis), none));
}

TEST(Plane, DegenerateNormalGivesZeroNormalWithoutNaN) {
  const AcGePlane degenerate(AcGePoint3d::kOrigin, AcGeVector3d::kIdentity);
  EXPECT_TRUE(degenerate.normal().isZeroLength());
  const AcGePoint3d p = degenerate.closestPointTo(AcGePoint3d(1, 2, 3));
  EXPECT_FALSE(std::isnan(p.x) || std::isnan(p.y) || std::isnan(p.z));
}

TEST(Plane, TransformByMovesFrameAndKeepsPointsOnIt) {
  AcGePlane pln(AcGePoint3d(1, 2, 3), AcGeVector3d(1, 1, 1));
  const AcGePoint3d on = pln.evalPoint(AcGePoint2d(4, -2));
  const AcGeMatrix3d m = AcGeMatrix3d::rotation(0.8, AcGeVector3d(0, 1, 2), AcGePoint3d(5, 5, 5)) *
                         AcGeMatrix3d::translation(AcGeVector3d(10, 0, 0));
  pln.transformBy(m);
  EXPECT_TRUE(pln.isOn(m * on, [] { AcGeTol t; t.setEqualPoint(1e-9); return t; }()));
  EXPECT_TRUE(near3(pln.normal(), (m * AcGeVector3d(1, 1, 1)).normal(), 1e-12));
}

}  // namespace
