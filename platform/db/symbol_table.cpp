// AcDbSymbolTable and its iterator: case-insensitive names, insertion order, record rules.
#include <cwchar>
#include <cwctype>

#include "acutads.h"
#include "database_impl.h"
#include "dbsymtb.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbSymbolTable)
TDHOST_DEFINE_MEMBERS(AcDbSymbolTableRecord)

namespace {

std::wstring upper(const ACHAR* name) {
  std::wstring key(name ? name : L"");
  for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return key;
}

bool validName(const ACHAR* name) {
  if (name == nullptr || *name == 0) return false;
  size_t n = 0;
  for (const ACHAR* p = name; *p; ++p, ++n)
    if (std::wcschr(L"<>/\\\":;?*|,=`", *p) != nullptr && !(*p == L'*' && p == name)) return false;
  return n <= 255;
}

}  // namespace

AcDbSymbolTableRecord::~AcDbSymbolTableRecord() = default;

Acad::ErrorStatus AcDbSymbolTableRecord::getName(ACHAR*& name) const {
  name = acutNewString(mName.c_str());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(const ACHAR*& name) const {
  name = mName.c_str();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  if (Acad::ErrorStatus es = checkWrite("setName"); es != Acad::eOk) return es;
  if (!validName(name)) return Acad::eInvalidInput;
  if (auto* table = AcDbSymbolTable::cast(tdhost::peek(ownerId())); table != nullptr && !objectId().isNull()) {
    if (Acad::ErrorStatus es = table->rename(objectId(), mName, name); es != Acad::eOk) return es;
  }
  mName = name;
  return Acad::eOk;
}

AcDbSymbolTable::~AcDbSymbolTable() = default;

AcRxClass* AcDbSymbolTable::recordClass() const { return AcDbSymbolTableRecord::desc(); }

AcDbSymbolTableIterator* AcDbSymbolTable::makeIterator(std::vector<AcDbObjectId> ids) const {
  return new AcDbSymbolTableIterator(std::move(ids));
}

Acad::ErrorStatus AcDbSymbolTable::getIdAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErased) const {
  recordId.setNull();
  if (Acad::ErrorStatus es = checkRead("getAt"); es != Acad::eOk) return es;
  if (entryName == nullptr) return Acad::eInvalidInput;
  recordId = lookup(entryName, getErased);
  return recordId.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

AcDbObjectId AcDbSymbolTable::lookup(const ACHAR* name, bool getErased) const {
  if (name == nullptr) return {};
  auto it = mIndex.find(upper(name));
  if (it == mIndex.end() || (!getErased && it->second.isErased())) return {};
  return it->second;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbObjectId& recordId, bool getErased) const {
  return getIdAt(entryName, recordId, getErased);
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const ACHAR* entryName, AcDbSymbolTableRecord*& record,
                                         AcDb::OpenMode openMode, bool openErased) const {
  record = nullptr;
  AcDbObjectId id;
  if (Acad::ErrorStatus es = getIdAt(entryName, id, openErased); es != Acad::eOk) return es;
  return acdbOpenObject(record, id, openMode, openErased);
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getIdAt(name, id) == Acad::eOk;
}

bool AcDbSymbolTable::has(AcDbObjectId id) const {
  if (id.isNull() || id.isErased()) return false;
  for (const AcDbObjectId& r : mOrder)
    if (r == id) return true;
  return false;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
  iterator = makeIterator(mOrder);
  iterator->start(atBeginning, skipDeleted);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
  AcDbObjectId id;
  return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& recordId, AcDbSymbolTableRecord* record) {
  recordId.setNull();
  if (Acad::ErrorStatus es = checkWrite("add"); es != Acad::eOk) return es;
  if (record == nullptr) return Acad::eNullObjectPointer;
  if (!record->objectId().isNull()) return Acad::eAlreadyInDb;
  if (!record->isKindOf(recordClass()) || record->nameText().empty()) return Acad::eInvalidInput;
  AcDbDatabase* db = database();
  if (db == nullptr) return Acad::eNoDatabase;
  std::wstring key = upper(record->nameText().c_str());
  auto it = mIndex.find(key);
  if (it != mIndex.end() && !it->second.isErased()) return Acad::eDuplicateRecordName;
  tdhost::ObjectAccess::setOwner(*record, objectId());
  AcDbStub* stub = db->impl().adopt(std::unique_ptr<AcDbObject>(record));
  mIndex[key] = AcDbObjectId(stub);
  mOrder.push_back(AcDbObjectId(stub));
  recordId = AcDbObjectId(stub);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::rename(AcDbObjectId id, const std::wstring& oldName, const std::wstring& newName) {
  std::wstring oldKey = upper(oldName.c_str()), newKey = upper(newName.c_str());
  if (oldKey == newKey) return Acad::eOk;
  auto clash = mIndex.find(newKey);
  if (clash != mIndex.end() && clash->second != id && !clash->second.isErased()) return Acad::eDuplicateRecordName;
  auto* self = static_cast<AcDbSymbolTable*>(tdhost::touch(objectId()));
  auto old = self->mIndex.find(oldKey);
  if (old != self->mIndex.end() && old->second == id) self->mIndex.erase(old);
  self->mIndex[newKey] = id;
  return Acad::eOk;
}

void AcDbSymbolTable::subOwnedIds(AcDbObjectIdArray& ids) const {
  AcDbObject::subOwnedIds(ids);
  for (const AcDbObjectId& id : mOrder) ids.append(id);
}

// ---- Iterator ------------------------------------------------------------------------

AcDbSymbolTableIterator::~AcDbSymbolTableIterator() = default;

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) { mCursor.start(atBeginning, skipDeleted); }

bool AcDbSymbolTableIterator::done() const { return mCursor.done(); }

void AcDbSymbolTableIterator::step(bool forward, bool skipDeleted) { mCursor.step(forward, skipDeleted); }

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const { return mCursor.current(id); }

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& object, AcDb::OpenMode openMode,
                                                     bool openErased) const {
  object = nullptr;
  AcDbObjectId id;
  if (const Acad::ErrorStatus es = mCursor.current(id); es != Acad::eOk) return es;
  return acdbOpenObject(object, id, openMode, openErased);
}

Acad::ErrorStatus AcDbSymbolTableIterator::seek(AcDbObjectId id) { return mCursor.seek(id); }

Acad::ErrorStatus AcDbSymbolTableIterator::seek(const AcDbSymbolTableRecord* record) {
  return record ? seek(record->objectId()) : Acad::eNullObjectPointer;
}

void AcDbSymbolTable::attachLoaded(AcDbObjectId id, const std::wstring& name) {
  mIndex[upper(name.c_str())] = id;
  mOrder.push_back(id);
}
