// Reading a whole DXF file into a database. Internal to the host; the SDK entry point is
// AcDbDatabase::dxfIn.
#pragma once

#include <string>

class AcDbDatabase;

namespace tdhost::dxf {

struct DxfState;
struct DxfStateDeleter {
  void operator()(DxfState* s) const;
};

// Replaces the contents of `db` with the drawing in `text` (ASCII DXF R12..R2018). Throws
// DxfError, naming `source`, line and group code, before changing anything when the file is
// not well-formed DXF.
void loadDxfText(AcDbDatabase& db, std::string text, const std::string& source);

}  // namespace tdhost::dxf
