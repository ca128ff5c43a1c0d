// Reading a whole DXF file into a database. Internal to the host; the SDK entry point is
// AcDbDatabase::dxfIn.
#pragma once

#include <memory>
#include <string>
#include <string_view>

class AcDbDatabase;
class AcDbStub;

namespace tdhost {
struct RawText;
}

namespace tdhost::dxf {

struct DxfState;
struct DxfStateDeleter {
  void operator()(DxfState* s) const;
};

// Replaces the contents of `db` with the drawing in `text` (ASCII DXF R12..R2018). Throws
// DxfError, naming `source`, line and group code, before changing anything when the file is
// not well-formed DXF. The drawing keeps `text`: its objects' kept tags point into it.
void loadDxfText(AcDbDatabase& db, std::shared_ptr<RawText> text, const std::string& source);
// The same for text the caller keeps (copied once).
void loadDxfText(AcDbDatabase& db, std::string_view text, const std::string& source);

// Called before a loaded object is first opened for write: what it holds then is what the
// file said, to be compared when it is saved.
void beforeFirstWrite(DxfState& state, AcDbStub* stub);

}  // namespace tdhost::dxf
