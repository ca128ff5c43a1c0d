// AcDbDatabase header variables that the library reads and sets.
#include <cmath>

#include "database_impl.h"
#include "dbsymtb.h"
#include "object_access.h"

namespace {

// A record of the given class living in `db`.
bool isRecordOf(const AcDbDatabase* db, AcDbObjectId id, AcRxClass* cls) {
  AcDbObject* obj = tdhost::peek(id);
  return obj != nullptr && obj->database() == db && !obj->isErased() && obj->isKindOf(cls);
}

}  // namespace

AcDbObjectId AcDbDatabase::clayer() const { return mImpl->header.clayer; }
Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId id) {
  if (!isRecordOf(this, id, AcDbLayerTableRecord::desc())) return Acad::eInvalidInput;
  if (AcDbLayerTableRecord::cast(tdhost::peek(id))->isFrozen()) return Acad::eInvalidLayer;
  mImpl->header.clayer = id;
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::textstyle() const { return mImpl->header.textstyle; }
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId id) {
  if (!isRecordOf(this, id, AcDbTextStyleTableRecord::desc())) return Acad::eInvalidInput;
  mImpl->header.textstyle = id;
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::celtype() const { return mImpl->header.celtype; }
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId id) {
  if (!isRecordOf(this, id, AcDbLinetypeTableRecord::desc())) return Acad::eInvalidInput;
  mImpl->header.celtype = id;
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::dimstyle() const { return mImpl->header.dimstyle; }
Acad::ErrorStatus AcDbDatabase::setDimstyle(AcDbObjectId id) {
  if (!isRecordOf(this, id, AcDbDimStyleTableRecord::desc())) return Acad::eInvalidInput;
  mImpl->header.dimstyle = id;
  return Acad::eOk;
}

double AcDbDatabase::textsize() const { return mImpl->header.textsize; }
Acad::ErrorStatus AcDbDatabase::setTextsize(double size) {
  if (!(size > 0.0)) return Acad::eInvalidInput;
  mImpl->header.textsize = size;
  return Acad::eOk;
}

double AcDbDatabase::ltscale() const { return mImpl->header.ltscale; }
Acad::ErrorStatus AcDbDatabase::setLtscale(double scale) {
  if (!(scale > 0.0)) return Acad::eInvalidInput;
  mImpl->header.ltscale = scale;
  return Acad::eOk;
}

AcGePoint3d AcDbDatabase::ucsorg() const { return mImpl->header.ucsorg; }
AcGeVector3d AcDbDatabase::ucsxdir() const { return mImpl->header.ucsxdir; }
AcGeVector3d AcDbDatabase::ucsydir() const { return mImpl->header.ucsydir; }

Acad::ErrorStatus AcDbDatabase::setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                       const AcGeVector3d& yAxis) {
  double lx = xAxis.length(), ly = yAxis.length();
  if (lx < 1e-12 || ly < 1e-12 || std::fabs(xAxis.dotProduct(yAxis)) > 1e-9 * lx * ly) return Acad::eInvalidInput;
  mImpl->header.ucsorg = origin;
  mImpl->header.ucsxdir = xAxis / lx;
  mImpl->header.ucsydir = yAxis / ly;
  return Acad::eOk;
}

AcGePoint3d AcDbDatabase::extmin() const { return mImpl->header.extmin; }
AcGePoint3d AcDbDatabase::extmax() const { return mImpl->header.extmax; }
Acad::ErrorStatus AcDbDatabase::setExtmin(const AcGePoint3d& p) { mImpl->header.extmin = p; return Acad::eOk; }
Acad::ErrorStatus AcDbDatabase::setExtmax(const AcGePoint3d& p) { mImpl->header.extmax = p; return Acad::eOk; }
AcGePoint3d AcDbDatabase::insbase() const { return mImpl->header.insbase; }
Acad::ErrorStatus AcDbDatabase::setInsbase(const AcGePoint3d& p) { mImpl->header.insbase = p; return Acad::eOk; }
