// The default drawing, symbol tables and records, header variables, the working database.
#include "host_fixture.h"

#include <tuple>

using Database = HostTest;

TEST_F(Database, DefaultDrawingHoldsTheStandardRecords) {
  struct Case { AcDbObjectId table; const wchar_t* name; };
  const Case cases[] = {
      {db->layerTableId(), L"0"},          {db->linetypeTableId(), L"ByBlock"},
      {db->linetypeTableId(), L"ByLayer"}, {db->linetypeTableId(), L"Continuous"},
      {db->textStyleTableId(), L"Standard"}, {db->regAppTableId(), L"ACAD"},
      {db->blockTableId(), L"*Model_Space"}, {db->blockTableId(), L"*Paper_Space"},
      {db->dimStyleTableId(), L"Standard"}, {db->viewportTableId(), L"*Active"},
  };
  ASSERT_EQ(std::size(cases), 10u);
  for (const Case& c : cases) {
    AcDbSymbolTable* table = nullptr;
    ASSERT_EQ(acdbOpenObject(table, c.table, AcDb::kForRead), Acad::eOk);
    EXPECT_TRUE(table->has(c.name)) << c.name;
    table->close();
  }
  AcDbDictionary* nod = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(nod), Acad::eOk);
  AcDbObjectId groups;
  EXPECT_EQ(nod->getAt(L"ACAD_GROUP", groups), Acad::eOk);
  EXPECT_EQ(groups, db->groupDictionaryId());
  nod->close();

  AcDbLayerTableRecord* layer0 = nullptr;
  ASSERT_EQ(acdbOpenObject(layer0, db->clayer(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(layer0->color().colorIndex(), 7);
  EXPECT_EQ(layer0->linetypeObjectId(), db->continuousLinetype());
  layer0->close();
}

TEST_F(Database, WorkingDatabaseAndActiveList) {
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), db.get());
  EXPECT_TRUE(acdbActiveDatabaseArray().contains(db.get()));
  {
    AcDbDatabase side(true, true);
    EXPECT_TRUE(acdbActiveDatabaseArray().contains(&side));
    acdbHostApplicationServices()->setWorkingDatabase(&side);
  }
  EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
  acdbHostApplicationServices()->setWorkingDatabase(db.get());
}

TEST_F(Database, TableLookupIgnoresCaseAndRefusesBadOrDuplicateNames) {
  AcDbLayerTable* layers = nullptr;
  ASSERT_EQ(db->getLayerTable(layers, AcDb::kForWrite), Acad::eOk);
  auto* rec = new AcDbLayerTableRecord;
  EXPECT_EQ(rec->setName(L"bad<name"), Acad::eInvalidInput);
  EXPECT_EQ(rec->setName(L""), Acad::eInvalidInput);
  ASSERT_EQ(rec->setName(L"Contours"), Acad::eOk);
  AcDbObjectId id;
  ASSERT_EQ(layers->add(id, rec), Acad::eOk);
  rec->close();
  auto* dup = new AcDbLayerTableRecord;
  dup->setName(L"CONTOURS");
  EXPECT_EQ(layers->add(dup), Acad::eDuplicateRecordName);
  delete dup;
  auto* unnamed = new AcDbLayerTableRecord;
  EXPECT_EQ(layers->add(unnamed), Acad::eInvalidInput) << "unnamed record";
  delete unnamed;
  layers->close();

  ASSERT_EQ(db->getLayerTable(layers), Acad::eOk);
  AcDbObjectId found;
  EXPECT_EQ(layers->getIdAt(L"contours", found), Acad::eOk);
  EXPECT_EQ(found, id);
  EXPECT_TRUE(layers->has(id));
  EXPECT_EQ(layers->getAt(L"missing", found), Acad::eKeyNotFound);
  AcDbLayerTableRecord* open = nullptr;
  ASSERT_EQ(layers->getAt(L"Contours", open, AcDb::kForWrite), Acad::eOk);
  layers->close();
  EXPECT_EQ(open->setName(L"0"), Acad::eDuplicateRecordName);
  EXPECT_EQ(open->setName(L"Terrain"), Acad::eOk);
  open->setIsOff(true);
  open->setIsLocked(true);
  EXPECT_EQ(open->setIsFrozen(true), Acad::eOk);
  open->close();
  ASSERT_EQ(db->getLayerTable(layers), Acad::eOk);
  EXPECT_FALSE(layers->has(L"Contours"));
  ASSERT_EQ(layers->getAt(L"terrain", open, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(open->isOff() && open->isLocked() && open->isFrozen());
  open->close();
  layers->close();
}

TEST_F(Database, IteratorsWalkInOrderAndSkipErased) {
  AcDbLinetypeTable* table = nullptr;
  ASSERT_EQ(db->getLinetypeTable(table), Acad::eOk);
  AcDbLinetypeTableIterator* it = nullptr;
  ASSERT_EQ(table->newIterator(it), Acad::eOk);
  table->close();
  std::vector<std::wstring> names;
  for (; !it->done(); it->step()) {
    AcDbLinetypeTableRecord* rec = nullptr;
    ASSERT_EQ(it->getRecord(rec), Acad::eOk);
    const ACHAR* n = nullptr;
    rec->getName(n);
    names.emplace_back(n);
    rec->close();
  }
  delete it;
  EXPECT_EQ(names, (std::vector<std::wstring>{L"ByBlock", L"ByLayer", L"Continuous"}));

  AcDbObjectId a = addEntity(1), b = addEntity(2), c = addEntity(3);
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, b, AcDb::kForWrite), Acad::eOk);
  obj->erase();
  obj->close();
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db->currentSpaceId(), AcDb::kForRead), Acad::eOk);
  AcDbBlockTableRecordIterator* eit = nullptr;
  space->newIterator(eit);
  space->close();
  AcDbObjectIdArray seen;
  for (; !eit->done(); eit->step()) {
    AcDbObjectId id;
    eit->getEntityId(id);
    seen.append(id);
  }
  EXPECT_EQ(seen, (AcDbObjectIdArray{a, c}));
  EXPECT_EQ(eit->seek(b), Acad::eOk);
  AcDbEntity* ent = nullptr;
  EXPECT_EQ(eit->getEntity(ent), Acad::eWasErased);
  delete eit;
}

TEST_F(Database, RecordsAndTablesRefuseBadValues) {
  auto* style = new AcDbTextStyleTableRecord;
  EXPECT_EQ(style->setXScale(0.0), Acad::eInvalidInput);
  EXPECT_EQ(style->setFont(L"Gulim", true, false, 129, 34), Acad::eOk);
  ACHAR* face = nullptr;
  bool bold = false, italic = true;
  int charset = 0, pitch = 0;
  style->font(face, bold, italic, charset, pitch);
  EXPECT_STREQ(face, L"Gulim");
  EXPECT_EQ(std::tie(bold, italic, charset, pitch), std::make_tuple(true, false, 129, 34));
  acutDelString(face);
  EXPECT_EQ(face, nullptr);
  delete style;

  AcDbViewTable* views = nullptr;
  ASSERT_EQ(db->getViewTable(views, AcDb::kForWrite), Acad::eOk);
  auto* wrong = new AcDbLayerTableRecord;
  wrong->setName(L"Plan2");
  EXPECT_EQ(views->add(wrong), Acad::eInvalidInput) << "a layer in the view table";
  delete wrong;
  views->close();
}

TEST_F(Database, HeaderVariables) {
  EXPECT_EQ(db->setTextsize(-1), Acad::eInvalidInput);
  EXPECT_EQ(db->setClayer(db->textstyle()), Acad::eInvalidInput);
  EXPECT_EQ(db->setUcs({1, 2, 3}, {0, 1, 0}, {-2, 0, 0}), Acad::eOk);
  EXPECT_EQ(db->ucsorg(), AcGePoint3d(1, 2, 3));
  EXPECT_EQ(db->ucsydir(), AcGeVector3d(-1, 0, 0));
  EXPECT_EQ(db->setUcs({0, 0, 0}, {1, 0, 0}, {1, 1, 0}), Acad::eInvalidInput);
}

TEST_F(Database, EntitiesTakeLayersOfTheirDatabase) {
  auto* ent = new TestEntity;
  EXPECT_EQ(ent->setLayer(L"nope"), Acad::eKeyNotFound);
  EXPECT_EQ(ent->setLayer(L"0"), Acad::eOk);
  EXPECT_EQ(ent->setColorIndex(257), Acad::eOutOfRange);
  EXPECT_EQ(ent->setColorIndex(1), Acad::eOk);
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db->currentSpaceId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(space->appendAcDbEntity(ent), Acad::eNotOpenForWrite);
  EXPECT_EQ(takeMisuse(tdhost::Misuse::kWriteNotEnabled), 1u);
  ASSERT_EQ(space->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(space->appendAcDbEntity(ent), Acad::eOk);
  EXPECT_EQ(space->appendAcDbEntity(ent), Acad::eAlreadyInDb);
  EXPECT_EQ(ent->blockId(), db->currentSpaceId());
  ent->close();
  space->close();
}
