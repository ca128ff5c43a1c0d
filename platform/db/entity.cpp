// The minimal AcDbEntity: layer, colour and visibility, enough for block ownership.
#include "acutads.h"
#include "database_impl.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbEntity)

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

namespace {

AcDbDatabase* targetDb(const AcDbEntity& e) {
  return e.database() ? e.database() : acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectId findLayer(AcDbDatabase* db, const ACHAR* name) {
  AcDbObjectId id;
  if (db == nullptr || name == nullptr) return id;
  auto* table = AcDbSymbolTable::cast(tdhost::peek(db->layerTableId()));
  if (table != nullptr) id = table->lookup(name);
  return id;
}

}  // namespace

ACHAR* AcDbEntity::layer() const {
  auto* rec = AcDbSymbolTableRecord::cast(tdhost::peek(mLayerId));
  return rec ? acutNewString(rec->nameText().c_str()) : nullptr;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* newVal, bool, bool) {
  if (Acad::ErrorStatus es = checkWrite("setLayer"); es != Acad::eOk) return es;
  AcDbObjectId id = findLayer(targetDb(*this), newVal);
  if (id.isNull()) return Acad::eKeyNotFound;
  mLayerId = id;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId newVal, bool, bool) {
  if (Acad::ErrorStatus es = checkWrite("setLayer"); es != Acad::eOk) return es;
  if (newVal.isNull()) return Acad::eNullObjectId;
  if (AcDbLayerTableRecord::cast(tdhost::peek(newVal)) == nullptr) return Acad::eWrongObjectType;
  mLayerId = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 color, bool) {
  if (Acad::ErrorStatus es = checkWrite("setColorIndex"); es != Acad::eOk) return es;
  if (color > 256) return Acad::eOutOfRange;
  mColorIndex = color;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility newVal, bool) {
  if (Acad::ErrorStatus es = checkWrite("setVisibility"); es != Acad::eOk) return es;
  mVisibility = newVal;
  return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* db) {
  if (checkWrite("setDatabaseDefaults") != Acad::eOk) return;
  if (db == nullptr) db = targetDb(*this);
  if (db == nullptr) return;
  mLayerId = db->clayer();
  mColorIndex = AcDb::kByLayer;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }
