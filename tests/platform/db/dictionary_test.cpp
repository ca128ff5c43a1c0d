// Dictionaries, xrecords, extension dictionaries and groups.
#include "host_fixture.h"

using Dictionaries = HostTest;

namespace {

AcDbObjectId addXrecord(AcDbDictionary* dict, const ACHAR* key, int value) {
  auto* rec = new AcDbXrecord;
  resbuf* rb = acutBuildList(70, value, 1, L"text", 0);
  EXPECT_EQ(rec->setFromRbChain(*rb), Acad::eOk);
  acutRelRb(rb);
  AcDbObjectId id;
  EXPECT_EQ(dict->setAt(key, rec, id), Acad::eOk);
  rec->close();
  return id;
}

}  // namespace

TEST_F(Dictionaries, SetGetRemoveAndIterate) {
  AcDbDictionary* nod = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(nod, AcDb::kForWrite), Acad::eOk);
  auto* dict = new AcDbDictionary;
  AcDbObjectId dictId;
  ASSERT_EQ(nod->setAt(L"SURVEY", dict, dictId), Acad::eOk);
  nod->close();
  EXPECT_EQ(dict->ownerId(), db->namedObjectsDictionaryId());

  AcDbObjectId a = addXrecord(dict, L"A", 1);
  AcDbObjectId b = addXrecord(dict, L"B", 2);
  EXPECT_EQ(dict->numEntries(), 2u);
  AcDbObjectId id;
  EXPECT_EQ(dict->getAt(L"a", id), Acad::eOk);
  EXPECT_EQ(id, a);
  EXPECT_TRUE(dict->has(b));
  auto* unkeyed = new AcDbXrecord;
  EXPECT_EQ(dict->setAt(L"", unkeyed, id), Acad::eInvalidKey);
  delete unkeyed;
  AcDbObjectId b2 = addXrecord(dict, L"b", 3);  // replaces B and erases the old record
  EXPECT_TRUE(b.isErased());
  EXPECT_EQ(dict->numEntries(), 2u);

  AcDbDictionaryIterator* it = dict->newIterator();
  std::vector<std::wstring> keys;
  for (; !it->done(); it->next()) keys.emplace_back(it->name());
  delete it;
  EXPECT_EQ(keys, (std::vector<std::wstring>{L"A", L"B"}));

  AcDbObjectId removed;
  EXPECT_EQ(dict->remove(L"A", removed), Acad::eOk);
  EXPECT_EQ(removed, a);
  EXPECT_EQ(dict->remove(L"A"), Acad::eKeyNotFound);
  EXPECT_FALSE(a.isErased()) << "removal does not erase";
  EXPECT_EQ(dict->remove(b2), Acad::eOk);
  EXPECT_EQ(dict->numEntries(), 0u);
  dict->close();
  AcDbObject* rec = nullptr;
  ASSERT_EQ(acdbOpenObject(rec, a, AcDb::kForRead), Acad::eOk);
  EXPECT_TRUE(rec->ownerId().isNull());
  rec->close();
}

TEST_F(Dictionaries, XrecordCarriesAnyChain) {
  AcDbObjectId target = addEntity();
  ads_name name;
  acdbGetAdsName(name, target);
  ads_point p = {1, 2, 3};
  resbuf* rb = acutBuildList(1, L"hello", 10, p, 40, 2.5, 70, 7, 90, 123456, 330, name, 0);
  auto* rec = new AcDbXrecord;
  ASSERT_EQ(rec->setFromRbChain(*rb), Acad::eOk);
  acutRelRb(rb);
  resbuf* out = nullptr;
  ASSERT_EQ(rec->rbChain(&out), Acad::eOk);
  ASSERT_NE(out, nullptr);
  EXPECT_STREQ(out->resval.rstring, L"hello");
  EXPECT_EQ(out->rbnext->resval.rpoint[2], 3.0);
  EXPECT_EQ(out->rbnext->rbnext->resval.rreal, 2.5);
  EXPECT_EQ(out->rbnext->rbnext->rbnext->resval.rint, 7);
  EXPECT_EQ(out->rbnext->rbnext->rbnext->rbnext->resval.rlong, 123456);
  AcDbObjectId back;
  acdbGetObjectId(back, out->rbnext->rbnext->rbnext->rbnext->rbnext->resval.rlname);
  EXPECT_EQ(back, target);
  acutRelRb(out);
  resbuf* bad = acutBuildList(1000, L"xdata code", 0);
  EXPECT_EQ(rec->setFromRbChain(*bad), Acad::eInvalidInput);
  acutRelRb(bad);
  delete rec;
}

TEST_F(Dictionaries, ExtensionDictionaryLifecycle) {
  AcDbObjectId ent = addEntity();
  AcDbObject* obj = nullptr;
  ASSERT_EQ(acdbOpenObject(obj, ent, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(obj->createExtensionDictionary(), Acad::eOk);
  EXPECT_EQ(obj->createExtensionDictionary(), Acad::eAlreadyInDb);
  AcDbObjectId extId = obj->extensionDictionary();
  obj->close();
  ASSERT_FALSE(extId.isNull());

  AcDbDictionary* ext = nullptr;
  ASSERT_EQ(acdbOpenObject(ext, extId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(ext->ownerId(), ent);
  AcDbObjectId recId = addXrecord(ext, L"PNO", 5);
  ext->close();

  ASSERT_EQ(acdbOpenObject(obj, ent, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(obj->releaseExtensionDictionary(), Acad::eContainerNotEmpty);
  obj->close();
  ASSERT_EQ(acdbOpenObject(ext, extId, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(ext->remove(recId), Acad::eOk);
  ext->close();
  ASSERT_EQ(acdbOpenObject(obj, ent, AcDb::kForWrite), Acad::eOk);
  EXPECT_EQ(obj->releaseExtensionDictionary(), Acad::eOk);
  EXPECT_TRUE(obj->extensionDictionary().isNull());
  obj->close();
  EXPECT_TRUE(extId.isErased());

  auto* loose = new AcDbXrecord;
  EXPECT_EQ(loose->createExtensionDictionary(), Acad::eNoDatabase);
  delete loose;
}

TEST_F(Dictionaries, GroupsHoldOrderedEntityReferences) {
  AcDbObjectId e1 = addEntity(1), e2 = addEntity(2), e3 = addEntity(3);
  auto* group = new AcDbGroup(L"survey points", true);
  EXPECT_EQ(group->append(e2), Acad::eOk);
  EXPECT_EQ(group->prepend(e1), Acad::eOk);
  EXPECT_EQ(group->append(e2), Acad::eAlreadyInGroup);
  EXPECT_EQ(group->append(db->namedObjectsDictionaryId()), Acad::eNotAnEntity);
  EXPECT_EQ(group->append(AcDbObjectId::kNull), Acad::eNullObjectId);
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId groupId;
  ASSERT_EQ(groups->setAt(L"PTS", group, groupId), Acad::eOk);
  groups->close();
  ACHAR* name = nullptr;
  group->getName(name);
  EXPECT_STREQ(name, L"PTS");
  acutDelString(name);
  EXPECT_EQ(group->setName(L"POINTS"), Acad::eOk);
  EXPECT_EQ(group->append(e3), Acad::eOk);
  EXPECT_EQ(group->remove(e1), Acad::eOk);
  EXPECT_EQ(group->remove(e1), Acad::eNotInGroup);
  EXPECT_EQ(group->setSelectable(false), Acad::eOk);
  group->close();

  ASSERT_EQ(db->getGroupDictionary(groups), Acad::eOk);
  EXPECT_TRUE(groups->has(L"points"));
  EXPECT_FALSE(groups->has(L"PTS"));
  AcDbGroup* open = nullptr;
  AcDbObject* obj = nullptr;
  ASSERT_EQ(groups->getAt(L"POINTS", obj, AcDb::kForRead), Acad::eOk);
  groups->close();
  open = AcDbGroup::cast(obj);
  ASSERT_NE(open, nullptr);
  AcDbObjectIdArray ids;
  EXPECT_EQ(open->allEntityIds(ids), 2u);
  EXPECT_EQ(ids, (AcDbObjectIdArray{e2, e3}));
  EXPECT_FALSE(open->isSelectable());
  EXPECT_TRUE(open->has(e3));
  open->close();
}
