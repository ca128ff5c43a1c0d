// AcDbDictionary: owned entries by case-insensitive name, in insertion order.
#include <cwctype>

#include "acutads.h"
#include "database_impl.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbidmap.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbDictionary)

namespace {

bool sameKey(const std::wstring& a, const ACHAR* b) {
  size_t i = 0;
  for (; i < a.size() && b[i]; ++i)
    if (std::towupper(static_cast<wint_t>(a[i])) != std::towupper(static_cast<wint_t>(b[i]))) return false;
  return i == a.size() && b[i] == 0;
}

// The removed object keeps living in the database, without an owner.
void disown(AcDbObjectId id) {
  if (AcDbObject* obj = tdhost::touch(id)) tdhost::ObjectAccess::setOwner(*obj, AcDbObjectId::kNull);
}

}  // namespace

AcDbDictionary::~AcDbDictionary() = default;

std::vector<AcDbDictionary::Entry>::const_iterator AcDbDictionary::findKey(const ACHAR* key) const {
  if (key == nullptr) return mOrder.end();
  for (auto it = mOrder.begin(); it != mOrder.end(); ++it)
    if (sameKey(it->name, key)) return it;
  return mOrder.end();
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObjectId& entryId) const {
  entryId.setNull();
  if (Acad::ErrorStatus es = checkRead("getAt"); es != Acad::eOk) return es;
  auto it = findKey(entryName);
  if (it == mOrder.end()) return Acad::eKeyNotFound;
  entryId = it->id;
  return it->id.isErased() ? Acad::eWasErased : Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* entryName, AcDbObject*& entryObj, AcDb::OpenMode mode) const {
  entryObj = nullptr;
  AcDbObjectId id;
  if (Acad::ErrorStatus es = getAt(entryName, id); es != Acad::eOk) return es;
  return acdbOpenObject(entryObj, id, mode);
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId objId, ACHAR*& name) const {
  name = nullptr;
  for (const Entry& e : mOrder)
    if (e.id == objId) {
      name = acutNewString(e.name.c_str());
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

bool AcDbDictionary::has(const ACHAR* entryName) const { return findKey(entryName) != mOrder.end(); }

bool AcDbDictionary::has(AcDbObjectId objId) const {
  for (const Entry& e : mOrder)
    if (e.id == objId) return true;
  return false;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId) {
  retObjId.setNull();
  if (Acad::ErrorStatus es = checkWrite("setAt"); es != Acad::eOk) return es;
  if (srchKey == nullptr || *srchKey == 0) return Acad::eInvalidKey;
  if (newValue == nullptr) return Acad::eNullObjectPointer;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  AcDbObjectId id = newValue->objectId();
  if (id.isNull()) {
    tdhost::ObjectAccess::setOwner(*newValue, objectId());
    id = AcDbObjectId(db->impl().adopt(std::unique_ptr<AcDbObject>(newValue)));
  } else {
    if (id.database() != db) return Acad::eWrongDatabase;
    if (AcDbObject* o = tdhost::touch(id)) tdhost::ObjectAccess::setOwner(*o, objectId());
  }
  if (auto* group = AcDbGroup::cast(newValue)) group->setNameFromDictionary(srchKey);
  auto it = findKey(srchKey);
  if (it != mOrder.end()) {
    Entry& e = mOrder[static_cast<size_t>(it - mOrder.begin())];
    if (e.id != id) {
      AcDbObject* old = nullptr;
      if (acdbOpenObject(old, e.id, AcDb::kForWrite) == Acad::eOk) {
        old->erase(true);
        old->close();
      }
      e.id = id;
    }
  } else {
    mOrder.push_back({srchKey, id});
  }
  retObjId = id;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
  AcDbObjectId id;
  return remove(key, id);
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key, AcDbObjectId& returnId) {
  returnId.setNull();
  if (Acad::ErrorStatus es = checkWrite("remove"); es != Acad::eOk) return es;
  auto it = findKey(key);
  if (it == mOrder.end()) return Acad::eKeyNotFound;
  returnId = it->id;
  mOrder.erase(it);
  disown(returnId);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(AcDbObjectId objId) {
  if (Acad::ErrorStatus es = checkWrite("remove"); es != Acad::eOk) return es;
  for (auto it = mOrder.begin(); it != mOrder.end(); ++it)
    if (it->id == objId) {
      mOrder.erase(it);
      disown(objId);
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbDictionary::setName(const ACHAR* oldName, const ACHAR* newName) {
  if (Acad::ErrorStatus es = checkWrite("setName"); es != Acad::eOk) return es;
  if (newName == nullptr || *newName == 0) return Acad::eInvalidKey;
  auto it = findKey(oldName);
  if (it == mOrder.end()) return Acad::eKeyNotFound;
  auto clash = findKey(newName);
  if (clash != mOrder.end() && clash != it) return Acad::eDuplicateKey;
  Entry& e = mOrder[static_cast<size_t>(it - mOrder.begin())];
  e.name = newName;
  if (auto* group = AcDbGroup::cast(tdhost::touch(e.id))) group->setNameFromDictionary(newName);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::renameEntry(AcDbObjectId id, const ACHAR* newName) {
  auto clash = findKey(newName);
  if (clash != mOrder.end() && clash->id != id) return Acad::eDuplicateKey;
  for (Entry& e : mOrder)
    if (e.id == id) {
      e.name = newName;
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const { return new AcDbDictionaryIterator(mOrder); }

void AcDbDictionary::subOwnedIds(AcDbObjectIdArray& ids) const {
  AcDbObject::subOwnedIds(ids);
  for (const Entry& e : mOrder) ids.append(e.id);
}

void AcDbDictionary::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbObject::subTranslateIds(idMap);
  for (Entry& e : mOrder) {
    AcDbIdPair pair(e.id, AcDbObjectId::kNull, false);
    if (idMap.compute(pair) && !pair.value().isNull()) e.id = pair.value();
  }
}

AcDbDictionaryIterator::~AcDbDictionaryIterator() = default;

const ACHAR* AcDbDictionaryIterator::name() const { return done() ? nullptr : mEntries[mPos].name.c_str(); }

AcDbObjectId AcDbDictionaryIterator::objectId() const { return done() ? AcDbObjectId() : mEntries[mPos].id; }

Acad::ErrorStatus AcDbDictionaryIterator::getObject(AcDbObject*& obj, AcDb::OpenMode mode) {
  obj = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenObject(obj, mEntries[mPos].id, mode);
}

bool AcDbDictionaryIterator::next() {
  if (!done()) ++mPos;
  return !done();
}

bool AcDbDictionaryIterator::setPosition(AcDbObjectId objId) {
  for (size_t i = 0; i < mEntries.size(); ++i)
    if (mEntries[i].id == objId) {
      mPos = i;
      return true;
    }
  return false;
}
