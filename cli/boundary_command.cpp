// tdutil boundary: the convex boundary of a drawing's survey points, drawn back into the
// drawing as a closed polyline on its own layer.
#include <clocale>
#include <cwchar>
#include <memory>
#include <string>
#include <vector>

#include "TDUtilW.h"
#include "arxHeaders.h"
#include "commands.h"
#include "dbents.h"
#include "dbpl.h"
#include "tdhost/dxf_io.h"

namespace tdutil {
namespace {

std::wstring widen(const std::string& text) {
  std::mbstate_t state{};
  const char* source = text.c_str();
  std::wstring wide(text.size(), L'\0');
  const size_t n = std::mbsrtowcs(wide.data(), &source, wide.size(), &state);
  if (n == static_cast<size_t>(-1)) throw InputError(text + ": the name is not valid UTF-8");
  wide.resize(n);
  return wide;
}

// Closes a host object when the scope ends.
template <typename T>
struct Closer {
  void operator()(T* object) const {
    if (object) object->close();
  }
};
template <typename T>
using Opened = std::unique_ptr<T, Closer<T>>;

Opened<AcDbBlockTableRecord> openModelSpace(AcDbDatabase& db, AcDb::OpenMode mode) {
  AcDbBlockTable* table = nullptr;
  if (db.getBlockTable(table, AcDb::kForRead) != Acad::eOk) throw InputError("the drawing has no block table");
  Opened<AcDbBlockTable> tableGuard(table);
  AcDbBlockTableRecord* model = nullptr;
  if (table->getAt(L"*Model_Space", model, mode) != Acad::eOk) throw InputError("the drawing has no model space");
  return Opened<AcDbBlockTableRecord>(model);
}

std::vector<SurvPoint> surveyPoints(AcDbDatabase& db, const std::wstring& layer) {
  std::vector<SurvPoint> points;
  Opened<AcDbBlockTableRecord> model = openModelSpace(db, AcDb::kForRead);
  AcDbBlockTableRecordIterator* raw = nullptr;
  if (model->newIterator(raw) != Acad::eOk) return points;
  std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
  for (; !it->done(); it->step()) {
    AcDbEntity* entity = nullptr;
    if (it->getEntity(entity, AcDb::kForRead) != Acad::eOk) continue;
    Opened<AcDbEntity> guard(entity);
    const AcDbPoint* point = AcDbPoint::cast(entity);
    if (!point) continue;
    if (!layer.empty()) {
      ACHAR* name = entity->layer();
      const bool onLayer = name && wcscasecmp(name, layer.c_str()) == 0;
      acutDelString(name);
      if (!onLayer) continue;
    }
    SurvPoint survey;
    const AcGePoint3d p = point->position();
    const double xyz[3] = {p.x, p.y, p.z};
    wchar_t handle[17];
    AcDbHandle h;
    entity->getAcDbHandle(h);
    h.getIntoAsciiBuffer(handle, 17);
    survey.set(xyz, nullptr, nullptr, 0, handle);
    points.push_back(survey);
  }
  return points;
}

void ensureLayer(AcDbDatabase& db, const std::wstring& name) {
  AcDbLayerTable* table = nullptr;
  if (db.getLayerTable(table, AcDb::kForWrite) != Acad::eOk) throw InputError("the drawing has no layer table");
  Opened<AcDbLayerTable> guard(table);
  if (table->has(name.c_str())) return;
  auto record = std::make_unique<AcDbLayerTableRecord>();
  if (record->setName(name.c_str()) != Acad::eOk) throw InputError("invalid layer name");
  AcCmColor red;
  red.setColorIndex(1);
  record->setColor(red);
  if (table->add(record.get()) != Acad::eOk) throw InputError("the layer could not be added");
  record.release()->close();
}

}  // namespace

int runBoundary(const BoundaryOptions& options) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  AcDbDatabase db(false, true);
  if (db.dxfIn(widen(options.input).c_str()) != Acad::eOk) throw InputError(tdhost::lastDxfMessage());
  // As in a command of the host: new entities take their defaults from the drawing at hand.
  acdbHostApplicationServices()->setWorkingDatabase(&db);

  const std::vector<SurvPoint> points = surveyPoints(db, widen(options.pointLayer));
  if (points.size() < 3) throw InputError(options.input + ": fewer than three survey points");
  std::vector<SurvPoint> input(points);
  std::vector<int> hull;
  ConvexHull maker;
  if (maker.Hull(input, hull) < 3) throw InputError(options.input + ": the points are collinear");

  const std::wstring layer = widen(options.layer);
  ensureLayer(db, layer);
  auto boundary = std::make_unique<AcDbPolyline>();
  for (size_t i = 0; i < hull.size(); ++i) {
    const SurvPoint& p = points[static_cast<size_t>(hull[i])];
    boundary->addVertexAt(static_cast<unsigned int>(i), AcGePoint2d(p.x, p.y));
  }
  boundary->setClosed(true);
  boundary->setDatabaseDefaults(&db);
  if (boundary->setLayer(layer.c_str()) != Acad::eOk) throw InputError("the boundary layer could not be set");
  double area = 0.0, perimeter = 0.0, endParam = 0.0;
  boundary->getArea(area);
  boundary->getEndParam(endParam);
  boundary->getDistAtParam(endParam, perimeter);
  {
    Opened<AcDbBlockTableRecord> model = openModelSpace(db, AcDb::kForWrite);
    if (model->appendAcDbEntity(boundary.get()) != Acad::eOk) throw InputError("the boundary could not be added");
    boundary.release()->close();
  }
  const Acad::ErrorStatus saved = db.dxfOut(widen(options.output).c_str());
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  if (saved != Acad::eOk) throw InputError(tdhost::lastDxfMessage());

  std::printf("%zu survey points, boundary of %zu vertices on layer %s: area %.3f, perimeter %.3f\n", points.size(),
              hull.size(), options.layer.c_str(), area, perimeter);
  std::printf("first vertices (point handle: easting, northing):\n");
  for (size_t i = 0; i < hull.size() && i < 5; ++i) {
    const SurvPoint& p = points[static_cast<size_t>(hull[i])];
    std::printf("  %ls: %.3f, %.3f\n", p.handle, p.x, p.y);
  }
  std::printf("written to %s\n", options.output.c_str());
  return 0;
}

}  // namespace tdutil
