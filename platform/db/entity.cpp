// AcDbEntity: layer, colour, linetype and visibility; AcDbExtents and AcDbObjectIterator.
#include <algorithm>
#include <limits>

#include "acutads.h"
#include "database_impl.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "gemat3d.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbEntity)
TDHOST_DEFINE_MEMBERS(AcDbObjectIterator)

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

namespace {

AcDbDatabase* targetDb(const AcDbEntity& e) {
  return e.database() ? e.database() : acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectId findRecord(AcDbObjectId tableId, const ACHAR* name) {
  AcDbObjectId id;
  if (name == nullptr) return id;
  auto* table = AcDbSymbolTable::cast(tdhost::peek(tableId));
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
  AcDbDatabase* db = targetDb(*this);
  AcDbObjectId id = db ? findRecord(db->layerTableId(), newVal) : AcDbObjectId();
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
  return mColor.setColorIndex(color);
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool) {
  if (Acad::ErrorStatus es = checkWrite("setColor"); es != Acad::eOk) return es;
  mColor = color;
  return Acad::eOk;
}

ACHAR* AcDbEntity::linetype() const {
  auto* rec = AcDbSymbolTableRecord::cast(tdhost::peek(mLinetypeId));
  return rec ? acutNewString(rec->nameText().c_str()) : nullptr;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* newVal, bool) {
  if (Acad::ErrorStatus es = checkWrite("setLinetype"); es != Acad::eOk) return es;
  AcDbDatabase* db = targetDb(*this);
  AcDbObjectId id = db ? findRecord(db->linetypeTableId(), newVal) : AcDbObjectId();
  if (id.isNull()) return Acad::eKeyNotFound;
  mLinetypeId = id;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId newVal, bool) {
  if (Acad::ErrorStatus es = checkWrite("setLinetype"); es != Acad::eOk) return es;
  if (newVal.isNull()) return Acad::eNullObjectId;
  if (AcDbLinetypeTableRecord::cast(tdhost::peek(newVal)) == nullptr) return Acad::eWrongObjectType;
  mLinetypeId = newVal;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double newval, bool) {
  if (Acad::ErrorStatus es = checkWrite("setLinetypeScale"); es != Acad::eOk) return es;
  if (!(newval > 0.0)) return Acad::eInvalidInput;
  mLinetypeScale = newval;
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
  mColor.setColorIndex(AcDb::kByLayer);
  mLinetypeId = db->celtype();
  mLinetypeScale = 1.0;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  std::shared_ptr<const tdhost::CurvePath> path = subPath();
  if (!path || path->empty()) return Acad::eInvalidExtents;
  AcGePoint3d lo, hi;
  path->extents(lo, hi);
  extents = AcDbExtents(lo, hi);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getStretchPoints(AcGePoint3dArray&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::moveStretchPointsAt(const AcGeIntArray&, const AcGeVector3d&) {
  return Acad::eNotApplicable;
}

std::shared_ptr<const tdhost::CurvePath> AcDbEntity::subPath() const { return nullptr; }

namespace tdhost {

void copyTraits(const AcDbEntity& from, AcDbEntity& to) {
  if (!from.layerId().isNull()) to.setLayer(from.layerId());
  if (!from.linetypeId().isNull()) to.setLinetype(from.linetypeId());
  to.setColor(from.color());
  to.setLinetypeScale(from.linetypeScale());
  to.setVisibility(from.visibility());
}

}  // namespace tdhost

AcDbExtents::AcDbExtents()
    : mMin(std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), std::numeric_limits<double>::max()),
      mMax(-std::numeric_limits<double>::max(), -std::numeric_limits<double>::max(),
           -std::numeric_limits<double>::max()) {}

AcDbExtents::AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : mMin(min), mMax(max) {}

Acad::ErrorStatus AcDbExtents::set(const AcGePoint3d& min, const AcGePoint3d& max) {
  if (min.x > max.x || min.y > max.y || min.z > max.z) return Acad::eInvalidExtents;
  mMin = min;
  mMax = max;
  return Acad::eOk;
}

void AcDbExtents::addPoint(const AcGePoint3d& pt) {
  mMin.set(std::min(mMin.x, pt.x), std::min(mMin.y, pt.y), std::min(mMin.z, pt.z));
  mMax.set(std::max(mMax.x, pt.x), std::max(mMax.y, pt.y), std::max(mMax.z, pt.z));
}

void AcDbExtents::addExt(const AcDbExtents& src) {
  if (src.mMin.x > src.mMax.x) return;
  addPoint(src.mMin);
  addPoint(src.mMax);
}

void AcDbExtents::expandBy(const AcGeVector3d& vec) { addPoint(mMin + vec); addPoint(mMax + vec); }

void AcDbExtents::transformBy(const AcGeMatrix3d& mat) {
  if (mMin.x > mMax.x) return;
  const AcGePoint3d lo = mMin, hi = mMax;
  *this = AcDbExtents();
  for (int i = 0; i < 8; ++i) {
    AcGePoint3d c((i & 1) ? hi.x : lo.x, (i & 2) ? hi.y : lo.y, (i & 4) ? hi.z : lo.z);
    addPoint(c.transformBy(mat));
  }
}

AcDbObjectIterator::AcDbObjectIterator(AcDbObjectIdArray ids, AcArray<AcDbEntity*> entities)
    : mIds(std::move(ids)), mEntities(std::move(entities)) {
  skipErased(false);
}

AcDbObjectIterator::~AcDbObjectIterator() = default;

void AcDbObjectIterator::skipErased(bool backwards) {
  while (!done() && mIds[mPos].isErased()) mPos += backwards ? -1 : 1;
}

void AcDbObjectIterator::step(bool backwards, bool skipDeleted) {
  if (done()) return;
  mPos += backwards ? -1 : 1;
  if (skipDeleted) skipErased(backwards);
}

void AcDbObjectIterator::setPosition(AcDbEntity* pEnt) {
  for (int i = 0; i < mEntities.length(); ++i)
    if (mEntities[i] == pEnt) mPos = i;
}

void AcDbObjectIterator::setPosition(AcDbObjectId pObj) {
  for (int i = 0; i < mIds.length(); ++i)
    if (mIds[i] == pObj) mPos = i;
}

void AcDbObjectIterator::start(bool atEnd) {
  mPos = atEnd ? mIds.length() - 1 : 0;
  skipErased(atEnd);
}

AcDbEntity* AcDbObjectIterator::entity() { return done() ? nullptr : mEntities[mPos]; }

AcDbObjectId AcDbObjectIterator::objectId() { return done() ? AcDbObjectId() : mIds[mPos]; }
