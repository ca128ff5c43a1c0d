// AcDbRay: what a ray without end refuses, intersections in every extension mode against
// analytic crossings, and edits. Its RAY record is checked by ezdxf in entities_out_test.cpp.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "arxHeaders.h"
#include "entity_test_support.h"

using enttest::expectNear;

namespace {

std::unique_ptr<AcDbRay> makeRay(const AcGePoint3d& base, const AcGePoint3d& through) {
  auto ray = std::make_unique<AcDbRay>();
  ray->setBasePoint(base);
  EXPECT_EQ(ray->setSecondPoint(through), Acad::eOk);
  return ray;
}

// Its parameterisation at hand-worked points is in curve_test.cpp with the other curves.
TEST(AcDbRayCurve, DerivativesAndWhatIsNotOnTheRay) {
  auto ray = makeRay(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 3));  // direction (0.6, 0.8, 0)
  expectNear(ray->secondPoint(), AcGePoint3d(1.6, 2.8, 3));
  double param = -1, dist = 0;
  ASSERT_EQ(ray->getStartParam(param), Acad::eOk);
  EXPECT_EQ(param, 0.0);
  AcGePoint3d p;
  AcGeVector3d d1, d2;
  ASSERT_EQ(ray->getFirstDeriv(AcGePoint3d(7, 10, 3), d1), Acad::eOk);
  ASSERT_EQ(ray->getSecondDeriv(3.0, d2), Acad::eOk);
  EXPECT_NEAR((d1 - AcGeVector3d(0.6, 0.8, 0)).length(), 0.0, 1e-15);
  EXPECT_EQ(d2.length(), 0.0);
  // Behind the base, or beside the ray: not on it.
  EXPECT_EQ(ray->getPointAtParam(-0.1, p), Acad::eInvalidInput);
  EXPECT_EQ(ray->getParamAtPoint(AcGePoint3d(1 - 0.6, 2 - 0.8, 3), param), Acad::eInvalidInput);
  EXPECT_EQ(ray->getDistAtPoint(AcGePoint3d(7, 10, 3.001), dist), Acad::eInvalidInput);
  EXPECT_EQ(ray->setSecondPoint(AcGePoint3d(1, 2, 3)), Acad::eInvalidInput);
}

TEST(AcDbRayCurve, WhatHasNoEndIsNotApplicable) {
  AcDbRay ray;
  double value = 0;
  AcGePoint3d p;
  AcDbExtents ext;
  EXPECT_FALSE(ray.isClosed());
  EXPECT_EQ(ray.getEndParam(value), Acad::eNotApplicable);
  EXPECT_EQ(ray.getEndPoint(p), Acad::eNotApplicable);
  EXPECT_EQ(ray.getArea(value), Acad::eNotApplicable);
  EXPECT_EQ(ray.getGeomExtents(ext), Acad::eInvalidExtents);
  EXPECT_EQ(ray.extend(5.0), Acad::eInvalidInput);
  EXPECT_EQ(ray.extend(false, AcGePoint3d(9, 0, 0)), Acad::eNotApplicable);
  AcGeCurve3d* ge = nullptr;
  ASSERT_EQ(ray.getGeCurve(ge), Acad::eOk);
  std::unique_ptr<AcGeCurve3d> owned(ge);
  EXPECT_EQ(ge->type(), AcGe::kRay3d);
}

TEST(AcDbRayCurve, ClosestPointsWithAndWithoutExtension) {
  auto ray = makeRay(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 1));  // 45 degrees up in the xz plane
  expectNear(enttest::closest(*ray, AcGePoint3d(4, 7, 0)), AcGePoint3d(2, 0, 2));
  expectNear(enttest::closest(*ray, AcGePoint3d(-4, 1, 0)), AcGePoint3d(0, 0, 0));
  expectNear(enttest::closest(*ray, AcGePoint3d(-4, 1, 0), true), AcGePoint3d(-2, 0, -2));
  // Seen from above, the ray point under (3, 5, 100) is (3, 0, 3); behind the base only when
  // extended.
  expectNear(enttest::closest(*ray, AcGePoint3d(3, 5, 100), AcGeVector3d::kZAxis), AcGePoint3d(3, 0, 3));
  expectNear(enttest::closest(*ray, AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis), AcGePoint3d(0, 0, 0));
  expectNear(enttest::closest(*ray, AcGePoint3d(-3, 5, 100), AcGeVector3d::kZAxis, true), AcGePoint3d(-3, 0, -3));
  // Seen end-on the whole ray is its base.
  auto up = makeRay(AcGePoint3d(2, 3, 0), AcGePoint3d(2, 3, 1));
  expectNear(enttest::closest(*up, AcGePoint3d(9, 9, 9), AcGeVector3d::kZAxis), AcGePoint3d(2, 3, 0));
  AcGePoint3d c;
  EXPECT_EQ(up->getClosestPointTo(AcGePoint3d(9, 9, 9), AcGeVector3d(), c), Acad::eInvalidInput);
}

// The ray from the origin along +x against other entities, in each mode, with the crossings
// worked out by hand; and the same with the ray as the argument (modes mirrored).
TEST(AcDbRayIntersect, EveryModeAgainstAnalyticCrossings) {
  AcDbRay ray;
  AcDbLine ahead(AcGePoint3d(5, -1, 0), AcGePoint3d(5, 1, 0));
  AcDbLine behind(AcGePoint3d(-5, -1, 0), AcGePoint3d(-5, 1, 0));
  AcDbLine above(AcGePoint3d(5, 1, 0), AcGePoint3d(5, 3, 0));
  AcDbLine far(AcGePoint3d(1e5, -1, 0), AcGePoint3d(1e5, 1, 0));
  AcDbCircle aroundBase(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 3.0);
  AcDbArc upperHalf(AcGePoint3d(10, 0, 0), 2.0, 0.0, enttest::kPi);  // ends on the ray's line
  AcDbArc tangentArc(AcGePoint3d(4, 1, 0), 1.0, enttest::kPi, 2 * enttest::kPi);  // touches at (4, 0)
  auto crossing = makeRay(AcGePoint3d(2, -2, 0), AcGePoint3d(3, -1, 0));  // its line meets at (4, 0)
  auto away = makeRay(AcGePoint3d(2, -2, 0), AcGePoint3d(1, -3, 0));      // only extended
  struct Case {
    const AcDbEntity* other;
    AcDb::Intersect mode;
    std::vector<AcGePoint3d> expected;
  };
  const std::vector<Case> cases = {
      {&ahead, AcDb::kOnBothOperands, {{5, 0, 0}}},
      {&behind, AcDb::kOnBothOperands, {}},
      {&behind, AcDb::kExtendArg, {}},
      {&behind, AcDb::kExtendThis, {{-5, 0, 0}}},
      {&above, AcDb::kOnBothOperands, {}},
      {&above, AcDb::kExtendThis, {}},
      {&above, AcDb::kExtendArg, {{5, 0, 0}}},
      {&above, AcDb::kExtendBoth, {{5, 0, 0}}},
      {&far, AcDb::kOnBothOperands, {{1e5, 0, 0}}},
      {&aroundBase, AcDb::kOnBothOperands, {{3, 0, 0}}},
      {&aroundBase, AcDb::kExtendThis, {{3, 0, 0}, {-3, 0, 0}}},
      {&upperHalf, AcDb::kOnBothOperands, {{8, 0, 0}, {12, 0, 0}}},
      {&tangentArc, AcDb::kOnBothOperands, {{4, 0, 0}}},
      {crossing.get(), AcDb::kOnBothOperands, {{4, 0, 0}}},
      {away.get(), AcDb::kOnBothOperands, {}},
      {away.get(), AcDb::kExtendArg, {{4, 0, 0}}},
  };
  auto mirrored = [](AcDb::Intersect m) {
    if (m == AcDb::kExtendThis) return AcDb::kExtendArg;
    if (m == AcDb::kExtendArg) return AcDb::kExtendThis;
    return m;
  };
  int n = 0;
  for (const Case& c : cases) {
    for (int side = 0; side < 2; ++side) {
      AcGePoint3dArray pts;
      if (side == 0) ASSERT_EQ(ray.intersectWith(c.other, c.mode, pts), Acad::eOk);
      else ASSERT_EQ(c.other->intersectWith(&ray, mirrored(c.mode), pts), Acad::eOk);
      ASSERT_EQ(pts.length(), static_cast<int>(c.expected.size())) << "case " << n << " side " << side;
      for (const AcGePoint3d& e : c.expected) {
        double best = 1e300;
        for (const AcGePoint3d& p : pts) best = std::min(best, p.distanceTo(e));
        EXPECT_LE(best, 1e-7 * (1.0 + std::fabs(e.x))) << "case " << n << " side " << side;
      }
    }
    ++n;
  }
  EXPECT_EQ(n, 16);
  // Skew in space: they meet only in projection, at the point on the ray (which was asked).
  auto high = makeRay(AcGePoint3d(0, 0, 5), AcGePoint3d(1, 1, 5));
  AcDbLine low(AcGePoint3d(10, 0, 0), AcGePoint3d(0, 10, 0));
  AcGePoint3dArray pts;
  ASSERT_EQ(high->intersectWith(&low, AcDb::kOnBothOperands, pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 0);
  ASSERT_EQ(high->intersectWith(&low, AcDb::kOnBothOperands, AcGePlane(), pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 1);
  expectNear(pts[0], AcGePoint3d(5, 5, 5));
}

TEST(AcDbRayEdit, SplitGivesLinesThenARay) {
  auto ray = makeRay(AcGePoint3d(1, 1, 0), AcGePoint3d(1, 2, 0));  // north
  const auto owned = enttest::splitAt(*ray, {5.0, 2.0, 0.0, 5.0});
  ASSERT_EQ(owned.size(), 3u);
  const AcDbLine* first = AcDbLine::cast(owned[0].get());
  const AcDbLine* second = AcDbLine::cast(owned[1].get());
  const AcDbRay* rest = AcDbRay::cast(owned[2].get());
  ASSERT_TRUE(first && second && rest);
  expectNear(first->startPoint(), AcGePoint3d(1, 1, 0));
  expectNear(first->endPoint(), AcGePoint3d(1, 3, 0));
  expectNear(second->endPoint(), AcGePoint3d(1, 6, 0));
  expectNear(rest->basePoint(), AcGePoint3d(1, 6, 0));
  EXPECT_EQ(rest->unitDir(), AcGeVector3d(0, 1, 0));
  // By points; one off the ray is refused and nothing is handed out.
  AcGePoint3dArray at;
  at.append(AcGePoint3d(1, 4, 0));
  AcDbVoidPtrArray byPoint;
  ASSERT_EQ(ray->getSplitCurves(at, byPoint), Acad::eOk);
  EXPECT_EQ(byPoint.length(), 2);
  for (void* v : byPoint) delete static_cast<AcDbCurve*>(v);
  at.append(AcGePoint3d(2, 4, 0));
  AcDbVoidPtrArray none;
  EXPECT_EQ(ray->getSplitCurves(at, none), Acad::ePointNotOnEntity);
  EXPECT_EQ(none.length(), 0);
}

TEST(AcDbRayEdit, ExtendMovesTheBaseAlongTheRay) {
  auto ray = makeRay(AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 0));
  ASSERT_EQ(ray->extend(-5.0), Acad::eOk);
  expectNear(ray->basePoint(), AcGePoint3d(-3, -4, 0));
  ASSERT_EQ(ray->extend(true, AcGePoint3d(10, 0, 7)), Acad::eOk);  // foot: 6 along the direction
  expectNear(ray->basePoint(), AcGePoint3d(3.6, 4.8, 0));
  AcGeIntArray idx;
  idx.append(0);
  ASSERT_EQ(ray->moveStretchPointsAt(idx, AcGeVector3d(1, 1, 1)), Acad::eOk);
  expectNear(ray->basePoint(), AcGePoint3d(4.6, 5.8, 1));
  idx.append(1);
  EXPECT_EQ(ray->moveStretchPointsAt(idx, AcGeVector3d(1, 1, 1)), Acad::eInvalidIndex);
}

TEST(AcDbRayEdit, TransformAndProjection) {
  auto ray = makeRay(AcGePoint3d(1, 0, 0), AcGePoint3d(2, 0, 0));
  // A shear: the direction is renormalised, points on the ray stay on it.
  AcGeMatrix3d shear;
  shear.setCoordSystem(AcGePoint3d(0, 0, 1), AcGeVector3d(1, 1, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1));
  AcGePoint3d along(5, 0, 0);
  ASSERT_EQ(ray->transformBy(shear), Acad::eOk);
  expectNear(ray->basePoint(), AcGePoint3d(1, 1, 1));
  double param = 0;
  EXPECT_EQ(ray->getParamAtPoint(along.transformBy(shear), param), Acad::eOk);
  EXPECT_NEAR(param, 4 * std::sqrt(2.0), 1e-12);

  auto tilted = makeRay(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 15));
  AcDbCurve* proj = nullptr;
  ASSERT_EQ(tilted->getOrthoProjectedCurve(AcGePlane(), proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> owned(proj);
  const AcDbRay* flat = AcDbRay::cast(proj);
  ASSERT_NE(flat, nullptr);
  expectNear(flat->basePoint(), AcGePoint3d(1, 2, 0));
  EXPECT_NEAR((flat->unitDir() - AcGeVector3d(0.6, 0.8, 0)).length(), 0.0, 1e-15);
  auto vertical = makeRay(AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 4));
  EXPECT_EQ(vertical->getOrthoProjectedCurve(AcGePlane(), proj), Acad::eDegenerateGeometry);
  EXPECT_EQ(proj, nullptr);
}

}  // namespace
