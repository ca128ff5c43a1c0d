// AcDbBlockReference: the placement matrix, transforms and extents against hand computations.
#include <gtest/gtest.h>

#include <cmath>

#include "arxHeaders.h"
#include "entity_test_support.h"
#include "host_fixture.h"

using enttest::expectNear;
using enttest::kPi;

namespace {

class BlockReferenceTest : public HostTest {
 protected:
  // Block "B" with origin (1,1,0): a line (1,1,0)-(3,1,0) and a unit circle about the origin point.
  void SetUp() override {
    HostTest::SetUp();
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(db->getBlockTable(table, AcDb::kForWrite), Acad::eOk);
    auto* rec = new AcDbBlockTableRecord;
    rec->setName(L"B");
    rec->setOrigin(AcGePoint3d(1, 1, 0));
    ASSERT_EQ(table->add(blockId, rec), Acad::eOk);
    table->close();
    AcDbEntity* const members[] = {new AcDbLine(AcGePoint3d(1, 1, 0), AcGePoint3d(3, 1, 0)),
                                   new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 1.0)};
    for (AcDbEntity* ent : members) {
      ASSERT_EQ(rec->appendAcDbEntity(ent), Acad::eOk);
      ent->close();
    }
    rec->close();
  }
  AcDbObjectId blockId;
};

TEST_F(BlockReferenceTest, BlockTransformAndExtentsByHand) {
  AcDbBlockReference ref(AcGePoint3d(10, 20, 0), blockId);
  ASSERT_EQ(ref.setScaleFactors(AcGeScale3d(2, 3, 1)), Acad::eOk);
  ASSERT_EQ(ref.setRotation(kPi / 2), Acad::eOk);
  EXPECT_EQ(ref.setScaleFactors(AcGeScale3d(0, 1, 1)), Acad::eInvalidInput);
  // p -> (10, 20) + R90 (2 (px - 1), 3 (py - 1)) = (10 - 3 (py - 1), 20 + 2 (px - 1)).
  const AcGeMatrix3d m = ref.blockTransform();
  expectNear(AcGePoint3d(3, 1, 0).transformBy(m), AcGePoint3d(10, 24, 0));
  expectNear(AcGePoint3d(1, 2, 0).transformBy(m), AcGePoint3d(7, 20, 0));
  expectNear(AcGePoint3d(1, 1, 5).transformBy(m), AcGePoint3d(10, 20, 5));
  AcDbExtents ext;
  ASSERT_EQ(ref.getGeomExtents(ext), Acad::eOk);
  // The circle becomes an axis-aligned ellipse with half axes 3 (x) and 2 (y); the line runs north.
  expectNear(ext.minPoint(), AcGePoint3d(7, 18, 0));
  expectNear(ext.maxPoint(), AcGePoint3d(13, 24, 0));
  // Uniformly scaled 2 and turned 45 degrees: a circle of radius 2 about the position; the
  // line ends at 4 (cos 45, sin 45).
  AcDbBlockReference turned(AcGePoint3d(0, 0, 0), blockId);
  turned.setScaleFactors(AcGeScale3d(2));
  turned.setRotation(kPi / 4);
  ASSERT_EQ(turned.getGeomExtents(ext), Acad::eOk);
  const double e = 4.0 * std::sqrt(0.5);
  expectNear(ext.minPoint(), AcGePoint3d(-2, -2, 0));
  expectNear(ext.maxPoint(), AcGePoint3d(e, e, 0));
}

TEST_F(BlockReferenceTest, TransformComposesWithThePlacement) {
  AcDbBlockReference ref(AcGePoint3d(5, -2, 1), blockId);
  ref.setScaleFactors(AcGeScale3d(2, 1.5, 0.5));
  ref.setRotation(0.7);
  ref.setNormal(AcGeVector3d(0.2, -0.3, 1.0));
  AcGePlane mirror(AcGePoint3d(3, 0, 0), AcGeVector3d(1, 0.5, 0));
  const AcGeMatrix3d xforms[] = {
      AcGeMatrix3d::translation(AcGeVector3d(1, 2, 3)) * AcGeMatrix3d::rotation(1.1, AcGeVector3d(1, 1, 0.5)),
      AcGeMatrix3d::scaling(2.5, AcGePoint3d(4, 4, 4)),
      AcGeMatrix3d::mirroring(mirror),
  };
  const AcGePoint3d probes[] = {AcGePoint3d(0, 0, 0), AcGePoint3d(3, 1, 0), AcGePoint3d(-2, 4, 7)};
  for (const AcGeMatrix3d& x : xforms) {
    const AcGeMatrix3d before = ref.blockTransform();
    ASSERT_EQ(ref.transformBy(x), Acad::eOk);
    const AcGeMatrix3d after = ref.blockTransform();
    for (AcGePoint3d p : probes) {
      AcGePoint3d want = p;
      want.transformBy(before).transformBy(x);
      expectNear(p.transformBy(after), want);
    }
  }
  AcGeMatrix3d stretch;
  stretch.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(1, 0, 0), AcGeVector3d(0, 2, 0), AcGeVector3d(0, 0, 1));
  EXPECT_EQ(ref.transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST_F(BlockReferenceTest, InDatabaseWithStretchPoint) {
  const AcDbObjectId id = enttest::appendToModel(*db, new AcDbBlockReference(AcGePoint3d(1, 2, 3), blockId));
  AcDbBlockReference* ref = nullptr;
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForWrite), Acad::eOk);
  AcGeIntArray idx;
  idx.append(0);
  ASSERT_EQ(ref->moveStretchPointsAt(idx, AcGeVector3d(1, 1, 1)), Acad::eOk);
  ref->close();
  ASSERT_EQ(acdbOpenObject(ref, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ref->position(), AcGePoint3d(2, 3, 4));
  AcDbExtents ext;
  ASSERT_EQ(ref->getGeomExtents(ext), Acad::eOk);
  expectNear(ext.minPoint(), AcGePoint3d(1, 2, 4));
  expectNear(ext.maxPoint(), AcGePoint3d(4, 4, 4));
  ref->close();
}

}  // namespace
