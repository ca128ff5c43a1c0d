// Runtime classes, status codes, handles and ids, and the open/close rules with their checks.
#include <cwchar>

#include "host_fixture.h"

TEST(ErrorStatus, TextNamesTheStatus) {
  EXPECT_STREQ(acadErrorStatusText(Acad::eOk), L"eOk");
  EXPECT_STREQ(acadErrorStatusText(Acad::eWasOpenForWrite), L"eWasOpenForWrite");
  EXPECT_STREQ(acadErrorStatusText(Acad::eOutOfRange), L"eOutOfRange");
}

TEST(RuntimeClass, DerivationAndCast) {
  auto* xrec = new AcDbXrecord;
  EXPECT_TRUE(xrec->isKindOf(AcRxObject::desc()));
  EXPECT_FALSE(xrec->isKindOf(AcDbEntity::desc()));
  EXPECT_FALSE(AcDbSymbolTableRecord::desc()->isDerivedFrom(AcDbLayerTableRecord::desc()));
  EXPECT_EQ(AcDbXrecord::cast(xrec), xrec);
  EXPECT_EQ(AcDbEntity::cast(xrec), nullptr);
  EXPECT_EQ(AcDbEntity::cast(nullptr), nullptr);
  std::unique_ptr<AcRxObject> made(AcDbXrecord::desc()->create());
  EXPECT_NE(AcDbXrecord::cast(made.get()), nullptr);
  EXPECT_EQ(AcDbObject::desc()->create(), nullptr);
  delete xrec;  // never added: the maker deletes it
}

TEST(Handle, HexTextBothWays) {
  AcDbHandle h(L"1f");
  EXPECT_EQ(static_cast<Adesk::UInt64>(h), 0x1Fu);
  ACHAR buf[17];
  ASSERT_TRUE(h.getIntoAsciiBuffer(buf, 17));
  EXPECT_STREQ(buf, L"1F");
  AcDbHandle big(0xFEDCBA9876543210ull);
  ASSERT_TRUE(big.getIntoAsciiBuffer(buf));
  EXPECT_STREQ(buf, L"FEDCBA9876543210");
  EXPECT_FALSE(big.getIntoAsciiBuffer(buf, 8));
  EXPECT_TRUE(AcDbHandle(L"xyz").isNull());
  EXPECT_TRUE(AcDbHandle(L"").isNull());
  EXPECT_TRUE(AcDbHandle(L"11112222333344445").isNull());
  AcDbHandle n(0xFFFFFFFFu);
  n.increment();
  EXPECT_EQ(n, AcDbHandle(0, 1)) << "carries into the high word";
  unsigned char old[8];
  big.copyToOldType(old);
  EXPECT_EQ(old[0], 0xFE);
  AcDbHandle back;
  back.copyFromOldType(old);
  EXPECT_EQ(back, big);
}

using ObjectLifecycle = HostTest;

TEST_F(ObjectLifecycle, AddedObjectHasIdentityAndHandleLookup) {
  auto* xrec = new AcDbXrecord;
  AcDbObjectId id;
  ASSERT_EQ(db->addAcDbObject(id, xrec), Acad::eOk);
  EXPECT_EQ(db->addAcDbObject(xrec), Acad::eAlreadyInDb);
  EXPECT_EQ(xrec->objectId(), id);
  EXPECT_TRUE(xrec->isWriteEnabled()) << "a new object stays open for write";
  EXPECT_EQ(xrec->close(), Acad::eOk);
  EXPECT_EQ(id.database(), db.get());
  EXPECT_EQ(id.objectClass(), AcDbXrecord::desc());

  AcDbObjectId found;
  EXPECT_EQ(db->getAcDbObjectId(found, false, id.handle()), Acad::eOk);
  EXPECT_EQ(found, id);
  EXPECT_EQ(db->getAcDbObjectId(found, false, AcDbHandle(L"FFFFFF")), Acad::eUnknownHandle);
  EXPECT_TRUE(found.isNull());
  EXPECT_EQ(db->getAcDbObjectId(found, true, AcDbHandle(L"FFFFFF")), Acad::eOk);
  EXPECT_FALSE(found.isNull());
  AcDbObject* none = nullptr;
  EXPECT_EQ(acdbOpenObject(none, found, AcDb::kForRead), Acad::ePermanentlyErased);
  EXPECT_GT(static_cast<Adesk::UInt64>(db->handseed()), 0xFFFFFFu);

  ads_name name;
  EXPECT_EQ(acdbGetAdsName(name, id), Acad::eOk);
  AcDbObjectId fromName;
  EXPECT_EQ(acdbGetObjectId(fromName, name), Acad::eOk);
  EXPECT_EQ(fromName, id);
}

TEST_F(ObjectLifecycle, ReadersAndWriterFollowTheHostRules) {
  AcDbObjectId id = addEntity();
  AcDbObject *r1 = nullptr, *r2 = nullptr, *w = nullptr;
  ASSERT_EQ(acdbOpenObject(r1, id, AcDb::kForRead), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(r2, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(r1, r2);
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eWasOpenForRead);
  EXPECT_EQ(w, nullptr);
  EXPECT_EQ(r1->upgradeOpen(), Acad::eHadMultipleReaders);
  EXPECT_EQ(r2->close(), Acad::eOk);
  EXPECT_EQ(r1->upgradeOpen(), Acad::eOk);
  EXPECT_TRUE(r1->isWriteEnabled());
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForRead), Acad::eWasOpenForWrite);
  EXPECT_EQ(acdbOpenObject(w, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
  EXPECT_EQ(r1->upgradeOpen(), Acad::eWasOpenForWrite);
  EXPECT_EQ(r1->downgradeOpen(), Acad::eOk);
  EXPECT_TRUE(r1->isReadEnabled());
  EXPECT_FALSE(r1->isWriteEnabled());
  EXPECT_EQ(tdhost::openObjects(db.get()).length(), 1);
  EXPECT_EQ(r1->close(), Acad::eOk);
  EXPECT_EQ(tdhost::openObjects(db.get()).length(), 0);
}

TEST_F(ObjectLifecycle, ReaderLimitIs256) {
  AcDbObjectId id = addEntity();
  AcDbObject* obj = nullptr;
  for (int i = 0; i < 256; ++i) ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk) << i;
  AcDbObject* extra = nullptr;
  EXPECT_EQ(acdbOpenObject(extra, id, AcDb::kForRead), Acad::eAtMaxReaders);
  for (int i = 0; i < 256; ++i) EXPECT_EQ(obj->close(), Acad::eOk);
}

TEST_F(ObjectLifecycle, FailingOpensReportTheirStatus) {
  AcDbObject* obj = nullptr;
  EXPECT_EQ(acdbOpenObject(obj, AcDbObjectId::kNull, AcDb::kForRead), Acad::eNullObjectId);

  AcDbObjectId entId = addEntity();
  AcDbDictionary* dict = nullptr;
  EXPECT_EQ(acdbOpenObject(dict, entId, AcDb::kForRead), Acad::eNotThatKindOfClass);
  EXPECT_EQ(dict, nullptr);
  AcDbEntity* ent = nullptr;
  EXPECT_EQ(acdbOpenAcDbEntity(ent, db->namedObjectsDictionaryId(), AcDb::kForRead), Acad::eNotAnEntity);
  ASSERT_EQ(acdbOpenAcDbEntity(ent, entId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(ent->erase(), Acad::eOk);
  EXPECT_EQ(ent->erase(), Acad::eWasErased);
  ent->close();
  EXPECT_TRUE(entId.isErased());
  EXPECT_EQ(acdbOpenObject(obj, entId, AcDb::kForRead), Acad::eWasErased);
  ASSERT_EQ(acdbOpenObject(obj, entId, AcDb::kForWrite, true), Acad::eOk);
  EXPECT_TRUE(obj->isErased());
  EXPECT_EQ(obj->erase(false), Acad::eOk);
  EXPECT_EQ(obj->erase(false), Acad::eWasNotErased);
  obj->close();
  EXPECT_FALSE(entId.isErased());
}

TEST_F(ObjectLifecycle, MisuseIsCaughtAndReported) {
  AcDbObjectId id = addEntity(1.0);
  TestEntity* ent = nullptr;
  ASSERT_EQ(acdbOpenObject(ent, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(ent->setValue(2.0), Acad::eNotOpenForWrite);
  EXPECT_EQ(ent->setColorIndex(3), Acad::eNotOpenForWrite);
  EXPECT_EQ(ent->value(), 1.0);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 2u);
  EXPECT_EQ(ent->close(), Acad::eOk);
  EXPECT_EQ(ent->close(), Acad::eNotOpenForRead);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kDoubleClose), 1u);

  // Modifying an erased object opened with openErased.
  ASSERT_EQ(acdbOpenObject(ent, id, AcDb::kForWrite), Acad::eOk);
  ent->erase();
  EXPECT_EQ(ent->setValue(5.0), Acad::eWasErased);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kUseAfterErase), 1u);
  ent->close();

  auto* loose = new AcDbXrecord;
  EXPECT_EQ(loose->close(), Acad::eNotInDatabase);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kCloseNotResident), 1u);
  delete loose;
}

TEST_F(ObjectLifecycle, LeftOpenObjectsAreListedAndReportedAtDatabaseEnd) {
  AcDbObjectId id = addEntity();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
  AcDbObjectIdArray open = tdhost::openObjects(db.get());
  ASSERT_EQ(open.length(), 1);
  EXPECT_EQ(open[0], id);
  {
    AcDbDatabase side(true, true);
    AcDbDictionary* nod = nullptr;
    ASSERT_EQ(side.getNamedObjectsDictionary(nod), Acad::eOk);
  }  // destroyed with the dictionary open
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kObjectLeftOpen), 1u);
  obj->close();
}
