// AcDbHostApplicationServices: the host's services object, with the working database.
#pragma once

#include "dbmain.h"

class TDHOST_API AcDbHostApplicationServices : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbHostApplicationServices);
  AcDbHostApplicationServices() = default;
  ~AcDbHostApplicationServices() override;

  // The database that commands and header-variable functions work on; null before one is
  // made current. A database being destroyed stops being the working database.
  AcDbDatabase* workingDatabase() const { return mWorking; }
  void setWorkingDatabase(AcDbDatabase* db) { mWorking = db; }

 private:
  AcDbDatabase* mWorking = nullptr;
};

TDHOST_API AcDbHostApplicationServices* acdbHostApplicationServices();
