// Host-specific access to the DXF reader and writer beyond the SDK entry points.
#pragma once

#include <string>

#include "../platformexport.h"

class AcDbDatabase;

namespace tdhost {

// The message of the last failed dxfIn/dxfOut of this thread ("file:line: group code N:
// problem" for malformed files); empty after a success.
TDHOST_API const std::string& lastDxfMessage();

// The drawing as DXF text and back, without files (tests, fuzzing, benchmarks). readDxfText
// returns the same statuses as dxfIn.
TDHOST_API std::string writeDxfText(AcDbDatabase& db, bool r2000 = false);
TDHOST_API int readDxfText(AcDbDatabase& db, const std::string& text, const std::string& source);

}  // namespace tdhost
