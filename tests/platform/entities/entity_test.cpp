// Entities in a database: trait statuses, open discipline, undo snapshots and stretch points.
#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "entity_test_support.h"
#include "host_fixture.h"
#include "tdhost/undo.h"

using enttest::appendToModel;

namespace {

using EntityDbTest = HostTest;

TEST_F(EntityDbTest, TraitStatusesAndWhatAReadOpenedEntityRefuses) {
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  EXPECT_EQ(line->setLayer(L"missing"), Acad::eKeyNotFound);
  EXPECT_EQ(line->setLinetype(L"nonesuch"), Acad::eKeyNotFound);
  EXPECT_EQ(line->setLinetypeScale(0.0), Acad::eInvalidInput);
  AcCmColor c;
  c.setRGB(10, 20, 30);
  ASSERT_EQ(line->setColor(c), Acad::eOk);
  EXPECT_EQ(line->colorIndex(), 0);  // a true colour has no index
  ASSERT_EQ(line->setColorIndex(3), Acad::eOk);
  EXPECT_TRUE(line->color().isByACI());
  AcDbObjectId id = appendToModel(*db, line);
  AcDbLine* back = nullptr;
  ASSERT_EQ(acdbOpenObject(back, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(back->colorIndex(), 3);
  double e = 0;
  EXPECT_EQ(back->getEndParam(e), Acad::eOk);
  EXPECT_EQ(back->setStartPoint(AcGePoint3d(5, 5, 5)), Acad::eNotOpenForWrite);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 1u);
  back->close();
  // Closed again, it answers nothing.
  double area = 0;
  EXPECT_EQ(back->getArea(area), Acad::eNotOpenForRead);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kReadNotEnabled), 1u);
}

TEST_F(EntityDbTest, UndoRestoresPolylineVerticesAndArcs) {
  auto* pl = new AcDbPolyline;
  pl->addVertexAt(0, AcGePoint2d(0, 0), 0.5);
  pl->addVertexAt(1, AcGePoint2d(10, 0));
  AcDbObjectId id = appendToModel(*db, pl);
  AcDbObjectId arcId = appendToModel(*db, new AcDbArc(AcGePoint3d(0, 0, 0), 2.0, 0.0, 1.0));
  tdhost::UndoController& undo = tdhost::undoController(*db);
  undo.mark();
  AcDbPolyline* w = nullptr;
  ASSERT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eOk);
  w->addVertexAt(2, AcGePoint2d(10, 10));
  w->setBulgeAt(0, 0.0);
  w->close();
  AcDbArc* wa = nullptr;
  ASSERT_EQ(acdbOpenObject(wa, arcId, AcDb::kForWrite), Acad::eOk);
  wa->transformBy(AcGeMatrix3d::translation(AcGeVector3d(5, 0, 0)));
  wa->close();
  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  AcDbPolyline* r = nullptr;
  ASSERT_EQ(acdbOpenObject(r, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(r->numVerts(), 2u);
  double bulge = 0, len = 0;
  r->getBulgeAt(0, bulge);
  EXPECT_EQ(bulge, 0.5);
  r->getDistAtParam(1.0, len);  // the path cache follows the restored vertices
  EXPECT_GT(len, 10.0);
  r->close();
  AcDbArc* ra = nullptr;
  ASSERT_EQ(acdbOpenObject(ra, arcId, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ra->center(), AcGePoint3d(0, 0, 0));
  ra->close();
}

TEST(EntityStretch, StretchPointsMoveVertices) {
  AcDbLine line(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  AcGePoint3dArray pts;
  ASSERT_EQ(line.getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 2);
  AcGeIntArray idx;
  idx.append(1);
  ASSERT_EQ(line.moveStretchPointsAt(idx, AcGeVector3d(0, 2, 0)), Acad::eOk);
  EXPECT_EQ(line.endPoint(), AcGePoint3d(1, 2, 0));
  AcDbPolyline pl;
  pl.addVertexAt(0, AcGePoint2d(0, 0));
  pl.addVertexAt(1, AcGePoint2d(3, 0));
  idx[0] = 0;
  ASSERT_EQ(pl.moveStretchPointsAt(idx, AcGeVector3d(1, 1, 0)), Acad::eOk);
  AcGePoint2d p;
  pl.getPointAt(0, p);
  EXPECT_EQ(p, AcGePoint2d(1, 1));
  AcDbPoint point(AcGePoint3d(1, 2, 3));
  AcDbExtents ext;
  ASSERT_EQ(point.getGeomExtents(ext), Acad::eOk);
  EXPECT_EQ(ext.minPoint(), AcGePoint3d(1, 2, 3));
}

}  // namespace
