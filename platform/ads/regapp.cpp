// acdbRegApp: application names for extended data, registered in the working database.
#include "acedads.h"
#include "dbapserv.h"
#include "dbsymtb.h"

int acdbRegApp(const ACHAR* appname) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr || appname == nullptr || *appname == 0) return RTERROR;
  AcDbRegAppTable* table = nullptr;
  if (db->getRegAppTable(table, AcDb::kForRead) != Acad::eOk) return RTERROR;
  if (table->has(appname)) {
    table->close();
    return RTERROR;
  }
  if (table->upgradeOpen() != Acad::eOk) {
    table->close();
    return RTERROR;
  }
  auto* record = new AcDbRegAppTableRecord;
  int result = RTERROR;
  if (record->setName(appname) == Acad::eOk && table->add(record) == Acad::eOk) {
    record->close();
    result = RTNORM;
  } else {
    delete record;
  }
  table->close();
  return result;
}
