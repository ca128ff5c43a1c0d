// AcDbPolyline: vertex editing and exact bulge-curve queries against independent formulas.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "arxHeaders.h"
#include "entity_test_support.h"

using enttest::kPi;
using enttest::RefPolyline;

namespace {

TEST(AcDbPolylineEdit, VerticesBulgesWidthsAndIndexes) {
  AcDbPolyline pl;
  EXPECT_EQ(pl.segType(0), AcDbPolyline::kEmpty);
  ASSERT_EQ(pl.addVertexAt(0, AcGePoint2d(0, 0), 0.5, 1.0, 2.0), Acad::eOk);
  EXPECT_EQ(pl.segType(0), AcDbPolyline::kPoint);
  ASSERT_EQ(pl.addVertexAt(1, AcGePoint2d(10, 0)), Acad::eOk);
  ASSERT_EQ(pl.addVertexAt(1, AcGePoint2d(5, 5)), Acad::eOk);
  EXPECT_EQ(pl.addVertexAt(5, AcGePoint2d(1, 1)), Acad::eInvalidIndex);
  AcGePoint2d p;
  ASSERT_EQ(pl.getPointAt(1, p), Acad::eOk);
  EXPECT_EQ(p, AcGePoint2d(5, 5));
  EXPECT_EQ(pl.segType(0), AcDbPolyline::kArc);
  EXPECT_EQ(pl.segType(1), AcDbPolyline::kLine);
  EXPECT_EQ(pl.segType(2), AcDbPolyline::kEmpty);
  EXPECT_TRUE(pl.hasBulges());
  pl.setClosed(true);
  EXPECT_EQ(pl.segType(2), AcDbPolyline::kLine);
  double e = 0;
  ASSERT_EQ(pl.getEndParam(e), Acad::eOk);
  EXPECT_EQ(e, 3.0);
  ASSERT_EQ(pl.removeVertexAt(1), Acad::eOk);
  ASSERT_EQ(pl.getEndParam(e), Acad::eOk);
  EXPECT_EQ(e, 2.0);
  AcGeCircArc3d arc;
  ASSERT_EQ(pl.getArcSegAt(0, arc), Acad::eOk);
  const RefPolyline ref{{AcGePoint2d(0, 0), AcGePoint2d(10, 0)}, {0.5, 0}, false};
  EXPECT_NEAR(arc.radius(), ref.segments()[0].radius(), 1e-12);
  AcGeLineSeg3d seg;
  EXPECT_EQ(pl.getLineSegAt(7, seg), Acad::eInvalidIndex);
  double param = 0;
  EXPECT_TRUE(pl.onSegAt(1, AcGePoint2d(5, 0), param));
  EXPECT_NEAR(param, 1.5, 1e-12);
}

// Its parameterisation at hand-worked points is in curve_test.cpp with the other curves.
TEST(AcDbPolylineCurve, DerivativeIsPerUnitOfParameter) {
  RefPolyline ref{{AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(10, 10)}, {1.0, 0.0, 0.0}, false};
  std::unique_ptr<AcDbPolyline> pl(ref.make(4.0));
  AcGePoint3d p;
  AcGeVector3d v;
  ASSERT_EQ(pl->getFirstDeriv(1.5, v), Acad::eOk);
  EXPECT_NEAR(v.y, 10.0, 1e-9);  // the segment length per unit of parameter
  ASSERT_EQ(pl->getFirstDeriv(0.5, v), Acad::eOk);
  EXPECT_NEAR(v.length(), 5 * kPi, 1e-9);
  EXPECT_EQ(pl->getPointAtParam(2.1, p), Acad::eInvalidInput);
}

TEST(AcDbPolylineCurve, AreaOfBulgedPolygonsMatchesFormula) {
  struct Case {
    RefPolyline ref;
    double expected;
  };
  const Case cases[] = {
      // A 10 x 10 square whose bottom edge bulges into it as a semicircle.
      {{{AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(10, 10), AcGePoint2d(0, 10)}, {-1.0, 0, 0, 0}, true},
       100 - kPi * 25 / 2},
      // Two semicircles: a full circle of radius 5.
      {{{AcGePoint2d(0, 0), AcGePoint2d(10, 0)}, {1.0, 1.0}, true}, kPi * 25},
  };
  int n = 0;
  for (const Case& c : cases) {
    std::unique_ptr<AcDbPolyline> pl(c.ref.make());
    double area = 0;
    ASSERT_EQ(pl->getArea(area), Acad::eOk);
    EXPECT_NEAR(area, c.expected, 1e-9 * (1 + c.expected)) << "case " << n;
    ++n;
  }
  EXPECT_EQ(n, 2);  // random closed ones are in RandomCurvesFollowTheTextbookFormulas
}

TEST(AcDbPolylineCurve, RandomCurvesFollowTheTextbookFormulas) {
  std::mt19937 rng(42);
  int curves = 0;
  for (int n : {5, 40, 3000}) {  // the long one goes through the segment index
    for (bool closed : {false, true}) {
      RefPolyline ref = enttest::randomPolyline(rng, n, true);
      ref.closed = closed;
      std::unique_ptr<AcDbPolyline> pl(ref.make(2.0));
      SCOPED_TRACE(testing::Message() << n << " vertices, closed " << closed);
      enttest::expectFollowsReference(*pl, ref, 2.0, rng, 60);
      ++curves;
    }
  }
  EXPECT_EQ(curves, 6);
}

TEST(AcDbPolylineCurve, ExtendMovesEndSegmentsAlongTheirGeometry) {
  RefPolyline ref{{AcGePoint2d(0, 0), AcGePoint2d(10, 0), AcGePoint2d(20, 0)}, {0.0, 1.0, 0.0}, false};
  std::unique_ptr<AcDbPolyline> pl(ref.make());
  ASSERT_EQ(pl->extend(-0.5), Acad::eOk);
  AcGePoint2d p;
  pl->getPointAt(0, p);
  EXPECT_NEAR(p.x, -5.0, 1e-12);
  ASSERT_EQ(pl->extend(2.5), Acad::eOk);  // semicircle to three quarters... of its circle
  pl->getPointAt(2, p);
  EXPECT_NEAR(p.x, 15.0, 1e-9);
  EXPECT_NEAR(p.y, 5.0, 1e-9);
}

TEST(AcDbPolylineCurve, ProjectionOntoATiltedPlaneTakesStraightPolylinesOnly) {
  RefPolyline zigzag{{AcGePoint2d(0, 0), AcGePoint2d(4, 1), AcGePoint2d(6, 5)}, {0.0, 0.0, 0.0}, false};
  std::unique_ptr<AcDbPolyline> pl(zigzag.make());
  pl->setElevation(3.0);
  const AcGePlane side(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 1, 0));
  AcDbCurve* proj = nullptr;
  ASSERT_EQ(pl->getOrthoProjectedCurve(side, proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> onSide(proj);
  for (unsigned i = 0; i < 3; ++i) {
    // The foot of (x, y, 3) on the plane x + y = 0: minus half of (x + y) along (1, 1).
    const double x = zigzag.pts[i].x, y = zigzag.pts[i].y, h = (x + y) / 2;
    AcGePoint3d p;
    ASSERT_EQ(onSide->getPointAtParam(i, p), Acad::eOk);
    EXPECT_NEAR(p.distanceTo(AcGePoint3d(x - h, y - h, 3.0)), 0.0, 1e-9) << i;
  }
  pl->setBulgeAt(1, 0.5);
  EXPECT_EQ(pl->getOrthoProjectedCurve(side, proj), Acad::eNotApplicable);
}

TEST(AcDbPolylineCurve, ExtentsHoldTheCurveAndOnlyUniformScalingApplies) {
  std::mt19937 rng(11);
  RefPolyline ref = enttest::randomPolyline(rng, 20, true);
  std::unique_ptr<AcDbPolyline> pl(ref.make(3.0));
  AcDbExtents ext;
  ASSERT_EQ(pl->getGeomExtents(ext), Acad::eOk);
  for (const AcGePoint2d& s : ref.samples(50)) {
    EXPECT_GE(s.x, ext.minPoint().x - 1e-9);
    EXPECT_LE(s.x, ext.maxPoint().x + 1e-9);
    EXPECT_GE(s.y, ext.minPoint().y - 1e-9);
    EXPECT_LE(s.y, ext.maxPoint().y + 1e-9);
  }
  AcGeMatrix3d squash;
  squash.setToScaling(1.0);
  squash.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(2, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1));
  EXPECT_EQ(pl->transformBy(squash), Acad::eCannotScaleNonUniformly);
}

}  // namespace
