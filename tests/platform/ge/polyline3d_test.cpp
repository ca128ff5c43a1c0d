// AcGePolyline3d: vertex-index parameters, exact lengths and closest points on 3D polylines.
#include <gtest/gtest.h>

#include <cmath>

#include "curve_test_support.h"
#include "ge_test_support.h"
#include "gearc3d.h"
#include "gemat3d.h"
#include "geplin3d.h"

namespace {

using getest::near3;

AcGePolyline3d randomPolyline(getest::Random& rnd, int n) {
  AcGePoint3dArray pts;
  AcGePoint3d p = rnd.point(100);
  for (int i = 0; i < n; ++i) {
    pts.append(p);
    p += rnd.vector(20);
  }
  return AcGePolyline3d(pts);
}

TEST(Polyline3d, ParameterIsVertexIndexPlusFraction) {
  const AcGePolyline3d pl({AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0), AcGePoint3d(3, 4, 12), AcGePoint3d(3, 4, 12),
                           AcGePoint3d(0, 4, 12)});
  AcGeInterval range;
  pl.getInterval(range);
  EXPECT_DOUBLE_EQ(range.upperBound(), 4.0);
  EXPECT_TRUE(near3(pl.evalPoint(1.25), AcGePoint3d(3, 4, 3), 0));
  EXPECT_TRUE(near3(pl.evalPoint(4.0), AcGePoint3d(0, 4, 12), 0));
  EXPECT_DOUBLE_EQ(pl.length(0, 4), 5.0 + 12.0 + 0.0 + 3.0);
  EXPECT_DOUBLE_EQ(pl.length(0.5, 1.5), 2.5 + 6.0);
  // Lengths landing on the zero-length segment skip it.
  EXPECT_DOUBLE_EQ(pl.paramAtLength(0.0, 17.0), 2.0);
  EXPECT_DOUBLE_EQ(pl.paramAtLength(0.0, 18.5), 3.5);
  EXPECT_DOUBLE_EQ(pl.paramAtLength(4.0, 20.0, false), 0.0);
  // Beyond either end the first or last segment extends.
  EXPECT_DOUBLE_EQ(pl.paramAtLength(0.0, 2.5, false), -0.5);
  EXPECT_DOUBLE_EQ(pl.paramAtLength(4.0, 1.5), 4.5);
}

TEST(Polyline3d, LengthRoundTripsThroughParamAtLength) {
  getest::Random rnd(43);
  for (int i = 0; i < 50; ++i) {
    const AcGePolyline3d pl = randomPolyline(rnd, rnd.integer(2, 30));
    const double end = pl.numFitPoints() - 1;
    double sum = 0;
    for (int k = 0; k + 1 < pl.numFitPoints(); ++k) sum += pl.fitPointAt(k).distanceTo(pl.fitPointAt(k + 1));
    EXPECT_NEAR(pl.length(0, end), sum, 1e-10);
    for (int k = 0; k < 10; ++k) {
      const double p = rnd.uniform(0, end), d = rnd.uniform(0, end);
      const double len = pl.length(d, p);
      EXPECT_NEAR(pl.paramAtLength(d, len, p >= d), p, 1e-9);
    }
  }
}

TEST(Polyline3d, ClosestPointsMatchIndependentSearchPerSegment) {
  const AcGeVector3d z = AcGeVector3d::kZAxis;
  const AcGePolyline3d pl({AcGePoint3d(0, 0, 10), AcGePoint3d(10, 0, 20), AcGePoint3d(10, 10, 0)});
  EXPECT_TRUE(near3(pl.projClosestPointTo(AcGePoint3d(4, 0, 0), z), AcGePoint3d(4, 0, 14), 1e-14));
  EXPECT_TRUE(near3(pl.projClosestPointTo(AcGePoint3d(10, 7.5, 99), z), AcGePoint3d(10, 7.5, 5), 1e-14));
  getest::Random rnd(47);
  for (int i = 0; i < 100; ++i) {
    const AcGePolyline3d r = randomPolyline(rnd, rnd.integer(2, 12));
    const AcGePoint3d q = rnd.point(150);
    double searched = HUGE_VAL, plan = HUGE_VAL;
    for (int k = 0; k + 1 < r.numFitPoints(); ++k) {
      searched = std::min(searched, getest::searchedDistance(r, k, k + 1, q));
      plan = std::min(plan, getest::searchedDistance(r, k, k + 1, q, &z));
    }
    const AcGePoint3d c = r.closestPointTo(q), pc = r.projClosestPointTo(q, z);
    EXPECT_LE(c.distanceTo(q), searched + 1e-12);
    EXPECT_NEAR(c.distanceTo(q), searched, 1e-9);
    EXPECT_TRUE(near3(r.evalPoint(r.paramOf(q)), c, 1e-12));
    EXPECT_NEAR(std::hypot(pc.x - q.x, pc.y - q.y), plan, 1e-9);
  }
}

TEST(Polyline3d, ApproximatesACurveAndTransforms) {
  const AcGeCircArc3d arc(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, AcGeVector3d::kXAxis, 10.0, 0.0, 3.0);
  AcGePolyline3d pl(arc, 0.01);
  EXPECT_GT(pl.numFitPoints(), 10);
  for (int i = 0; i < pl.numFitPoints(); ++i) EXPECT_NEAR(pl.fitPointAt(i).distanceTo(arc.center()), 10.0, 1e-12);
  EXPECT_LE(arc.length(0, 3) - pl.length(0, pl.numFitPoints() - 1), 0.01 * 3);
  const double before = pl.length(0, pl.numFitPoints() - 1);
  pl.transformBy(AcGeMatrix3d::scaling(2.0, AcGePoint3d(1, 1, 1)));
  EXPECT_NEAR(pl.length(0, pl.numFitPoints() - 1), 2 * before, 1e-12);
  pl.setFitPointAt(0, pl.fitPointAt(pl.numFitPoints() - 1));
  EXPECT_TRUE(pl.isClosed());
}

}  // namespace
