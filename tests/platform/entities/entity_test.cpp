// Entities in a database: traits, open discipline, undo snapshots and the block iterator.
#include <gtest/gtest.h>

#include "arxHeaders.h"
#include "host_fixture.h"
#include "tdhost/undo.h"

namespace {

class EntityDbTest : public HostTest {
 protected:
  AcDbObjectId append(AcDbEntity* ent) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(db->getBlockTable(table, AcDb::kForRead), Acad::eOk);
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), Acad::eOk);
    table->close();
    AcDbObjectId id;
    EXPECT_EQ(space->appendAcDbEntity(id, ent), Acad::eOk);
    ent->close();
    space->close();
    return id;
  }
};

TEST_F(EntityDbTest, TraitsColourLinetypeAndLayer) {
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));
  EXPECT_EQ(line->setLayer(L"missing"), Acad::eKeyNotFound);
  EXPECT_EQ(line->setLinetype(L"nonesuch"), Acad::eKeyNotFound);
  ASSERT_EQ(line->setLinetype(L"Continuous"), Acad::eOk);
  AcCmColor c;
  c.setRGB(10, 20, 30);
  ASSERT_EQ(line->setColor(c), Acad::eOk);
  EXPECT_EQ(line->colorIndex(), 0);
  EXPECT_TRUE(line->color().isByColor());
  EXPECT_EQ(line->setLinetypeScale(0.0), Acad::eInvalidInput);
  ASSERT_EQ(line->setColorIndex(3), Acad::eOk);
  EXPECT_TRUE(line->color().isByACI());
  AcDbObjectId id = append(line);
  AcDbLine* back = nullptr;
  ASSERT_EQ(acdbOpenObject(back, id, AcDb::kForRead), Acad::eOk);
  ACHAR* lt = back->linetype();
  EXPECT_STREQ(lt, L"Continuous");
  acutDelString(lt);
  ACHAR* layer = back->layer();
  EXPECT_STREQ(layer, L"0");
  acutDelString(layer);
  EXPECT_EQ(back->colorIndex(), 3);
  // A read-opened curve answers queries but refuses changes.
  double e = 0;
  EXPECT_EQ(back->getEndParam(e), Acad::eOk);
  EXPECT_EQ(back->setStartPoint(AcGePoint3d(5, 5, 5)), Acad::eNotOpenForWrite);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 1u);
  back->close();
}

TEST_F(EntityDbTest, UndoRestoresPolylineVerticesAndArcs) {
  auto* pl = new AcDbPolyline;
  pl->addVertexAt(0, AcGePoint2d(0, 0), 0.5);
  pl->addVertexAt(1, AcGePoint2d(10, 0));
  AcDbObjectId id = append(pl);
  auto* arc = new AcDbArc(AcGePoint3d(0, 0, 0), 2.0, 0.0, 1.0);
  AcDbObjectId arcId = append(arc);
  tdhost::UndoController& undo = tdhost::undoController(*db);
  undo.mark();
  AcDbPolyline* w = nullptr;
  ASSERT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eOk);
  double before = 0;
  w->getEndParam(before);
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

TEST_F(EntityDbTest, ReadsOfAClosedEntityAreReported) {
  AcDbObjectId id = append(new AcDbCircle(AcGePoint3d(0, 0, 0), AcGeVector3d::kZAxis, 1.0));
  AcDbCircle* c = nullptr;
  ASSERT_EQ(acdbOpenObject(c, id, AcDb::kForRead), Acad::eOk);
  c->close();
  double area = 0;
  EXPECT_EQ(c->getArea(area), Acad::eNotOpenForRead);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kReadNotEnabled), 1u);
}

TEST_F(EntityDbTest, StretchPointsMoveVertices) {
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
  pts.setLogicalLength(0);
  ASSERT_EQ(pl.getStretchPoints(pts), Acad::eOk);
  EXPECT_EQ(pts.length(), 2);
  idx.setLogicalLength(0);
  idx.append(0);
  ASSERT_EQ(pl.moveStretchPointsAt(idx, AcGeVector3d(1, 1, 0)), Acad::eOk);
  AcGePoint2d p;
  pl.getPointAt(0, p);
  EXPECT_EQ(p, AcGePoint2d(1, 1));
  AcDbPoint point(AcGePoint3d(1, 2, 3));
  AcDbExtents ext;
  ASSERT_EQ(point.getGeomExtents(ext), Acad::eOk);
  EXPECT_EQ(ext.minPoint(), AcGePoint3d(1, 2, 3));
}

TEST_F(EntityDbTest, ViewRecordCentrePoint) {
  AcDbViewTableRecord rec;
  rec.setCenterPoint(AcGePoint2d(3, 4));
  EXPECT_EQ(rec.centerPoint(), AcGePoint2d(3, 4));
}

}  // namespace
