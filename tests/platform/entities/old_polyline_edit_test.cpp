// AcDb2dPolyline and AcDb3dPolyline split, extended and projected, against hand-worked
// geometry (random bulged splits, open and closed, are in old_polyline_test.cpp).
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "arxHeaders.h"
#include "entity_test_support.h"
#include "host_fixture.h"
#include "tdhost/undo.h"

using enttest::expectNear;
using enttest::kLineAndHalfCircle;
using enttest::kPi;
using enttest::make2d;
using enttest::RefPolyline;

namespace {

std::unique_ptr<AcDb3dPolyline> make3d(const std::vector<AcGePoint3d>& pts, bool closed = false) {
  AcGePoint3dArray arr;
  for (const AcGePoint3d& p : pts) arr.append(p);
  return std::make_unique<AcDb3dPolyline>(AcDb::k3dSimplePoly, arr, closed);
}

std::vector<const AcDb2dVertex*> vertices(const AcDb2dPolyline& pl) {
  std::vector<const AcDb2dVertex*> out;
  std::unique_ptr<AcDbObjectIterator> it(pl.vertexIterator());
  for (it->start(); !it->done(); it->step()) out.push_back(AcDb2dVertex::cast(it->entity()));
  return out;
}

TEST(AcDb2dPolylineSplit, PiecesOwnTheirVerticesWithSharedBulgesAndWidths) {
  auto pl = make2d(kLineAndHalfCircle, 4.0, {0.0, 2.0, 2.0});
  const auto pieces = enttest::splitAt(*pl, {1.5, 0.5});
  ASSERT_EQ(pieces.size(), 3u);
  const double expectedLength[3] = {5.0, 5.0 + 2.5 * kPi, 2.5 * kPi};
  for (int k = 0; k < 3; ++k) {
    const auto* piece = AcDb2dPolyline::cast(pieces[k].get());
    ASSERT_NE(piece, nullptr);
    EXPECT_TRUE(piece->objectId().isNull());
    EXPECT_EQ(piece->elevation(), 4.0);
    EXPECT_NEAR(enttest::curveLength(*piece), expectedLength[k], 1e-9) << "piece " << k;
  }
  const auto middle = vertices(*AcDb2dPolyline::cast(pieces[1].get()));
  ASSERT_EQ(middle.size(), 3u);
  EXPECT_EQ(middle[0]->position(), AcGePoint3d(5, 0, 4));
  EXPECT_NEAR(middle[0]->startWidth(), 1.0, 1e-12);  // half-way up the taper
  EXPECT_NEAR(middle[0]->endWidth(), 2.0, 1e-12);
  EXPECT_NEAR(middle[1]->bulge(), std::tan(kPi / 2 / 4), 1e-12);  // a quarter circle
  expectNear(middle[2]->position(), AcGePoint3d(15, 5, 4));  // due east of the centre
  const auto head = vertices(*AcDb2dPolyline::cast(pieces[0].get()));
  EXPECT_NEAR(head[0]->endWidth(), 1.0, 1e-12);
  // The original's vertices are untouched.
  EXPECT_EQ(vertices(*pl).size(), 3u);
}

TEST(AcDb2dPolylineExtend, EndSegmentsRunOnAlongTheirGeometry) {
  auto pl = make2d(kLineAndHalfCircle);
  ASSERT_EQ(pl->extend(-0.5), Acad::eOk);  // the line, 5 units further west
  ASSERT_EQ(pl->extend(2.5), Acad::eOk);   // the half circle on to three quarters
  AcGePoint3d s, e;
  pl->getStartPoint(s);
  pl->getEndPoint(e);
  expectNear(s, AcGePoint3d(-5, 0, 0));
  expectNear(e, AcGePoint3d(5, 5, 0));
  EXPECT_NEAR(enttest::curveLength(*pl), 15.0 + 5.0 * 1.5 * kPi, 1e-9);
  // To a point: the start line trimmed back to the foot of (3, 7).
  ASSERT_EQ(pl->extend(true, AcGePoint3d(3, 7, 0)), Acad::eOk);
  pl->getStartPoint(s);
  expectNear(s, AcGePoint3d(3, 0, 0));
  EXPECT_EQ(pl->extend(1.0), Acad::eInvalidInput);  // inside
  pl->makeClosed();
  EXPECT_EQ(pl->extend(-1.0), Acad::eNotApplicable);
  auto spline = make2d(kLineAndHalfCircle);
  spline->setPolyType(AcDb::k2dCubicSplinePoly);
  EXPECT_EQ(spline->extend(-0.5), Acad::eNotApplicable);
  AcDbVoidPtrArray none;
  AcGeDoubleArray params;
  params.append(0.5);
  EXPECT_EQ(spline->getSplitCurves(params, none), Acad::eNotApplicable);
  EXPECT_EQ(none.length(), 0);
}

TEST(AcDb2dPolylineProject, ParallelPlanesKeepArcsOthersOnlyLines) {
  auto pl = make2d(kLineAndHalfCircle, 3.0);
  AcDbCurve* proj = nullptr;
  ASSERT_EQ(pl->getOrthoProjectedCurve(AcGePlane(AcGePoint3d(0, 0, -2), AcGeVector3d(0, 0, -1)), proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> flat(proj);
  ASSERT_NE(AcDb2dPolyline::cast(proj), nullptr);
  EXPECT_NEAR(enttest::curveLength(*flat), 10.0 + 5.0 * kPi, 1e-9);
  AcGePoint3d p;
  ASSERT_EQ(flat->getPointAtParam(1.5, p), Acad::eOk);
  expectNear(p, AcGePoint3d(15, 5, -2));
  // Seen from the side the half circle would be an ellipse.
  const AcGePlane side(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 1, 0));
  EXPECT_EQ(pl->getOrthoProjectedCurve(side, proj), Acad::eNotApplicable);
  EXPECT_EQ(proj, nullptr);

  // Straight segments project onto any plane: every vertex to its foot on the plane.
  const RefPolyline zigzag{{AcGePoint2d(0, 0), AcGePoint2d(4, 1), AcGePoint2d(6, 5)}, {0.0, 0.0, 0.0}, false};
  auto straight = make2d(zigzag, 3.0);
  ASSERT_EQ(straight->getOrthoProjectedCurve(side, proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> onSide(proj);
  AcGePoint3dArray got;
  ASSERT_EQ(onSide->getStretchPoints(got), Acad::eOk);
  ASSERT_EQ(got.length(), 3);
  for (int i = 0; i < 3; ++i) {
    // The foot of (x, y, 3) on the plane x + y = 0: minus half of (x + y) along (1, 1).
    const double x = zigzag.pts[i].x, y = zigzag.pts[i].y, h = (x + y) / 2;
    expectNear(got[i], AcGePoint3d(x - h, y - h, 3.0));
  }
}

TEST(AcDb3dPolylineEdit, SplitExtendAndProject) {
  auto pl = make3d({{0, 0, 0}, {4, 0, 3}, {4, 6, 3}, {4, 6, 10}});
  const auto pieces = enttest::splitAt(*pl, {2.5, 0.5});
  ASSERT_EQ(pieces.size(), 3u);
  const double expected[3] = {2.5, 2.5 + 6.0 + 3.5, 3.5};
  for (int k = 0; k < 3; ++k) {
    ASSERT_NE(AcDb3dPolyline::cast(pieces[k].get()), nullptr);
    EXPECT_NEAR(enttest::curveLength(*pieces[k]), expected[k], 1e-12);
  }
  AcGePoint3dArray middle;
  pieces[1]->getStretchPoints(middle);
  ASSERT_EQ(middle.length(), 4);
  expectNear(middle[0], AcGePoint3d(2, 0, 1.5));
  expectNear(middle[3], AcGePoint3d(4, 6, 6.5));

  ASSERT_EQ(pl->extend(-1.0), Acad::eOk);
  ASSERT_EQ(pl->extend(false, AcGePoint3d(9, 9, 20)), Acad::eOk);  // foot on the vertical end line
  AcGePoint3d s, e;
  pl->getStartPoint(s);
  pl->getEndPoint(e);
  expectNear(s, AcGePoint3d(-4, 0, -3));
  expectNear(e, AcGePoint3d(4, 6, 20));

  AcDbCurve* proj = nullptr;
  ASSERT_EQ(pl->getOrthoProjectedCurve(AcGePlane(), proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> flat(proj);
  ASSERT_NE(AcDb3dPolyline::cast(proj), nullptr);
  EXPECT_NEAR(enttest::curveLength(*flat), 8.0 + 6.0, 1e-12);  // the climbs vanish in plan
  AcGePoint3dArray plan;
  flat->getStretchPoints(plan);
  for (const AcGePoint3d& p : plan) EXPECT_EQ(p.z, 0.0);

  // Spline-fit polylines project vertex by vertex and keep their kind, but are not cut.
  pl->setPolyType(AcDb::k3dCubicSplinePoly);
  ASSERT_EQ(pl->getOrthoProjectedCurve(AcGePlane(), proj), Acad::eOk);
  std::unique_ptr<AcDbCurve> flatSpline(proj);
  EXPECT_EQ(AcDb3dPolyline::cast(proj)->polyType(), AcDb::k3dCubicSplinePoly);
  EXPECT_EQ(pl->extend(-2.0), Acad::eNotApplicable);
}

TEST(AcDb3dPolylineEdit, ClosedSplitWrapsThroughTheStart) {
  auto pl = make3d({{0, 0, 0}, {3, 0, 4}, {3, 4, 4}}, true);  // sides 5, 4, sqrt(9 + 16 + 16)
  const auto pieces = enttest::splitAt(*pl, {0.5, 2.5});
  ASSERT_EQ(pieces.size(), 2u);
  const double closing = std::sqrt(41.0);
  EXPECT_NEAR(enttest::curveLength(*pieces[0]), 2.5 + 4.0 + closing / 2, 1e-12);
  EXPECT_NEAR(enttest::curveLength(*pieces[1]), closing / 2 + 2.5, 1e-12);
  AcGePoint3d e;
  pieces[1]->getEndPoint(e);
  expectNear(e, AcGePoint3d(1.5, 0, 2));
}

using OldPolylineEditDb = HostTest;

// Extending a polyline in a drawing edits its vertex objects, and undo restores them.
TEST_F(OldPolylineEditDb, ExtendInTheDrawingIsUndone) {
  const AcDbObjectId id = enttest::appendToModel(*db, make2d(kLineAndHalfCircle).release());
  tdhost::UndoController& undo = tdhost::undoController(*db);
  undo.mark();
  AcDb2dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(pl->extend(2.5), Acad::eOk);
  pl->close();
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(enttest::curveLength(*pl), 10.0 + 7.5 * kPi, 1e-9);
  pl->close();
  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForRead), Acad::eOk);
  EXPECT_NEAR(enttest::curveLength(*pl), 10.0 + 5.0 * kPi, 1e-9);
  AcGePoint3d e;
  pl->getEndPoint(e);
  expectNear(e, AcGePoint3d(10, 10, 0));
  pl->close();
}

}  // namespace
