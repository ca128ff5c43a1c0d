// AcDbObjectId queries through the database stub.
#include "dbid.h"

#include "dbmain.h"
#include "stub.h"

const AcDbObjectId AcDbObjectId::kNull;

bool AcDbObjectId::isValid() const { return mId != nullptr && mId->object != nullptr; }

bool AcDbObjectId::isErased() const {
  if (mId == nullptr) return false;
  return mId->object == nullptr || mId->object->isErased();
}

bool AcDbObjectId::isResident() const { return isValid(); }

AcDbHandle AcDbObjectId::handle() const { return mId ? mId->handle : AcDbHandle(); }

AcDbDatabase* AcDbObjectId::database() const { return mId ? mId->database : nullptr; }

AcRxClass* AcDbObjectId::objectClass() const { return isValid() ? mId->object->isA() : nullptr; }
