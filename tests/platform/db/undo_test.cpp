// Undo records: creations, erasures and modifications rolled back to marks and groups.
#include "host_fixture.h"
#include "tdhost/undo.h"

using Undo = HostTest;

namespace {

double valueOf(AcDbObjectId id) {
  TestEntity* ent = nullptr;
  if (acdbOpenObject(ent, id, AcDb::kForRead, true) != Acad::eOk) return -1;
  double v = ent->value();
  ent->close();
  return v;
}

void setValue(AcDbObjectId id, double v) {
  TestEntity* ent = nullptr;
  ASSERT_EQ(acdbOpenObject(ent, id, AcDb::kForWrite), Acad::eOk);
  ent->setValue(v);
  ent->close();
}

}  // namespace

TEST_F(Undo, BackToMarkRestoresCreationErasureAndModification) {
  tdhost::UndoController& undo = tdhost::undoController(*db);
  AcDbObjectId kept = addEntity(1);
  AcDbObjectId doomed = addEntity(2);
  undo.mark();

  undo.beginGroup();
  AcDbObjectId created = addEntity(3);
  setValue(kept, 10);
  setValue(kept, 11);  // second write in the same group keeps the first snapshot
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, doomed, AcDb::kForWrite), Acad::eOk);
  obj->erase();
  obj->close();
  undo.endGroup();
  undo.beginGroup();
  setValue(kept, 12);
  undo.endGroup();

  EXPECT_EQ(undo.groupCount(), 3u);
  EXPECT_EQ(undo.markCount(), 1u);
  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  EXPECT_EQ(valueOf(kept), 1);
  EXPECT_FALSE(doomed.isErased());
  EXPECT_TRUE(created.isErased());
  EXPECT_EQ(undo.markCount(), 0u);

  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db->currentSpaceId(), AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(space->entityIds().size(), 2u) << "the append to model space is undone too";
  space->close();
}

TEST_F(Undo, UndoGroupsOneAtATimeAndRefusesWhileOpen) {
  tdhost::UndoController& undo = tdhost::undoController(*db);
  AcDbObjectId id = addEntity(1);
  undo.beginGroup();
  setValue(id, 2);
  undo.endGroup();
  undo.beginGroup();
  setValue(id, 3);
  undo.endGroup();
  TestEntity* ent = nullptr;
  ASSERT_EQ(acdbOpenObject(ent, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(undo.undoGroups(1), Acad::eWasOpenForRead);
  ent->close();
  EXPECT_EQ(undo.undoGroups(1), Acad::eOk);
  EXPECT_EQ(valueOf(id), 2);
  EXPECT_EQ(undo.undoGroups(1), Acad::eOk);
  EXPECT_EQ(valueOf(id), 1);
}

TEST_F(Undo, ExtendedDataAndDictionaryChangesRollBack) {
  tdhost::UndoController& undo = tdhost::undoController(*db);
  ASSERT_EQ(acdbRegApp(L"TERRADON"), RTNORM);
  AcDbObjectId id = addEntity();
  undo.mark();

  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForWrite), Acad::eOk);
  resbuf* rb = acutBuildList(1001, L"TERRADON", 1000, L"SOURCE=5", 0);
  ASSERT_EQ(obj->setXData(rb), Acad::eOk);
  acutRelRb(rb);
  ASSERT_EQ(obj->createExtensionDictionary(), Acad::eOk);
  AcDbObjectId extId = obj->extensionDictionary();
  obj->close();
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* group = new AcDbGroup(L"", true);
  AcDbObjectId groupId;
  ASSERT_EQ(groups->setAt(L"G1", group, groupId), Acad::eOk);
  group->close();
  groups->close();

  ASSERT_EQ(undo.undoToMark(), Acad::eOk);
  ASSERT_EQ(acdbOpenObject(obj, id, AcDb::kForRead), Acad::eOk);
  EXPECT_EQ(obj->xData(L"TERRADON"), nullptr);
  EXPECT_TRUE(obj->extensionDictionary().isNull());
  obj->close();
  EXPECT_TRUE(extId.isErased());
  EXPECT_TRUE(groupId.isErased());
  ASSERT_EQ(db->getGroupDictionary(groups), Acad::eOk);
  EXPECT_FALSE(groups->has(L"G1"));
  groups->close();
}

TEST_F(Undo, RecordingOffForgetsHistory) {
  tdhost::UndoController& undo = tdhost::undoController(*db);
  addEntity();
  EXPECT_GT(undo.groupCount(), 0u);
  undo.setRecording(false);
  EXPECT_EQ(undo.groupCount(), 0u);
  addEntity();
  EXPECT_EQ(undo.groupCount(), 0u);
  undo.setRecording(true);
}
