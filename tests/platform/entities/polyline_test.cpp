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

AcGePoint3d lift(const AcGePoint2d& p, double z = 0.0) { return AcGePoint3d(p.x, p.y, z); }

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
  EXPECT_EQ(n, 2);
  // Random closed bulged polylines, by the shoelace formula plus circular segments.
  std::mt19937 rng(7);
  for (int k = 0; k < 20; ++k) {
    RefPolyline ref = enttest::randomPolyline(rng, 12, true);
    ref.closed = true;
    std::unique_ptr<AcDbPolyline> pl(ref.make());
    double area = 0;
    ASSERT_EQ(pl->getArea(area), Acad::eOk);
    EXPECT_NEAR(area, ref.area(), 1e-7 * (1 + ref.area()));
  }
}

TEST(AcDbPolylineCurve, RandomCurvesStationRoundTripAndClosestPoint) {
  std::mt19937 rng(42);
  std::uniform_real_distribution<double> jitter(-4.0, 4.0);
  int queries = 0;
  for (int n : {5, 40, 3000}) {  // the long one goes through the segment index
    RefPolyline ref = enttest::randomPolyline(rng, n, true);
    std::unique_ptr<AcDbPolyline> pl(ref.make(2.0));
    double end = 0, len = 0;
    ASSERT_EQ(pl->getEndParam(end), Acad::eOk);
    ASSERT_EQ(pl->getDistAtParam(end, len), Acad::eOk);
    EXPECT_NEAR(len, ref.length(), 1e-8 * len);
    const std::vector<AcGePoint2d> samples = ref.samples(64);
    std::uniform_int_distribution<size_t> pick(0, samples.size() - 1);
    for (int q = 0; q < 60; ++q) {
      const AcGePoint2d base = samples[pick(rng)];
      const AcGePoint3d query(base.x + jitter(rng), base.y + jitter(rng), 9.0);
      AcGePoint3d c;
      ASSERT_EQ(pl->getClosestPointTo(query, c), Acad::eOk);
      EXPECT_NEAR(c.z, 2.0, 1e-9);
      double best = 1e300;
      for (const AcGePoint2d& s : samples) best = std::min(best, query.distanceTo(lift(s, 2.0)));
      EXPECT_LE(query.distanceTo(c), best + 1e-9);
      double dist = 0;
      ASSERT_EQ(pl->getDistAtPoint(c, dist), Acad::eOk);
      AcGePoint3d back;
      ASSERT_EQ(pl->getPointAtDist(dist, back), Acad::eOk);
      EXPECT_LE(back.distanceTo(c), 1e-8);
      double param = 0;
      ASSERT_EQ(pl->getParamAtPoint(c, param), Acad::eOk);
      ASSERT_EQ(pl->getPointAtParam(param, back), Acad::eOk);
      EXPECT_LE(back.distanceTo(c), 1e-8);
      ++queries;
    }
  }
  EXPECT_EQ(queries, 180);
}

TEST(AcDbPolylineCurve, SplitPiecesJoinBackToTheOriginal) {
  std::mt19937 rng(3);
  for (bool closed : {false, true}) {
    RefPolyline ref = enttest::randomPolyline(rng, 9, true);
    ref.closed = closed;
    std::unique_ptr<AcDbPolyline> pl(ref.make());
    AcGeDoubleArray params;
    for (double p : {0.3, 2.0, 4.75, 7.5}) params.append(p);
    AcDbVoidPtrArray pieces;
    ASSERT_EQ(pl->getSplitCurves(params, pieces), Acad::eOk);
    ASSERT_EQ(pieces.length(), closed ? 4 : 5);
    double total = 0;
    AcGePoint3d prevEnd;
    for (int i = 0; i < pieces.length(); ++i) {
      std::unique_ptr<AcDbPolyline> piece(static_cast<AcDbPolyline*>(static_cast<AcDbCurve*>(pieces[i])));
      double e = 0, d = 0;
      piece->getEndParam(e);
      piece->getDistAtParam(e, d);
      total += d;
      AcGePoint3d s;
      piece->getStartPoint(s);
      if (i > 0) {
        EXPECT_LE(s.distanceTo(prevEnd), 1e-9);
      }
      piece->getEndPoint(prevEnd);
      // Every piece point lies on the original.
      for (int k = 0; k <= 8; ++k) {
        AcGePoint3d p, c;
        piece->getPointAtDist(d * k / 8, p);
        pl->getClosestPointTo(p, c);
        EXPECT_LE(p.distanceTo(c), 1e-8);
      }
    }
    EXPECT_NEAR(total, ref.length(), 1e-8 * total);
  }
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

TEST(AcDbPolylineCurve, TransformRoundTripAndExtents) {
  std::mt19937 rng(11);
  RefPolyline ref = enttest::randomPolyline(rng, 20, true);
  std::unique_ptr<AcDbPolyline> pl(ref.make(3.0));
  AcGeMatrix3d m = AcGeMatrix3d::rotation(1.1, AcGeVector3d(0.3, -0.2, 1).normal(), AcGePoint3d(1, 1, 1));
  m.preMultBy(AcGeMatrix3d::scaling(0.5));
  AcGePoint3d before[11];
  for (int k = 0; k <= 10; ++k) pl->getPointAtParam(19.0 * k / 10, before[k]);
  ASSERT_EQ(pl->transformBy(m), Acad::eOk);
  ASSERT_EQ(pl->transformBy(m.inverse()), Acad::eOk);
  for (int k = 0; k <= 10; ++k) {
    AcGePoint3d p;
    pl->getPointAtParam(19.0 * k / 10, p);
    EXPECT_LE(p.distanceTo(before[k]), 1e-8);
  }
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
