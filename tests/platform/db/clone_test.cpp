// Deep cloning: owned data comes along and references inside the cloned set are translated.
#include "host_fixture.h"

using DeepClone = HostTest;

TEST_F(DeepClone, ClonesCarryExtendedDataAndExtensionRecords) {
  ASSERT_EQ(acdbRegApp(L"TERRADON"), RTNORM);
  AcDbObjectId a = addEntity(1), b = addEntity(2);
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, a, AcDb::kForWrite), Acad::eOk);
  ACHAR handleB[17];
  b.handle().getIntoAsciiBuffer(handleB);
  resbuf* rb = acutBuildList(1001, L"TERRADON", 1000, L"SOURCE=7", 1005, handleB, 0);
  ASSERT_EQ(obj->setXData(rb), Acad::eOk);
  acutRelRb(rb);
  obj->createExtensionDictionary();
  AcDbObjectId extId = obj->extensionDictionary();
  obj->close();
  AcDbDictionary* ext = nullptr;
  ASSERT_EQ(acdbOpenObject(ext, extId, AcDb::kForWrite), Acad::eOk);
  ads_name nameB;
  acdbGetAdsName(nameB, b);
  rb = acutBuildList(1, L"link", 330, nameB, 0);
  auto* rec = new AcDbXrecord;
  rec->setFromRbChain(*rb);
  acutRelRb(rb);
  AcDbObjectId recId;
  ext->setAt(L"LINK", rec, recId);
  rec->close();
  ext->close();

  AcDbIdMapping map;
  ASSERT_EQ(db->deepCloneObjects(AcDbObjectIdArray{a, b}, db->currentSpaceId(), map), Acad::eOk);
  AcDbIdPair pa(a, AcDbObjectId::kNull, false), pb(b, AcDbObjectId::kNull, false), pext(extId, {}, false);
  ASSERT_TRUE(map.compute(pa));
  ASSERT_TRUE(map.compute(pb));
  ASSERT_TRUE(map.compute(pext));
  EXPECT_TRUE(pa.isCloned() && pa.isPrimary());
  EXPECT_TRUE(pext.isCloned());
  EXPECT_FALSE(pext.isPrimary());
  EXPECT_EQ(map.size(), 4u);

  TestEntity* clone = nullptr;
  ASSERT_EQ(acdbOpenObject(clone, pa.value(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(clone->value(), 1);
  EXPECT_EQ(clone->ownerId(), db->currentSpaceId());
  EXPECT_EQ(clone->extensionDictionary(), pext.value());
  resbuf* xd = clone->xData(L"TERRADON");
  ASSERT_NE(xd, nullptr);
  ACHAR handleClone[17];
  pb.value().handle().getIntoAsciiBuffer(handleClone);
  EXPECT_STREQ(xd->rbnext->rbnext->resval.rstring, handleClone) << "1005 handle follows the clone";
  acutRelRb(xd);
  clone->close();

  ASSERT_EQ(acdbOpenObject(ext, pext.value(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ext->ownerId(), pa.value());
  AcDbXrecord* recClone = nullptr;
  AcDbObject* got = nullptr;
  ASSERT_EQ(ext->getAt(L"LINK", got, AcDb::kForRead), Acad::eOk);
  ext->close();
  recClone = AcDbXrecord::cast(got);
  ASSERT_NE(recClone, nullptr);
  EXPECT_NE(recClone->objectId(), recId);
  resbuf* chain = nullptr;
  recClone->rbChain(&chain);
  AcDbObjectId linked;
  acdbGetObjectId(linked, chain->rbnext->resval.rlname);
  EXPECT_EQ(linked, pb.value()) << "object reference translated to the clone";
  acutRelRb(chain);
  recClone->close();
}

TEST_F(DeepClone, RefusesBadInput) {
  AcDbObjectId a = addEntity();
  AcDbIdMapping map;
  EXPECT_EQ(db->deepCloneObjects(AcDbObjectIdArray{a}, AcDbObjectId::kNull, map), Acad::eInvalidOwnerObject);
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, a, AcDb::kForWrite), Acad::eOk);
  obj->erase();
  obj->close();
  EXPECT_EQ(db->deepCloneObjects(AcDbObjectIdArray{a}, db->currentSpaceId(), map), Acad::eWasErased);
}
