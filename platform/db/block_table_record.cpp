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

void AcDbBlockTableRecordIterator::skip(bool forward, bool skipDeleted) {
  while (!done() && skipDeleted && mIds[static_cast<size_t>(mPos)].isErased()) mPos += forward ? 1 : -1;
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  mPos = atBeginning ? 0 : static_cast<long>(mIds.size()) - 1;
  skip(atBeginning, skipDeleted);
}

bool AcDbBlockTableRecordIterator::done() const { return mPos < 0 || mPos >= static_cast<long>(mIds.size()); }

void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  if (done()) return;
  mPos += forward ? 1 : -1;
  skip(forward, skipDeleted);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& entityId) const {
  if (done()) return Acad::eIteratorDone;
  entityId = mIds[static_cast<size_t>(mPos)];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode openMode,
                                                          bool openErased) const {
  entity = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenAcDbEntity(entity, mIds[static_cast<size_t>(mPos)], openMode, openErased);
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId id) {
  for (size_t i = 0; i < mIds.size(); ++i)
    if (mIds[i] == id) {
      mPos = static_cast<long>(i);
      return Acad::eOk;
    }
  return Acad::eKeyNotFound;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(const AcDbEntity* entity) {
  return entity ? seek(entity->objectId()) : Acad::eNullEntityPointer;
}
