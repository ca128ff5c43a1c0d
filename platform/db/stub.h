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
  // 1 + the index of the record a DXF load kept for this object (0: none); beside the stub so
  // that a save finds it without a lookup.
  Adesk::UInt32 dxfRecord = 0;
};
