// AcDbDatabase::deepCloneObjects: copies objects with everything they own, then translates
// the references inside the copied set.
#include "database_impl.h"
#include "dbdict.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "object_access.h"

namespace {

using tdhost::ObjectAccess;

// Clones what `source` owns under `cloneOwner`, recursively; the clones stay closed.
Acad::ErrorStatus cloneOwned(tdhost::DatabaseImpl& db, const AcDbObject& source, AcDbObjectId cloneOwner,
                             AcDbIdMapping& idMap) {
  AcDbObjectIdArray owned;
  source.subOwnedIds(owned);
  for (const AcDbObjectId& id : owned) {
    AcDbObject* child = tdhost::peek(id);
    if (child == nullptr || child->isErased()) continue;
    AcDbIdPair seen(id, AcDbObjectId::kNull, false);
    if (idMap.compute(seen)) continue;
    std::unique_ptr<AcDbObject> copy(static_cast<AcDbObject*>(child->clone()));
    if (!copy) return Acad::eNotApplicable;
    ObjectAccess::setOwner(*copy, cloneOwner);
    AcDbStub* stub = db.adopt(std::move(copy));
    stub->object->close();
    idMap.assign(AcDbIdPair(id, AcDbObjectId(stub), true, false, true));
    if (Acad::ErrorStatus es = cloneOwned(db, *child, AcDbObjectId(stub), idMap); es != Acad::eOk) return es;
  }
  return Acad::eOk;
}

// Puts a primary clone under its new owner; leaves it closed.
Acad::ErrorStatus attach(AcDbDatabase& db, AcDbObject* clone, const AcDbObject& source, AcDbObjectId owner,
                         AcDbObjectId& cloneId) {
  AcDbObject* ownerObj = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(ownerObj, owner, AcDb::kForWrite);
  if (es != Acad::eOk) {
    delete clone;
    return es;
  }
  if (auto* block = AcDbBlockTableRecord::cast(ownerObj); block != nullptr && AcDbEntity::cast(clone)) {
    es = block->appendAcDbEntity(cloneId, AcDbEntity::cast(clone));
  } else if (auto* dict = AcDbDictionary::cast(ownerObj)) {
    ACHAR* key = nullptr;
    auto* sourceDict = AcDbDictionary::cast(tdhost::peek(source.ownerId()));
    if (sourceDict == nullptr || sourceDict->nameAt(source.objectId(), key) != Acad::eOk) {
      es = Acad::eInvalidOwnerObject;
    } else {
      es = dict->has(key) ? Acad::eDuplicateKey : dict->setAt(key, clone, cloneId);
      delete[] key;
    }
  } else {
    es = db.addAcDbObject(cloneId, clone);
    if (es == Acad::eOk) ObjectAccess::setOwner(*clone, owner);
  }
  ownerObj->close();
  if (es != Acad::eOk) {
    delete clone;
    return es;
  }
  clone->close();
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& objectIds, const AcDbObjectId& owner,
                                                 AcDbIdMapping& idMap, bool deferXlation) {
  if (owner.isNull() || owner.database() != this || tdhost::peek(owner) == nullptr) return Acad::eInvalidOwnerObject;
  idMap.setOrigDb(this);
  idMap.setDestDb(this);
  idMap.setDeepCloneContext(AcDb::kDcCopy);
  for (const AcDbObjectId& id : objectIds) {
    AcDbObject* source = tdhost::peek(id);
    if (source == nullptr || id.database() != this) return Acad::eWrongDatabase;
    if (source->isErased()) return Acad::eWasErased;
    AcDbIdPair seen(id, AcDbObjectId::kNull, false);
    if (idMap.compute(seen)) continue;
    auto* copy = static_cast<AcDbObject*>(source->clone());
    if (copy == nullptr) return Acad::eNotApplicable;
    ObjectAccess::setOwner(*copy, AcDbObjectId::kNull);
    ObjectAccess::setExtDict(*copy, source->extensionDictionary());
    AcDbObjectId cloneId;
    if (Acad::ErrorStatus es = attach(*this, copy, *source, owner, cloneId); es != Acad::eOk) return es;
    idMap.assign(AcDbIdPair(id, cloneId, true, true, true));
    if (Acad::ErrorStatus es = cloneOwned(*mImpl, *source, cloneId, idMap); es != Acad::eOk) return es;
  }
  if (deferXlation) return Acad::eOk;
  AcDbIdMappingIter it(idMap);
  for (it.start(); !it.done(); it.next()) {
    AcDbIdPair pair;
    if (!it.getMap(pair) || !pair.isCloned()) continue;
    if (AcDbObject* clone = tdhost::touch(pair.value())) clone->subTranslateIds(idMap);
  }
  return Acad::eOk;
}
