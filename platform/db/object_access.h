// Host-internal access to AcDbObject state that the SDK surface does not expose.
#pragma once

#include "ads/rb_list.h"
#include "dbmain.h"
#include "stub.h"

namespace tdhost {

struct ObjectAccess {
  static AcDbStub* stub(const AcDbObject& o) { return o.mStub; }
  static void setStub(AcDbObject& o, AcDbStub* s) { o.mStub = s; }
  static bool isOpen(const AcDbObject& o) { return o.mWriter || o.mReaders > 0; }
  static bool isWriteOpen(const AcDbObject& o) { return o.mWriter; }
  static Adesk::UInt16 readers(const AcDbObject& o) { return o.mReaders; }
  static void setWriteOpen(AcDbObject& o) { o.mWriter = true; }
  static void clearWriteOpen(AcDbObject& o) { o.mWriter = false; }
  static void addReader(AcDbObject& o) { ++o.mReaders; }
  static void setErased(AcDbObject& o, bool erased) { o.mErased = erased; }
  static void setOwner(AcDbObject& o, AcDbObjectId owner) { o.mOwnerId = owner; }
  static void setExtDict(AcDbObject& o, AcDbObjectId id) { o.mExtDictId = id; }
  static XDataStore* xdata(const AcDbObject& o) { return o.mXData.get(); }
  static void setXDataStore(AcDbObject& o, std::unique_ptr<XDataStore> x) { o.mXData = std::move(x); }
};

// The object behind an id, without opening it (null when none). For host internals only.
inline AcDbObject* peek(AcDbObjectId id) {
  AcDbStub* s = id;
  return s ? s->object.get() : nullptr;
}

// The object behind an id for an internal change: records its state for undo first.
AcDbObject* touch(AcDbObjectId id);

}  // namespace tdhost
