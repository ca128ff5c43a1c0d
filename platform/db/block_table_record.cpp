// AcDbBlockTableRecord: entity ownership and the entity iterator.
#include "database_impl.h"
#include "dbidmap.h"
#include "dbsymtb.h"
#include "object_access.h"

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  id.setNull();
  if (Acad::ErrorStatus es = checkWrite("appendAcDbEntity"); es != Acad::eOk) return es;
  if (entity == nullptr) return Acad::eNullEntityPointer;
  if (!entity->objectId().isNull()) return Acad::eAlreadyInDb;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNotInDatabase;
  // Traits the maker left unset come from the database; set ones are kept.
  if (entity->layerId().isNull()) entity->setLayer(db->clayer());
  if (entity->linetypeId().isNull() && !db->celtype().isNull()) entity->setLinetype(db->celtype());
  tdhost::ObjectAccess::setOwner(*entity, objectId());
  AcDbStub* stub = db->impl().adopt(std::unique_ptr<AcDbObject>(entity));
  mEntities.push_back(AcDbObjectId(stub));
  id = AcDbObjectId(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
  iterator = new AcDbBlockTableRecordIterator(mEntities);
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
  if (Acad::ErrorStatus es = checkWrite("setOrigin"); es != Acad::eOk) return es;
  mOrigin = origin;
  return Acad::eOk;
}

bool AcDbBlockTableRecord::isLayout() const {
  const std::wstring& n = nameText();
  return n.size() >= 12 && (n.compare(0, 12, L"*Model_Space") == 0 || n.compare(0, 12, L"*Paper_Space") == 0);
}

bool AcDbBlockTableRecord::isAnonymous() const { return !nameText().empty() && nameText()[0] == L'*' && !isLayout(); }

void AcDbBlockTableRecord::subOwnedIds(AcDbObjectIdArray& ids) const {
  AcDbObject::subOwnedIds(ids);
  for (const AcDbObjectId& id : mEntities) ids.append(id);
}

void AcDbBlockTableRecord::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbObject::subTranslateIds(idMap);
  for (AcDbObjectId& id : mEntities) {
    AcDbIdPair pair(id, AcDbObjectId::kNull, false);
    if (idMap.compute(pair) && !pair.value().isNull()) id = pair.value();
  }
}

AcDbBlockTableRecordIterator::~AcDbBlockTableRecordIterator() = default;

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  mCursor.start(atBeginning, skipDeleted);
}

bool AcDbBlockTableRecordIterator::done() const { return mCursor.done(); }

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) { mCursor.step(forward, skipDeleted); }

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const { return mCursor.current(id); }

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& object, AcDb::OpenMode openMode,
                                                          bool openErased) const {
  object = nullptr;
  AcDbObjectId id;
  if (const Acad::ErrorStatus es = mCursor.current(id); es != Acad::eOk) return es;
  return acdbOpenAcDbEntity(object, id, openMode, openErased);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) { return mCursor.seek(id); }

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(const AcDbEntity* entity) {
  return entity ? seek(entity->objectId()) : Acad::eNullEntityPointer;
}
