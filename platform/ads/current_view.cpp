// The current view: the *Active viewport record of the working database, the screen it is
// shown on, acedSetCurrentView and the view system variables.
#include <algorithm>
#include <cmath>

#include "aced.h"
#include "coordinate_frames.h"
#include "dbapserv.h"
#include "dbsymtb.h"
#include "system_variables.h"
#include "tdhost/screen.h"

namespace tdhost {

namespace {

ScreenSize gScreen{1600, 900};

double screenAspect() { return static_cast<double>(gScreen.width) / gScreen.height; }

using View = AcDbViewportTableRecord;

// Getters of the view variables: RTERROR when the drawing has no current view.
template <double (AcDbAbstractViewTableRecord::*Field)() const>
int viewReal(AcDbDatabase* db, SysVarValue& value) {
  const View* view = activeViewport(*db);
  if (view == nullptr) return RTERROR;
  value = (view->*Field)();
  return RTNORM;
}

template <AcGePoint3d (*Read)(const AcDbDatabase&, const View&)>
int viewPoint(AcDbDatabase* db, SysVarValue& value) {
  const View* view = activeViewport(*db);
  if (view == nullptr) return RTERROR;
  value = Read(*db, *view);
  return RTNORM;
}

// The record keeps the centre in display coordinates.
AcGePoint3d centreInUcs(const AcDbDatabase& db, const View& view) {
  const AcGePoint2d c = view.centerPoint();
  return ucsToWorld(db).inverse() * (displayToWorld(view) * AcGePoint3d(c.x, c.y, 0.0));
}

AcGePoint3d directionInUcs(const AcDbDatabase& db, const View& view) {
  return AcGePoint3d::kOrigin + ucsToWorld(db).inverse() * view.viewDirection();
}

AcGePoint3d targetInUcs(const AcDbDatabase& db, const View& view) { return ucsToWorld(db).inverse() * view.target(); }

}  // namespace

ScreenSize screenSize() { return gScreen; }

Acad::ErrorStatus setScreenSize(int width, int height) {
  if (width <= 0 || height <= 0) return Acad::eInvalidInput;
  gScreen = {width, height};
  return Acad::eOk;
}

// All read-only, as on the host, where views change through commands and acedSetCurrentView.
// Points and directions are in the UCS, except the twist, which is measured from the WCS.
void registerViewVariables(SysVarRegistry& registry) {
  using Record = AcDbAbstractViewTableRecord;
  registry.add(L"VIEWCTR", {RT3DPOINT, true, viewPoint<centreInUcs>});
  registry.add(L"VIEWDIR", {RT3DPOINT, true, viewPoint<directionInUcs>});
  registry.add(L"TARGET", {RT3DPOINT, true, viewPoint<targetInUcs>});
  registry.add(L"VIEWSIZE", {RTREAL, true, viewReal<&Record::height>});
  registry.add(L"VIEWTWIST", {RTREAL, true, viewReal<&Record::viewTwist>});
  registry.add(L"LENSLENGTH", {RTREAL, true, viewReal<&Record::lensLength>});
  registry.add(L"FRONTZ", {RTREAL, true, viewReal<&Record::frontClipDistance>});
  registry.add(L"BACKZ", {RTREAL, true, viewReal<&Record::backClipDistance>});
  registry.add(L"SCREENSIZE", {RTPOINT, false, [](AcDbDatabase*, SysVarValue& v) {
                                 v = AcGePoint3d(gScreen.width, gScreen.height, 0.0);
                                 return RTNORM;
                               }});
}

}  // namespace tdhost

Acad::ErrorStatus acedSetCurrentView(AcDbViewTableRecord* pVwRec, AcDbViewport* pVP) {
  if (pVwRec == nullptr) return Acad::eNullObjectPointer;
  if (pVP != nullptr) return Acad::eInvalidInput;
  if (pVwRec->isPaperspaceView()) return Acad::eNotInPaperspace;
  // The whole window stays visible: the screen's aspect decides which side limits the height.
  const double aspect = tdhost::screenAspect();
  const double height = std::max(pVwRec->height(), pVwRec->width() / aspect);
  if (!(height > 0.0) || !std::isfinite(height)) return Acad::eInvalidInput;

  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr) return Acad::eNoDatabase;
  AcDbViewportTable* table = nullptr;
  if (Acad::ErrorStatus es = db->getViewportTable(table, AcDb::kForRead); es != Acad::eOk) return es;
  AcDbObjectId activeId;
  const Acad::ErrorStatus found = table->getAt(L"*Active", activeId);
  table->close();
  if (found != Acad::eOk) return found;
  AcDbViewportTableRecord* active = nullptr;
  if (Acad::ErrorStatus es = acdbOpenObject(active, activeId, AcDb::kForWrite); es != Acad::eOk) return es;

  active->setCenterPoint(pVwRec->centerPoint());
  active->setHeight(height);
  active->setWidth(height * aspect);
  active->setViewDirection(pVwRec->viewDirection());
  active->setTarget(pVwRec->target());
  active->setViewTwist(pVwRec->viewTwist());
  active->setLensLength(pVwRec->lensLength());
  active->setFrontClipDistance(pVwRec->frontClipDistance());
  active->setBackClipDistance(pVwRec->backClipDistance());
  active->setFrontClipEnabled(pVwRec->frontClipEnabled());
  active->setBackClipEnabled(pVwRec->backClipEnabled());
  active->setFrontClipAtEye(pVwRec->frontClipAtEye());
  active->setPerspectiveEnabled(pVwRec->perspectiveEnabled());
  return active->close();
}
