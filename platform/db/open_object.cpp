// acdbOpenObject and friends: the host's open rules, and ads_name conversions.
#include "database_impl.h"
#include "object_access.h"

using tdhost::ObjectAccess;

namespace {
constexpr Adesk::UInt16 kMaxReaders = 256;
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& obj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  obj = nullptr;
  AcDbStub* stub = id;
  if (stub == nullptr) return Acad::eNullObjectId;
  if (stub->object == nullptr) return Acad::ePermanentlyErased;
  AcDbObject* o = stub->object.get();
  if (o->isErased() && !openErased) return Acad::eWasErased;
  if (ObjectAccess::isWriteOpen(*o)) return Acad::eWasOpenForWrite;
  tdhost::DatabaseImpl& db = stub->database->impl();
  if (mode == AcDb::kForWrite) {
    if (ObjectAccess::readers(*o) > 0) return Acad::eWasOpenForRead;
    db.beforeWrite(stub);
    ObjectAccess::setWriteOpen(*o);
    ++db.openCount;
  } else {
    if (ObjectAccess::readers(*o) >= kMaxReaders) return Acad::eAtMaxReaders;
    if (ObjectAccess::readers(*o) == 0) ++db.openCount;
    ObjectAccess::addReader(*o);
  }
  obj = o;
  return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& obj, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  return acdbOpenObject(obj, id, mode, openErased);
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& ent, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  ent = nullptr;
  AcDbObject* obj = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(obj, id, mode, openErased);
  if (es != Acad::eOk) return es;
  ent = AcDbEntity::cast(obj);
  if (ent == nullptr) {
    obj->close();
    return Acad::eNotAnEntity;
  }
  return Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId) {
  objName[0] = objId.asOldId();
  objName[1] = 0;
  return objId.isNull() ? Acad::eNullObjectId : Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName) {
  objId.setFromOldId(objName[0]);
  return objId.isNull() ? Acad::eInvalidAdsName : Acad::eOk;
}
