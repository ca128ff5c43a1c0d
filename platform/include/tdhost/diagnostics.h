// Host-specific checks: misuse reports (kept in a sink tests inspect, echoed to stderr) and
// the list of objects still open. Not part of the SDK surface.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "../dbidar.h"
#include "../platformexport.h"

class AcDbDatabase;

namespace tdhost {

enum class Misuse {
  kWriteNotEnabled,    // a modifier on an object not open for write
  kReadNotEnabled,     // a reader on a resident object that is not open
  kDoubleClose,        // close() of an object that is not open
  kCloseNotResident,   // close() of an object never added to a database
  kUseAfterErase,      // a modifier on an erased object
  kObjectLeftOpen,     // an object still open when its database ends
  kDeleteResident,     // delete of an object the database owns
};

struct Diagnostic {
  Misuse kind;
  std::string message;
};

TDHOST_API const char* misuseName(Misuse kind);
TDHOST_API void reportMisuse(Misuse kind, const std::string& message);
// Reports since the last clearDiagnostics(), oldest first.
TDHOST_API std::vector<Diagnostic> diagnostics();
TDHOST_API std::size_t countDiagnostics(Misuse kind);
TDHOST_API void clearDiagnostics();
// Whether reports are also written to stderr (on by default).
TDHOST_API void setDiagnosticsEcho(bool toStderr);

// Ids of the objects of `db` that are open now (read or write).
TDHOST_API AcDbObjectIdArray openObjects(const AcDbDatabase* db);
// Closes every open level of every open object of `db` (end of a command or a test, after
// the leak has been reported); returns how many objects were open.
TDHOST_API std::size_t closeOpenObjects(AcDbDatabase* db);

}  // namespace tdhost
