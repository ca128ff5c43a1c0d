// libFuzzer target for the DXF reader: any input must load into a database or be rejected
// with a status, never crash, hang or raise a sanitizer report. Whatever loads must also save.
#include <cstddef>
#include <cstdint>
#include <string>

#include "arxHeaders.h"
#include "tdhost/diagnostics.h"
#include "tdhost/dxf_io.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool quiet = (tdhost::setDiagnosticsEcho(false), true);
  (void)quiet;
  const std::string text(reinterpret_cast<const char*>(data), size);
  AcDbDatabase db(false, true);
  if (tdhost::readDxfText(db, text, "fuzz.dxf") == Acad::eOk) {
    const std::string saved = tdhost::writeDxfText(db);
    AcDbDatabase again(false, true);
    if (tdhost::readDxfText(again, saved, "saved.dxf") != Acad::eOk) __builtin_trap();
  }
  tdhost::clearDiagnostics();
  return 0;
}
