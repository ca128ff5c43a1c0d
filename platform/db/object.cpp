// AcDbObject: identity, the open/close rules and their misuse checks, erasure.
#include <string>

#include "ads/rb_list.h"
#include "dbfiler.h"
#include "database_impl.h"
#include "host_init.h"
#include "object_access.h"
#include "object_arena.h"
#include "tdhost/diagnostics.h"

TDHOST_DEFINE_MEMBERS(AcDbObject)

namespace tdhost {

std::string describe(const AcDbObject& obj) {
  std::string text;
  for (const ACHAR* p = obj.isA()->name(); *p; ++p) text += static_cast<char>(*p);
  AcDbHandle h;
  obj.getAcDbHandle(h);
  ACHAR buf[17];
  h.getIntoAsciiBuffer(buf, 17);
  text += " (handle ";
  for (const ACHAR* p = buf; *p; ++p) text += static_cast<char>(*p);
  return text + ")";
}

AcDbObject* touch(AcDbObjectId id) {
  AcDbStub* s = id;
  if (s == nullptr || s->object == nullptr) return nullptr;
  s->database->impl().beforeWrite(s);
  return s->object.get();
}

}  // namespace tdhost

using tdhost::Misuse;
using tdhost::reportMisuse;

AcDbObject::AcDbObject() = default;

AcDbObject::AcDbObject(const AcDbObject& other)
    : AcRxObject(other),
      mOwnerId(other.mOwnerId),
      mExtDictId(other.mExtDictId),
      mXData(other.mXData ? std::make_unique<tdhost::XDataStore>(*other.mXData) : nullptr) {}

AcDbObject& AcDbObject::operator=(const AcDbObject& other) {
  if (this == &other) return *this;
  mOwnerId = other.mOwnerId;
  mExtDictId = other.mExtDictId;
  mXData = other.mXData ? std::make_unique<tdhost::XDataStore>(*other.mXData) : nullptr;
  return *this;
}

void* AcDbObject::operator new(std::size_t size) { return tdhost::allocateObject(size); }

void AcDbObject::operator delete(void* p) noexcept { tdhost::freeObject(p); }

AcDbObject::~AcDbObject() {
  if (mStub != nullptr && mStub->object.get() == this) {
    // The database owns this object: take it out of the stub so it is not freed twice.
    reportMisuse(Misuse::kDeleteResident, "delete of database-resident " + tdhost::describe(*this));
    if (mWriter || mReaders > 0) --mStub->database->impl().openCount;
    (void)mStub->object.release();
  }
}

AcDbObjectId AcDbObject::objectId() const { return AcDbObjectId(mStub); }

AcDbDatabase* AcDbObject::database() const { return mStub ? mStub->database : nullptr; }

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const { handle = mStub ? mStub->handle : AcDbHandle(); }

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId ownerId) {
  if (Acad::ErrorStatus es = checkWrite("setOwnerId"); es != Acad::eOk) return es;
  mOwnerId = ownerId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
  if (mStub == nullptr) {
    reportMisuse(Misuse::kCloseNotResident, "close of an object never added to a database: " + tdhost::describe(*this));
    return Acad::eNotInDatabase;
  }
  if (mWriter) {
    mWriter = false;
    --mStub->database->impl().openCount;
    return Acad::eOk;
  }
  if (mReaders > 0) {
    if (--mReaders == 0) --mStub->database->impl().openCount;
    return Acad::eOk;
  }
  reportMisuse(Misuse::kDoubleClose, "close of an object that is not open: " + tdhost::describe(*this));
  return Acad::eNotOpenForRead;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (mStub == nullptr) return Acad::eOk;
  if (mWriter) return Acad::eWasOpenForWrite;
  if (mReaders == 0) return Acad::eNotOpenForRead;
  if (mReaders > 1) return Acad::eHadMultipleReaders;
  mStub->database->impl().beforeWrite(mStub);
  mReaders = 0;
  mWriter = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  if (mStub == nullptr || !mWriter) return Acad::eNotOpenForWrite;
  mWriter = false;
  mReaders = 1;
  return Acad::eOk;
}

bool AcDbObject::isReadEnabled() const { return mStub == nullptr || mWriter || mReaders > 0; }

bool AcDbObject::isWriteEnabled() const { return mStub == nullptr || mWriter; }

Acad::ErrorStatus AcDbObject::checkWrite(const char* what) const {
  if (mStub == nullptr) return Acad::eOk;
  if (!mWriter) {
    reportMisuse(Misuse::kWriteNotEnabled,
                 std::string(what) + " on " + tdhost::describe(*this) + (mReaders ? " open for read" : " not open"));
    return Acad::eNotOpenForWrite;
  }
  if (mErased) {
    reportMisuse(Misuse::kUseAfterErase, std::string(what) + " on erased " + tdhost::describe(*this));
    return Acad::eWasErased;
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::checkRead(const char* what) const {
  if (mStub == nullptr || mWriter || mReaders > 0) return Acad::eOk;
  reportMisuse(Misuse::kReadNotEnabled, std::string(what) + " on " + tdhost::describe(*this) + " not open");
  return Acad::eNotOpenForRead;
}

void AcDbObject::assertReadEnabled() const { (void)checkRead("assertReadEnabled"); }

void AcDbObject::assertWriteEnabled(bool, bool) { (void)checkWrite("assertWriteEnabled"); }

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (mStub == nullptr) return Acad::eNotInDatabase;
  if (!mWriter) {
    reportMisuse(Misuse::kWriteNotEnabled, "erase on " + tdhost::describe(*this) + " not open for write");
    return Acad::eNotOpenForWrite;
  }
  if (erasing == mErased) return erasing ? Acad::eWasErased : Acad::eWasNotErased;
  if (Acad::ErrorStatus es = subErase(erasing); es != Acad::eOk) return es;
  mStub->database->impl().undo->recordErased(mStub, erasing);
  mErased = erasing;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::subErase(bool) { return Acad::eOk; }

void AcDbObject::subAddedToDatabase() {}

void AcDbObject::subOwnedIds(AcDbObjectIdArray& ids) const {
  if (!mExtDictId.isNull()) ids.append(mExtDictId);
}

// The base class has no fields of its own beyond those the filer handles.
Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) { return filer ? Acad::eOk : Acad::eNullObjectPointer; }

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
  return filer ? Acad::eOk : Acad::eNullObjectPointer;
}
