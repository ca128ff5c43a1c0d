// AcDbDatabase: the object table, the default drawing, and adding objects.
#include "database_impl.h"

#include <string>

#include "dbapserv.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbsymtb.h"
#include "host_init.h"
#include "object_access.h"
#include "tdhost/diagnostics.h"

TDHOST_DEFINE_MEMBERS(AcDbDatabase)

namespace tdhost {

AcArray<AcDbDatabase*>& liveDatabases();
std::string describe(const AcDbObject& obj);

DatabaseImpl::DatabaseImpl(AcDbDatabase* owner) : self(owner), undo(makeUndoRecorder(*this)) {}

DatabaseImpl::~DatabaseImpl() = default;

AcDbStub* DatabaseImpl::newStub() {
  while (stubs.count(handseed) != 0) ++handseed;
  Adesk::UInt64 h = handseed++;
  return &stubs.try_emplace(h, self, AcDbHandle(h)).first->second;
}

AcDbStub* DatabaseImpl::stubFor(AcDbHandle handle, bool create) {
  auto it = stubs.find(handle);
  if (it != stubs.end()) return &it->second;
  if (!create || handle.isNull()) return nullptr;
  if (static_cast<Adesk::UInt64>(handle) >= handseed) handseed = static_cast<Adesk::UInt64>(handle) + 1;
  return &stubs.try_emplace(handle, self, handle).first->second;
}

void DatabaseImpl::beforeWrite(AcDbStub* stub) {
  undo->recordModified(stub);
  if (stub->dxfRecord != 0 && dxf) dxf::beforeFirstWrite(*dxf, stub);
}

AcDbStub* DatabaseImpl::adopt(std::unique_ptr<AcDbObject> obj) {
  AcDbStub* stub = newStub();
  ObjectAccess::setStub(*obj, stub);
  ObjectAccess::setWriteOpen(*obj);
  stub->object = std::move(obj);
  ++openCount;
  ++liveObjects;
  undo->recordCreated(stub);
  stub->object->subAddedToDatabase();
  return stub;
}

}  // namespace tdhost

namespace {

using tdhost::DatabaseImpl;

// Adds a standard object owned by `owner`, closed.
AcDbObjectId addClosed(DatabaseImpl& d, std::unique_ptr<AcDbObject> obj, AcDbObjectId owner) {
  tdhost::ObjectAccess::setOwner(*obj, owner);
  AcDbStub* stub = d.adopt(std::move(obj));
  stub->object->close();
  return AcDbObjectId(stub);
}

AcDbObjectId addRecord(AcDbObjectId tableId, AcDbSymbolTableRecord* rec, const ACHAR* name) {
  rec->setName(name);
  AcDbSymbolTable* table = nullptr;
  acdbOpenObject(table, tableId, AcDb::kForWrite);
  AcDbObjectId id;
  table->add(id, rec);
  rec->close();
  table->close();
  return id;
}

void buildDefaultDrawing(DatabaseImpl& d) {
  using namespace tdhost;
  d.tables[kBlockTable] = addClosed(d, std::make_unique<AcDbBlockTable>(), {});
  d.tables[kLayerTable] = addClosed(d, std::make_unique<AcDbLayerTable>(), {});
  d.tables[kTextStyleTable] = addClosed(d, std::make_unique<AcDbTextStyleTable>(), {});
  d.handseed = 5;
  d.tables[kLinetypeTable] = addClosed(d, std::make_unique<AcDbLinetypeTable>(), {});
  d.tables[kViewTable] = addClosed(d, std::make_unique<AcDbViewTable>(), {});
  d.tables[kUCSTable] = addClosed(d, std::make_unique<AcDbUCSTable>(), {});
  d.tables[kViewportTable] = addClosed(d, std::make_unique<AcDbViewportTable>(), {});
  d.tables[kRegAppTable] = addClosed(d, std::make_unique<AcDbRegAppTable>(), {});
  d.tables[kDimStyleTable] = addClosed(d, std::make_unique<AcDbDimStyleTable>(), {});
  d.handseed = 0xC;
  d.namedObjects = addClosed(d, std::make_unique<AcDbDictionary>(), {});
  d.handseed = 0x10;

  AcDbDictionary* nod = nullptr;
  acdbOpenObject(nod, d.namedObjects, AcDb::kForWrite);
  auto* groups = new AcDbDictionary;
  nod->setAt(L"ACAD_GROUP", groups, d.groupDictionary);
  groups->close();
  nod->close();

  d.byBlock = addRecord(d.tables[kLinetypeTable], new AcDbLinetypeTableRecord, L"ByBlock");
  d.byLayer = addRecord(d.tables[kLinetypeTable], new AcDbLinetypeTableRecord, L"ByLayer");
  auto* continuous = new AcDbLinetypeTableRecord;
  continuous->setComments(L"Solid line");
  d.continuous = addRecord(d.tables[kLinetypeTable], continuous, L"Continuous");

  auto* layer0 = new AcDbLayerTableRecord;
  layer0->setLinetypeObjectId(d.continuous);
  d.header.clayer = addRecord(d.tables[kLayerTable], layer0, L"0");

  auto* standard = new AcDbTextStyleTableRecord;
  standard->setFileName(L"txt");
  d.header.textstyle = addRecord(d.tables[kTextStyleTable], standard, L"Standard");
  addRecord(d.tables[kRegAppTable], new AcDbRegAppTableRecord, L"ACAD");
  d.header.dimstyle = addRecord(d.tables[kDimStyleTable], new AcDbDimStyleTableRecord, L"Standard");
  addRecord(d.tables[kViewportTable], new AcDbViewportTableRecord, L"*Active");
  d.modelSpace = addRecord(d.tables[kBlockTable], new AcDbBlockTableRecord, ACDB_MODEL_SPACE);
  d.paperSpace = addRecord(d.tables[kBlockTable], new AcDbBlockTableRecord, ACDB_PAPER_SPACE);
  d.header.celtype = d.byLayer;
}

template <class T>
Acad::ErrorStatus openTable(T*& table, AcDbObjectId id, AcDb::OpenMode mode) {
  table = nullptr;
  if (id.isNull()) return Acad::eMissingSymbolTable;
  return acdbOpenObject(table, id, mode);
}

}  // namespace

AcDbDatabase::AcDbDatabase(bool buildDefault, bool) : mImpl(std::make_unique<tdhost::DatabaseImpl>(this)) {
  tdhost::ensureHostInitialized();
  mImpl->undo->setRecording(false);
  if (buildDefault) buildDefaultDrawing(*mImpl);
  mImpl->undo->setRecording(true);
  tdhost::liveDatabases().append(this);
}

AcDbDatabase::~AcDbDatabase() {
  tdhost::liveDatabases().remove(this);
  if (acdbHostApplicationServices()->workingDatabase() == this)
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  mImpl->destroying = true;
  if (mImpl->openCount != 0) {
    for (const AcDbObjectId& id : tdhost::openObjects(this))
      tdhost::reportMisuse(tdhost::Misuse::kObjectLeftOpen,
                           "database destroyed with " + tdhost::describe(*tdhost::peek(id)) + " still open");
  }
  mImpl->undo.reset();
  for (auto& [handle, stub] : mImpl->stubs) stub.object.reset();
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* obj) {
  AcDbObjectId id;
  return addAcDbObject(id, obj);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& objId, AcDbObject* obj) {
  objId.setNull();
  if (obj == nullptr) return Acad::eNullObjectPointer;
  if (!obj->objectId().isNull()) return Acad::eAlreadyInDb;
  objId = AcDbObjectId(mImpl->adopt(std::unique_ptr<AcDbObject>(obj)));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                                const AcDbHandle& objHandle, Adesk::UInt32) {
  retId.setNull();
  if (objHandle.isNull()) return Acad::eNullHandle;
  AcDbStub* stub = mImpl->stubFor(objHandle, createIfNotFound);
  if (stub == nullptr) return Acad::eUnknownHandle;
  retId = AcDbObjectId(stub);
  return Acad::eOk;
}

#define TDHOST_TABLE_ACCESS(TYPE, KIND, GETTER, IDGETTER)                                    \
  Acad::ErrorStatus AcDbDatabase::getSymbolTable(TYPE*& table, AcDb::OpenMode mode) {        \
    return openTable(table, mImpl->tables[tdhost::KIND], mode);                              \
  }                                                                                          \
  Acad::ErrorStatus AcDbDatabase::GETTER(TYPE*& table, AcDb::OpenMode mode) {                \
    return openTable(table, mImpl->tables[tdhost::KIND], mode);                              \
  }                                                                                          \
  AcDbObjectId AcDbDatabase::IDGETTER() const { return mImpl->tables[tdhost::KIND]; }

TDHOST_TABLE_ACCESS(AcDbBlockTable, kBlockTable, getBlockTable, blockTableId)
TDHOST_TABLE_ACCESS(AcDbLayerTable, kLayerTable, getLayerTable, layerTableId)
TDHOST_TABLE_ACCESS(AcDbTextStyleTable, kTextStyleTable, getTextStyleTable, textStyleTableId)
TDHOST_TABLE_ACCESS(AcDbLinetypeTable, kLinetypeTable, getLinetypeTable, linetypeTableId)
TDHOST_TABLE_ACCESS(AcDbViewTable, kViewTable, getViewTable, viewTableId)
TDHOST_TABLE_ACCESS(AcDbUCSTable, kUCSTable, getUCSTable, UCSTableId)
TDHOST_TABLE_ACCESS(AcDbViewportTable, kViewportTable, getViewportTable, viewportTableId)
TDHOST_TABLE_ACCESS(AcDbRegAppTable, kRegAppTable, getRegAppTable, regAppTableId)
TDHOST_TABLE_ACCESS(AcDbDimStyleTable, kDimStyleTable, getDimStyleTable, dimStyleTableId)

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode) {
  return openTable(dict, mImpl->namedObjects, mode);
}

Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& dict, AcDb::OpenMode mode) {
  return openTable(dict, mImpl->groupDictionary, mode);
}

AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return mImpl->namedObjects; }
AcDbObjectId AcDbDatabase::groupDictionaryId() const { return mImpl->groupDictionary; }
AcDbObjectId AcDbDatabase::byLayerLinetype() const { return mImpl->byLayer; }
AcDbObjectId AcDbDatabase::byBlockLinetype() const { return mImpl->byBlock; }
AcDbObjectId AcDbDatabase::continuousLinetype() const { return mImpl->continuous; }
AcDbObjectId AcDbDatabase::currentSpaceId() const { return mImpl->modelSpace; }
AcDbHandle AcDbDatabase::handseed() const { return AcDbHandle(mImpl->handseed); }
Adesk::Int32 AcDbDatabase::approxNumObjects() const { return static_cast<Adesk::Int32>(mImpl->liveObjects); }
