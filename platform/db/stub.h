// AcDbStub: what an AcDbObjectId points at. Lives as long as its database.
#pragma once

#include <memory>

#include "dbhandle.h"
#include "dbmain.h"

class AcDbStub {
 public:
  AcDbStub(AcDbDatabase* db, AcDbHandle h) : database(db), handle(h) {}

  AcDbDatabase* database;
  AcDbHandle handle;
  std::unique_ptr<AcDbObject> object;  // null for a handle reserved without an object
  Adesk::UInt32 undoSerial = 0;        // undo group that already holds this object's state
};
