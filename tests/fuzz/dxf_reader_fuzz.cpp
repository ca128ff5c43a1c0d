// libFuzzer target for the DXF reader: any input must load into a database or be rejected
// with a status, never crash, hang or raise a sanitizer report. Whatever loads must also save.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "arxHeaders.h"
#include "tdhost/diagnostics.h"
#include "tdhost/dxf_io.h"

namespace {

// Entities read into modelled classes answer queries and take edits, whatever their fields.
void exerciseLoaded(AcDbDatabase& db) {
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db.currentSpaceId(), AcDb::kForRead) != Acad::eOk) return;
  const std::vector<AcDbObjectId> ids = space->entityIds();
  space->close();
  for (const AcDbObjectId& id : ids) {
    AcDbEntity* ent = nullptr;
    if (acdbOpenObject(ent, id, AcDb::kForWrite) != Acad::eOk) continue;
    AcDbExtents box;
    ent->getGeomExtents(box);
    if (auto* curve = AcDbCurve::cast(ent)) {
      double endParam = 0.0, length = 0.0;
      if (curve->getEndParam(endParam) == Acad::eOk) curve->getDistAtParam(endParam, length);
    }
    // An edit makes the writer merge the class's fields into the kept record.
    if (AcDbLine::cast(ent) || AcDbPolyline::cast(ent) || AcDbText::cast(ent) || AcDbMText::cast(ent) ||
        AcDbBlockReference::cast(ent) || AcDb2dPolyline::cast(ent) || AcDb3dPolyline::cast(ent)) {
      AcGeMatrix3d shift;
      shift.setToTranslation(AcGeVector3d(1.0, 0.0, 0.0));
      ent->transformBy(shift);
    }
    ent->close();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool quiet = (tdhost::setDiagnosticsEcho(false), true);
  (void)quiet;
  const std::string text(reinterpret_cast<const char*>(data), size);
  AcDbDatabase db(false, true);
  if (tdhost::readDxfText(db, text, "fuzz.dxf") == Acad::eOk) {
    exerciseLoaded(db);
    const std::string saved = tdhost::writeDxfText(db);
    AcDbDatabase again(false, true);
    if (tdhost::readDxfText(again, saved, "saved.dxf") != Acad::eOk) __builtin_trap();
  }
  tdhost::clearDiagnostics();
  return 0;
}
