// AcDbText and AcDbMText: input checks, style defaults, transforms and approximate boxes by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "arxHeaders.h"
#include "entity_test_support.h"
#include "host_fixture.h"

using enttest::expectNear;
using enttest::kPi;

namespace {

using TextTest = HostTest;

TEST_F(TextTest, RefusedValuesAndTheDrawingsStyleByDefault) {
  AcDbText text(AcGePoint3d(1, 2, 0), L"STA 1+00", AcDbObjectId::kNull, 2.5, 0.3);
  EXPECT_EQ(text.textStyle(), db->textstyle());
  EXPECT_FALSE(text.textStyle().isNull());
  EXPECT_EQ(text.setHeight(0.0), Acad::eInvalidInput);
  EXPECT_EQ(text.setWidthFactor(-1.0), Acad::eInvalidInput);
  EXPECT_TRUE(text.isDefaultAlignment());
  ASSERT_EQ(text.setVerticalMode(AcDb::kTextTop), Acad::eOk);
  EXPECT_FALSE(text.isDefaultAlignment());
  EXPECT_EQ(AcDbMText().textStyle(), db->textstyle());
  // A text appended without a style gets the drawing's.
  auto* added = new AcDbText;
  ASSERT_EQ(added->setTextStyle(AcDbObjectId::kNull), Acad::eOk);
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db->currentSpaceId(), AcDb::kForWrite), Acad::eOk);
  ASSERT_EQ(space->appendAcDbEntity(added), Acad::eOk);
  space->close();
  EXPECT_EQ(added->textStyle(), db->textstyle());
  added->close();
}

TEST_F(TextTest, BoxOfRotatedAndAlignedText) {
  // Four characters 2 high at width factor 0.5: 4 long, running north from (10, 5).
  AcDbText text(AcGePoint3d(10, 5, 0), L"ABCD", AcDbObjectId::kNull, 2.0, kPi / 2);
  text.setWidthFactor(0.5);
  AcDbExtents ext;
  ASSERT_EQ(text.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.minPoint(), AcGePoint3d(8, 5, 0));
  expectNear(ext.maxPoint(), AcGePoint3d(10, 9, 0));
  // Right aligned at (20, 0): "AB" 1 high ends there.
  AcDbText right(AcGePoint3d(0, 0, 0), L"AB", AcDbObjectId::kNull, 1.0);
  right.setHorizontalMode(AcDb::kTextRight);
  right.setAlignmentPoint(AcGePoint3d(20, 0, 0));
  ASSERT_EQ(right.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.minPoint(), AcGePoint3d(18, 0, 0));
  expectNear(ext.maxPoint(), AcGePoint3d(20, 1, 0));
  right.setVerticalMode(AcDb::kTextVertMid);
  ASSERT_EQ(right.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.minPoint(), AcGePoint3d(18, -0.5, 0));
}

TEST_F(TextTest, TransformTurnsScalesAndMoves) {
  AcDbText text(AcGePoint3d(3, 0, 0), L"X", AcDbObjectId::kNull, 1.0, 0.25);
  const AcGeMatrix3d m = AcGeMatrix3d::translation(AcGeVector3d(0, 0, 4)) * AcGeMatrix3d::scaling(2.0) *
                         AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis);
  ASSERT_EQ(text.transformBy(m), Acad::eOk);
  expectNear(text.position(), AcGePoint3d(0, 6, 4));
  EXPECT_NEAR(text.rotation(), 0.25 + kPi / 2, 1e-12);
  EXPECT_NEAR(text.height(), 2.0, 1e-12);
  EXPECT_TRUE(text.normal().isEqualTo(AcGeVector3d::kZAxis));
  AcGeMatrix3d stretch;
  stretch.setCoordSystem(AcGePoint3d::kOrigin, AcGeVector3d(1, 0, 0), AcGeVector3d(0, 3, 0), AcGeVector3d(0, 0, 1));
  EXPECT_EQ(text.transformBy(stretch), Acad::eCannotScaleNonUniformly);
}

TEST_F(TextTest, MTextBoxFollowsAttachment) {
  AcDbMText m;
  ASSERT_EQ(m.setContents(L"LOT 12\\PBLOCK 3"), Acad::eOk);
  ASSERT_EQ(m.setTextHeight(1.0), Acad::eOk);
  ASSERT_EQ(m.setWidth(10.0), Acad::eOk);
  ASSERT_EQ(m.setAttachment(AcDbMText::kMiddleCenter), Acad::eOk);
  ASSERT_EQ(m.setLocation(AcGePoint3d(100, 200, 0)), Acad::eOk);
  EXPECT_EQ(m.setTextHeight(0.0), Acad::eInvalidInput);
  // Two lines: 1 + 5/3 high, centred on the location.
  AcDbExtents ext;
  ASSERT_EQ(m.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.minPoint(), AcGePoint3d(95, 200 - 4.0 / 3.0, 0));
  expectNear(ext.maxPoint(), AcGePoint3d(105, 200 + 4.0 / 3.0, 0));
  ASSERT_EQ(m.setAttachment(AcDbMText::kTopLeft), Acad::eOk);
  ASSERT_EQ(m.getGeomExtents(ext), Acad::eOk);
  expectNear(ext.maxPoint(), AcGePoint3d(110, 200, 0));
  ASSERT_EQ(m.transformBy(AcGeMatrix3d::rotation(kPi, AcGeVector3d::kZAxis, AcGePoint3d(100, 200, 0))), Acad::eOk);
  EXPECT_NEAR(m.rotation(), kPi, 1e-12);
  EXPECT_TRUE(m.direction().isEqualTo(AcGeVector3d(-1, 0, 0)));
}

}  // namespace
