// AcDb2dPolyline and AcDb3dPolyline: owned vertices and curve queries against independent
// formulas, and vertices erased, undone and cloned with their owner.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "arxHeaders.h"
#include "entity_test_support.h"
#include "host_fixture.h"
#include "tdhost/undo.h"

using enttest::kLineAndHalfCircle;
using enttest::kPi;
using enttest::make2d;
using enttest::RefPolyline;

namespace {

// Open, it is closed by its chord for its area: the triangle plus the half disc.
TEST(AcDb2dPolylineCurve, OpenAreaIsClosedByTheChord) {
  double area = 0;
  ASSERT_EQ(make2d(kLineAndHalfCircle)->getArea(area), Acad::eOk);
  EXPECT_NEAR(area, 50.0 + kPi * 25.0 / 2.0, 1e-9);
}

TEST(AcDb2dPolylineCurve, RandomCurvesFollowTheTextbookFormulas) {
  std::mt19937 rng(7);
  for (int round = 0; round < 6; ++round) {
    RefPolyline ref = enttest::randomPolyline(rng, 12, true);
    ref.closed = round % 2 == 1;
    SCOPED_TRACE(testing::Message() << "round " << round);
    enttest::expectFollowsReference(*make2d(ref, 3.0), ref, 3.0, rng, 20);
  }
}

TEST(AcDb2dPolylineEdit, InsertAfterAVertexAndIterate) {
  AcDb2dPolyline pl;
  auto* a = new AcDb2dVertex(AcGePoint3d(0, 0, 0));
  auto* c = new AcDb2dVertex(AcGePoint3d(2, 0, 0));
  ASSERT_EQ(pl.appendVertex(a), Acad::eOk);
  ASSERT_EQ(pl.appendVertex(c), Acad::eOk);
  ASSERT_EQ(pl.insertVertexAt(a, new AcDb2dVertex(AcGePoint3d(1, 1, 0))), Acad::eOk);
  ASSERT_EQ(pl.insertVertexAt(nullptr, new AcDb2dVertex(AcGePoint3d(-1, 0, 0))), Acad::eOk);
  AcDb2dVertex stranger;
  auto* lost = new AcDb2dVertex;
  EXPECT_EQ(pl.insertVertexAt(&stranger, lost), Acad::eInvalidInput);
  delete lost;
  std::vector<double> xs;
  std::unique_ptr<AcDbObjectIterator> it(pl.vertexIterator());
  for (it->start(); !it->done(); it->step()) xs.push_back(AcDb2dVertex::cast(it->entity())->position().x);
  EXPECT_EQ(xs, (std::vector<double>{-1, 0, 1, 2}));
  double end = 0;
  ASSERT_EQ(pl.getEndParam(end), Acad::eOk);
  EXPECT_EQ(end, 3.0);
  ASSERT_EQ(pl.makeClosed(), Acad::eOk);
  ASSERT_EQ(pl.getEndParam(end), Acad::eOk);
  EXPECT_EQ(end, 4.0);
  EXPECT_EQ(pl.polyType(), AcDb::k2dSimplePoly);
}

TEST(AcDb2dPolylineEdit, TransformMapsVerticesAndKeepsArea) {
  // Rotate a quarter turn about z, then shift by (100, 50, 7): (x, y, z) -> (100 - y, 50 + x, z + 7).
  RefPolyline ref{{AcGePoint2d(0, 0), AcGePoint2d(4, 0), AcGePoint2d(4, 3)}, {0.0, 0.5, 0.0}, true};
  auto pl = make2d(ref, 2.0);
  const AcGeMatrix3d m = AcGeMatrix3d::translation(AcGeVector3d(100, 50, 7)) *
                         AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis, AcGePoint3d::kOrigin);
  ASSERT_EQ(pl->transformBy(m), Acad::eOk);
  AcGePoint3dArray pts;
  ASSERT_EQ(pl->getStretchPoints(pts), Acad::eOk);
  ASSERT_EQ(pts.length(), 3);
  EXPECT_NEAR(pts[1].distanceTo(AcGePoint3d(100, 54, 9)), 0.0, 1e-9);
  EXPECT_NEAR(pts[2].distanceTo(AcGePoint3d(97, 54, 9)), 0.0, 1e-9);
  EXPECT_NEAR(pl->elevation(), 9.0, 1e-12);
  double area = 0;
  ASSERT_EQ(pl->getArea(area), Acad::eOk);
  EXPECT_NEAR(area, ref.area(), 1e-9);
  AcGeMatrix3d stretch;
  stretch.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(1, 0, 0), AcGeVector3d(0, 2, 0), AcGeVector3d(0, 0, 1));
  EXPECT_EQ(pl->transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST(AcDb3dPolylineCurve, LengthIsTheSumOfSpaceSegments) {
  // Sides 13, 8 and 3.
  AcDb3dPolyline pl(AcDb::k3dSimplePoly, AcGePoint3dArray{AcGePoint3d(0, 0, 0), AcGePoint3d(3, 4, 12),
                                                          AcGePoint3d(3, 4, 20), AcGePoint3d(5, 6, 21)});
  double len = 0;
  EXPECT_NEAR(enttest::curveLength(pl), 24.0, 1e-12);
  AcGePoint3d p;
  ASSERT_EQ(pl.getClosestPointTo(AcGePoint3d(10, 4, 16), p), Acad::eOk);
  EXPECT_NEAR(p.distanceTo(AcGePoint3d(3, 4, 16)), 0.0, 1e-9);
  ASSERT_EQ(pl.makeClosed(), Acad::eOk);
  ASSERT_EQ(pl.getDistAtParam(4.0, len), Acad::eOk);
  EXPECT_NEAR(len, 24.0 + std::sqrt(25.0 + 36.0 + 441.0), 1e-12);
  AcGeMatrix3d stretch;
  stretch.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(2, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1));
  ASSERT_EQ(pl.transformBy(stretch), Acad::eOk);
  AcGePoint3dArray moved;
  ASSERT_EQ(pl.getStretchPoints(moved), Acad::eOk);
  EXPECT_EQ(moved[3], AcGePoint3d(10, 6, 21));
}

class OldPolylineDbTest : public HostTest {
 protected:
  AcDbObjectId append(AcDbEntity* ent) { return enttest::appendToModel(*db, ent); }
  std::vector<AcDbObjectId> modelSpace() {
    AcDbBlockTableRecord* space = nullptr;
    EXPECT_EQ(acdbOpenObject(space, db->currentSpaceId(), AcDb::kForRead), Acad::eOk);
    std::vector<AcDbObjectId> ids(space->entityIds().begin(), space->entityIds().end());
    space->close();
    return ids;
  }
  std::vector<AcDbObjectId> vertexIds(AcDbObjectId plId) {
    AcDbEntity* ent = nullptr;
    EXPECT_EQ(acdbOpenAcDbEntity(ent, plId, AcDb::kForRead, true), Acad::eOk);
    std::unique_ptr<AcDbObjectIterator> it;
    if (auto* p2 = AcDb2dPolyline::cast(ent)) it.reset(p2->vertexIterator());
    else it.reset(AcDb3dPolyline::cast(ent)->vertexIterator());
    std::vector<AcDbObjectId> ids;
    for (it->start(); !it->done(); it->step(false, false)) ids.push_back(it->objectId());
    ent->close();
    return ids;
  }
  double length(AcDbObjectId id) {
    AcDbCurve* c = nullptr;
    EXPECT_EQ(acdbOpenObject(c, id, AcDb::kForRead), Acad::eOk);
    const double len = enttest::curveLength(*c);
    c->close();
    return len;
  }
};

TEST_F(OldPolylineDbTest, HeldVerticesJoinTheDatabaseButNotTheBlock) {
  const AcDbObjectId id = append(make2d(kLineAndHalfCircle).release());
  const std::vector<AcDbObjectId> verts = vertexIds(id);
  ASSERT_EQ(verts.size(), 3u);
  EXPECT_EQ(modelSpace(), std::vector<AcDbObjectId>{id});
  AcDb2dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForRead), Acad::eOk);
  AcDb2dVertex* v = nullptr;
  ASSERT_EQ(pl->openVertex(v, verts[1], AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(v->ownerId(), id);
  EXPECT_EQ(v->bulge(), 1.0);
  EXPECT_EQ(pl->vertexPosition(*v), AcGePoint3d(10, 0, 0));
  v->close();
  pl->close();
  EXPECT_NEAR(length(id), 10.0 + 5.0 * kPi, 1e-9);
  // A vertex edited on its own changes the polyline's curve.
  AcDb2dVertex* w = nullptr;
  ASSERT_EQ(acdbOpenObject(w, verts[1], AcDb::kForWrite), Acad::eOk);
  w->setBulge(0.0);
  w->close();
  EXPECT_NEAR(length(id), 20.0, 1e-9);
}

TEST_F(OldPolylineDbTest, EraseAndUndoCarryTheVertices) {
  AcGePoint3dArray pts;
  pts.append(AcGePoint3d(0, 0, 0));
  pts.append(AcGePoint3d(0, 0, 5));
  const AcDbObjectId id = append(new AcDb3dPolyline(AcDb::k3dSimplePoly, pts));
  const std::vector<AcDbObjectId> verts = vertexIds(id);
  ASSERT_EQ(verts.size(), 2u);
  tdhost::UndoController& undo = tdhost::undoController(*db);
  undo.mark();
  AcDb3dPolyline* pl = nullptr;
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId added;
  auto* v = new AcDb3dPolylineVertex(AcGePoint3d(0, 12, 5));
  ASSERT_EQ(pl->appendVertex(added, v), Acad::eOk);
  EXPECT_FALSE(added.isNull());
  v->close();
  pl->close();
  EXPECT_NEAR(length(id), 17.0, 1e-12);
  EXPECT_EQ(modelSpace().size(), 1u);
  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  EXPECT_TRUE(added.isErased());
  EXPECT_NEAR(length(id), 5.0, 1e-12);

  undo.mark();
  ASSERT_EQ(acdbOpenObject(pl, id, AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(pl->erase(), Acad::eOk);
  pl->close();
  for (const AcDbObjectId& vid : verts) EXPECT_TRUE(vid.isErased());
  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  EXPECT_FALSE(id.isErased());
  for (const AcDbObjectId& vid : verts) EXPECT_FALSE(vid.isErased());
  EXPECT_NEAR(length(id), 5.0, 1e-12);
}

TEST_F(OldPolylineDbTest, DeepCloneCopiesTheVertices) {
  const AcDbObjectId id = append(make2d(kLineAndHalfCircle).release());
  const std::vector<AcDbObjectId> verts = vertexIds(id);
  AcDbIdMapping map;
  AcDbObjectIdArray ids;
  ids.append(id);
  ASSERT_EQ(db->deepCloneObjects(ids, db->currentSpaceId(), map), Acad::eOk);
  AcDbIdPair pair(id, AcDbObjectId::kNull, false);
  ASSERT_TRUE(map.compute(pair));
  const AcDbObjectId cloneId = pair.value();
  const std::vector<AcDbObjectId> cloned = vertexIds(cloneId);
  ASSERT_EQ(cloned.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NE(cloned[i], verts[i]);
    AcDb2dVertex* v = nullptr;
    ASSERT_EQ(acdbOpenObject(v, cloned[i], AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(v->ownerId(), cloneId);
    v->close();
  }
  EXPECT_NEAR(length(cloneId), 10.0 + 5.0 * kPi, 1e-9);
  EXPECT_EQ(modelSpace().size(), 2u);
  // The copy is independent: erasing the original leaves the clone's vertices alone.
  AcDbEntity* orig = nullptr;
  ASSERT_EQ(acdbOpenAcDbEntity(orig, id, AcDb::kForWrite), Acad::eOk);
  orig->erase();
  orig->close();
  for (const AcDbObjectId& vid : cloned) EXPECT_FALSE(vid.isErased());
}

}  // namespace
