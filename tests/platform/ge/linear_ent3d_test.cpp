// Lines, rays and segments: parameters, lengths, closest points and intersections.
#include <gtest/gtest.h>

#include <cmath>

#include "curve_test_support.h"
#include "ge_test_support.h"
#include "geline3d.h"
#include "gelnsg3d.h"
#include "gemat3d.h"
#include "geplane.h"
#include "geray3d.h"

namespace {

using getest::near3;

AcGeLineSeg3d segment(const AcGePoint3d& a, const AcGePoint3d& b) { return AcGeLineSeg3d(a, b); }

TEST(LineSeg3d, ParameterRunsOverUnitIntervalWithExactLengths) {
  const AcGeLineSeg3d seg(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3));
  AcGeInterval range;
  seg.getInterval(range);
  EXPECT_DOUBLE_EQ(range.lowerBound(), 0.0);
  EXPECT_DOUBLE_EQ(range.upperBound(), 1.0);
  EXPECT_DOUBLE_EQ(seg.length(), 5.0);
  EXPECT_DOUBLE_EQ(seg.length(0.2, 0.6), 2.0);
  EXPECT_DOUBLE_EQ(seg.length(0.6, 0.2), 2.0);
  EXPECT_TRUE(near3(seg.evalPoint(0.2), AcGePoint3d(1.6, 2.8, 3), 1e-15));
  EXPECT_DOUBLE_EQ(seg.paramAtLength(1.0, 5.0, false), 0.0);
  AcGeVector3dArray derivs;
  seg.evalPoint(0.5, 2, derivs);
  ASSERT_EQ(derivs.length(), 2);
  EXPECT_TRUE(near3(derivs[0], AcGeVector3d(3, 4, 0), 0));
}

TEST(LinearEnt3d, IntervalsOfLineRayAndSegment) {
  const AcGeLine3d line(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 0, 0));
  const AcGeRay3d ray(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 0, 0));
  AcGePoint3d p;
  EXPECT_FALSE(line.hasStartPoint(p));
  EXPECT_TRUE(ray.hasStartPoint(p));
  EXPECT_FALSE(ray.hasEndPoint(p));
  // Closest points clamp to each entity's own interval.
  EXPECT_TRUE(near3(line.closestPointTo(AcGePoint3d(-5, 1, 0)), AcGePoint3d(-5, 0, 0), 0));
  EXPECT_TRUE(near3(ray.closestPointTo(AcGePoint3d(-5, 1, 0)), AcGePoint3d(0, 0, 0), 0));
  EXPECT_DOUBLE_EQ(ray.paramOf(AcGePoint3d(-5, 1, 0)), -5.0);
  EXPECT_FALSE(ray.isKindOf(AcGe::kLine3d));
}

TEST(LineSeg3d, ClosestPointsMatchIndependentSearch) {
  getest::Random rnd(17);
  const AcGeVector3d z = AcGeVector3d::kZAxis;
  AcGeTol tol;
  tol.setEqualPoint(1e-9);
  for (int i = 0; i < 200; ++i) {
    const AcGeLineSeg3d seg(rnd.point(100), rnd.point(100));
    const AcGePoint3d q = rnd.point(150);
    const AcGePoint3d c = seg.closestPointTo(q);
    const double searched = getest::searchedDistance(seg, 0.0, 1.0, q);
    EXPECT_LE(c.distanceTo(q), searched + 1e-12);
    EXPECT_NEAR(c.distanceTo(q), searched, 1e-9);
    EXPECT_NEAR(seg.distanceTo(q), searched, 1e-9);
    EXPECT_TRUE(seg.isOn(c, tol));
    const AcGePoint3d pc = seg.projClosestPointTo(q, z);
    EXPECT_TRUE(seg.isOn(pc, tol));
    EXPECT_NEAR(std::hypot(pc.x - q.x, pc.y - q.y), getest::searchedDistance(seg, 0.0, 1.0, q, &z), 1e-9);
    const double len = rnd.uniform(0, seg.length());
    EXPECT_NEAR(seg.length(0.0, seg.paramAtLength(0.0, len)), len, 1e-10);
  }
  // A point straight above the segment gets the segment's height there.
  const AcGeLineSeg3d slope(AcGePoint3d(0, 0, 10), AcGePoint3d(10, 0, 20));
  EXPECT_TRUE(near3(slope.projClosestPointTo(AcGePoint3d(4, 0, 0), z), AcGePoint3d(4, 0, 14), 1e-14));
}

TEST(LinearEnt3d, IntersectWithTable) {
  struct Case { AcGeLineSeg3d a, b; bool hit; AcGePoint3d at; };
  const Case cases[] = {
      {segment({0, 0, 0}, {2, 2, 0}), segment({0, 2, 0}, {2, 0, 0}), true, {1, 1, 0}},
      {segment({0, 0, 0}, {1, 0, 0}), segment({1, 0, 0}, {1, 1, 0}), true, {1, 0, 0}},       // touching ends
      {segment({0, 0, 0}, {1, 0, 0}), segment({2, -1, 0}, {2, 1, 0}), false, {}},             // would meet beyond an end
      {segment({0, 0, 0}, {1, 0, 0}), segment({0, 1, 0}, {1, 1, 0}), false, {}},              // parallel
      {segment({0, 0, 0}, {1, 0, 0}), segment({0.5, -1, 1}, {0.5, 1, 1}), false, {}},         // skew, one unit apart
      {segment({0, 0, 5}, {0, 0, -5}), segment({-1, 0, 0}, {1, 0, 0}), true, {0, 0, 0}},
  };
  ASSERT_EQ(std::size(cases), 6u);
  int i = 0;
  for (const Case& c : cases) {
    AcGePoint3d p;
    EXPECT_EQ(c.a.intersectWith(c.b, p), c.hit) << "case " << i;
    if (c.hit) {
      EXPECT_TRUE(near3(p, c.at, 1e-14)) << "case " << i;
    }
    ++i;
  }
  AcGePoint3d p;
  EXPECT_TRUE(AcGeLine3d(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 0, 0))
                  .intersectWith(AcGeLineSeg3d(AcGePoint3d(7, -1, 0), AcGePoint3d(7, 1, 0)), p));
  EXPECT_TRUE(near3(p, AcGePoint3d(7, 0, 0), 0));
}

TEST(LinearEnt3d, RelationsAndTransform) {
  const AcGeLine3d a(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 1, 0));
  EXPECT_TRUE(a.isParallelTo(AcGeLine3d(AcGePoint3d(0, 5, 0), AcGeVector3d(-2, -2, 0))));
  EXPECT_TRUE(a.isColinearTo(AcGeLine3d(AcGePoint3d(3, 3, 0), AcGeVector3d(1, 1, 0))));
  EXPECT_FALSE(a.isColinearTo(AcGeLine3d(AcGePoint3d(3, 4, 0), AcGeVector3d(1, 1, 0))));
  EXPECT_TRUE(a.isPerpendicularTo(AcGeLine3d(AcGePoint3d(0, 0, 0), AcGeVector3d(1, -1, 0))));
  EXPECT_TRUE(a.isOn(AcGePlane()));
  AcGePlane perp;
  a.getPerpPlane(AcGePoint3d(1, 1, 0), perp);
  EXPECT_TRUE(a.isPerpendicularTo(perp));
  AcGeLineSeg3d seg(AcGePoint3d(1, 0, 0), AcGePoint3d(2, 0, 0));
  seg.rotateBy(std::acos(-1.0) / 2, AcGeVector3d::kZAxis);
  EXPECT_TRUE(near3(seg.startPoint(), AcGePoint3d(0, 1, 0), 1e-15));
  EXPECT_TRUE(near3(seg.endPoint(), AcGePoint3d(0, 2, 0), 1e-15));
  seg.scaleBy(2.0);
  EXPECT_NEAR(seg.length(), 2.0, 1e-15);
  AcGePlane bisector;
  seg.getBisector(bisector);
  EXPECT_TRUE(bisector.isOn(seg.midPoint()));
}

}  // namespace
