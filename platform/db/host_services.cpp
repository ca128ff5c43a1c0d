// The host services object, the working database and the list of live databases.
#include "dbapserv.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbHostApplicationServices)

AcDbHostApplicationServices::~AcDbHostApplicationServices() = default;

namespace tdhost {

AcArray<AcDbDatabase*>& liveDatabases() {
  static AcArray<AcDbDatabase*> list;
  return list;
}

}  // namespace tdhost

AcDbHostApplicationServices* acdbHostApplicationServices() {
  tdhost::ensureHostInitialized();
  static AcDbHostApplicationServices services;
  return &services;
}

const AcArray<AcDbDatabase*>& acdbActiveDatabaseArray() { return tdhost::liveDatabases(); }
