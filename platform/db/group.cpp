// AcDbGroup: ordered entity references of one database.
#include <algorithm>

#include "acutads.h"
#include "dbdict.h"
#include "dbgroup.h"
#include "dbidmap.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbGroup)

AcDbGroup::AcDbGroup(const ACHAR* grpDesc, bool selectable)
    : mDescription(grpDesc ? grpDesc : L""), mSelectable(selectable) {}

AcDbGroup::~AcDbGroup() = default;

Acad::ErrorStatus AcDbGroup::getName(ACHAR*& name) const {
  name = acutNewString(mName.c_str());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setName(const ACHAR* newName) {
  if (Acad::ErrorStatus es = checkWrite("setName"); es != Acad::eOk) return es;
  if (newName == nullptr || *newName == 0) return Acad::eInvalidInput;
  if (auto* dict = AcDbDictionary::cast(tdhost::peek(ownerId())); dict && dict->has(objectId())) {
    tdhost::touch(ownerId());
    if (Acad::ErrorStatus es = dict->renameEntry(objectId(), newName); es != Acad::eOk) return es;
  }
  mName = newName;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* text) {
  if (Acad::ErrorStatus es = checkWrite("setDescription"); es != Acad::eOk) return es;
  mDescription = text ? text : L"";
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) {
  if (Acad::ErrorStatus es = checkWrite("setSelectable"); es != Acad::eOk) return es;
  mSelectable = selectable;
  return Acad::eOk;
}

namespace {

Acad::ErrorStatus checkMember(const AcDbGroup& group, AcDbObjectId id) {
  if (id.isNull()) return Acad::eNullObjectId;
  AcDbObject* obj = tdhost::peek(id);
  if (obj == nullptr) return Acad::ePermanentlyErased;
  if (group.database() != nullptr && id.database() != group.database()) return Acad::eWrongDatabase;
  if (!obj->isKindOf(AcDbEntity::desc())) return Acad::eNotAnEntity;
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus AcDbGroup::insertAt(Adesk::UInt32 idx, AcDbObjectId id) {
  if (Acad::ErrorStatus es = checkWrite("insertAt"); es != Acad::eOk) return es;
  if (Acad::ErrorStatus es = checkMember(*this, id); es != Acad::eOk) return es;
  if (has(id)) return Acad::eAlreadyInGroup;
  if (idx > mMembers.size()) return Acad::eInvalidIndex;
  mMembers.insert(mMembers.begin() + idx, id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) {
  return insertAt(static_cast<Adesk::UInt32>(mMembers.size()), id);
}

Acad::ErrorStatus AcDbGroup::append(const AcDbObjectIdArray& ids) {
  for (const AcDbObjectId& id : ids)
    if (Acad::ErrorStatus es = append(id); es != Acad::eOk) return es;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::prepend(AcDbObjectId id) { return insertAt(0, id); }

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
  if (Acad::ErrorStatus es = checkWrite("remove"); es != Acad::eOk) return es;
  auto it = std::find(mMembers.begin(), mMembers.end(), id);
  if (it == mMembers.end()) return Acad::eNotInGroup;
  mMembers.erase(it);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::removeAt(Adesk::UInt32 idx) {
  if (Acad::ErrorStatus es = checkWrite("removeAt"); es != Acad::eOk) return es;
  if (idx >= mMembers.size()) return Acad::eInvalidIndex;
  mMembers.erase(mMembers.begin() + idx);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbGroup::clear() {
  if (Acad::ErrorStatus es = checkWrite("clear"); es != Acad::eOk) return es;
  mMembers.clear();
  return Acad::eOk;
}

bool AcDbGroup::has(AcDbObjectId id) const { return std::find(mMembers.begin(), mMembers.end(), id) != mMembers.end(); }

bool AcDbGroup::has(const AcDbEntity* entity) const { return entity != nullptr && has(entity->objectId()); }

Adesk::UInt32 AcDbGroup::numEntities() const {
  Adesk::UInt32 n = 0;
  for (const AcDbObjectId& id : mMembers) n += id.isErased() ? 0 : 1;
  return n;
}

Adesk::UInt32 AcDbGroup::allEntityIds(AcDbObjectIdArray& ids) const {
  ids.removeAll();
  for (const AcDbObjectId& id : mMembers)
    if (!id.isErased()) ids.append(id);
  return static_cast<Adesk::UInt32>(ids.length());
}

Acad::ErrorStatus AcDbGroup::getIndex(AcDbObjectId id, Adesk::UInt32& idx) const {
  auto it = std::find(mMembers.begin(), mMembers.end(), id);
  if (it == mMembers.end()) return Acad::eNotInGroup;
  idx = static_cast<Adesk::UInt32>(it - mMembers.begin());
  return Acad::eOk;
}

void AcDbGroup::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbObject::subTranslateIds(idMap);
  for (AcDbObjectId& id : mMembers) {
    AcDbIdPair pair(id, AcDbObjectId::kNull, false);
    if (idMap.compute(pair) && !pair.value().isNull()) id = pair.value();
  }
}
