// acedTrans between the world, a turned UCS, the display system of an oblique twisted view and
// entity systems, against axes worked out by hand.
#include <cmath>

#include "dbents.h"
#include "geometry_checks.h"
#include "host_fixture.h"

namespace {

using tdtest::Vec3;

resbuf code(short c) {
  resbuf rb{};
  rb.restype = RTSHORT;
  rb.resval.rint = c;
  return rb;
}

// `p` converted from `from` to `to`; fails the test unless acedTrans answers RTNORM.
Vec3 trans(const Vec3& p, const resbuf& from, const resbuf& to, int disp = 0) {
  ads_point in = {p[0], p[1], p[2]}, out = {0, 0, 0};
  EXPECT_EQ(acedTrans(in, &from, &to, disp, out), RTNORM);
  return {out[0], out[1], out[2]};
}

using Trans = HostTest;

}  // namespace

TEST_F(Trans, UcsPointsAndDisplacementsAgainstItsAxes) {
  const double c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
  ASSERT_EQ(db->setUcs(AcGePoint3d(100, 50, 5), AcGeVector3d(c, s, 0), AcGeVector3d(-s, c, 0)), Acad::eOk);
  const resbuf wcs = code(0), ucs = code(1);
  // UCS (1, 2, 3) is origin + 1 x + 2 y + 3 z, z being world z here.
  const Vec3 world{100 + c - 2 * s, 50 + s + 2 * c, 5 + 3};
  EXPECT_TRUE(tdtest::nearRel(trans({1, 2, 3}, ucs, wcs), world, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(trans(world, wcs, ucs), {1, 2, 3}, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(trans({1, 2, 3}, ucs, wcs, 1), {c - 2 * s, s + 2 * c, 3}, 1e-12)) << "no origin";
}

TEST_F(Trans, DisplaySystemOfAnObliqueTwistedView) {
  // Looking from the south-east and above at (5, 5, 0): the screen's x runs along world
  // (1, 1, 0) and world z shows upwards; a twist turns the picture counter-clockwise.
  const double twist = 0.4;
  AcDbViewTableRecord view;
  view.setCenterPoint(AcGePoint2d(0, 0));
  view.setHeight(10);
  view.setWidth(10);
  view.setViewDirection(AcGeVector3d(1, -1, 1));
  view.setTarget(AcGePoint3d(5, 5, 0));
  view.setViewTwist(twist);
  ASSERT_EQ(acedSetCurrentView(&view, nullptr), Acad::eOk);
  const resbuf wcs = code(0), dcs = code(2);
  const double r2 = std::sqrt(2.0), r3 = std::sqrt(3.0), r6 = std::sqrt(6.0);
  const Vec3 screenRight{1 / r2, 1 / r2, 0}, screenUp{-1 / r6, 1 / r6, 2 / r6};
  EXPECT_TRUE(tdtest::nearRel(trans({5, 5, 0}, wcs, dcs), {0, 0, 0}, 1e-12)) << "the target is the origin";
  EXPECT_TRUE(tdtest::nearRel(trans({6, 4, 1}, wcs, dcs), {0, 0, r3}, 1e-12)) << "z towards the viewer";
  const Vec3 right = trans(tdtest::add({5, 5, 0}, screenRight), wcs, dcs);
  EXPECT_TRUE(tdtest::nearRel(right, {std::cos(twist), std::sin(twist), 0}, 1e-12));
  const Vec3 up = trans(screenUp, wcs, dcs, 1);
  EXPECT_TRUE(tdtest::nearRel(up, {-std::sin(twist), std::cos(twist), 0}, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(trans(up, dcs, wcs, 1), screenUp, 1e-12));
}

TEST_F(Trans, EntitySystemsFollowTheArbitraryAxisRule) {
  // Normal (1, 0, 0): x = world z cross normal = (0, 1, 0), y = normal cross x = (0, 0, 1).
  auto* circle = new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d(1, 0, 0), 1);
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 1, 1));
  AcDbBlockTableRecord* model = nullptr;
  ASSERT_EQ(acdbOpenObject(model, db->currentSpaceId(), AcDb::kForWrite), Acad::eOk);
  AcDbObjectId circleId, lineId;
  ASSERT_EQ(model->appendAcDbEntity(circleId, circle), Acad::eOk);
  ASSERT_EQ(model->appendAcDbEntity(lineId, line), Acad::eOk);
  model->close();
  line->close();
  resbuf ecs{}, lineEcs{}, normal{};
  ecs.restype = lineEcs.restype = RTENAME;
  ASSERT_EQ(acdbGetAdsName(ecs.resval.rlname, circleId), Acad::eOk);
  ASSERT_EQ(acdbGetAdsName(lineEcs.resval.rlname, lineId), Acad::eOk);
  normal.restype = RT3DPOINT;
  normal.resval.rpoint[Z] = -1;  // x = world y cross normal = (-1, 0, 0)
  const resbuf wcs = code(0);
  EXPECT_TRUE(tdtest::nearRel(trans({1, 2, 3}, ecs, wcs), {3, 1, 2}, 1e-12)) << "the entity may be open";
  circle->close();
  EXPECT_TRUE(tdtest::nearRel(trans({3, 1, 2}, wcs, ecs), {1, 2, 3}, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(trans({1, 2, 3}, normal, wcs), {-1, 2, -3}, 1e-12));
  EXPECT_TRUE(tdtest::nearRel(trans({1, 2, 3}, lineEcs, wcs), {1, 2, 3}, 1e-12)) << "a line is in the world";
}

TEST_F(Trans, SystemsThisHostDoesNotHaveAreErrors) {
  ads_point p = {1, 2, 3}, out;
  const resbuf wcs = code(0), dcs = code(2), psdcs = code(3), unknown = code(7);
  EXPECT_EQ(acedTrans(p, &dcs, &psdcs, 0, out), RTERROR) << "no paper space";
  EXPECT_EQ(acedTrans(p, &wcs, &unknown, 0, out), RTERROR);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(acedTrans(p, &wcs, &dcs, 0, out), RTERROR) << "no drawing, no view";
}
