// AcDbLine: a segment, parameterised by distance from its start.
#include "dbents.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "geplane.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbLine)

AcDbLine::AcDbLine() = default;
AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : mStart(start), mEnd(end) {}
AcDbLine::~AcDbLine() = default;

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& pt) {
  if (Acad::ErrorStatus es = checkWrite("setStartPoint"); es != Acad::eOk) return es;
  mStart = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& pt) {
  if (Acad::ErrorStatus es = checkWrite("setEndPoint"); es != Acad::eOk) return es;
  mEnd = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setThickness(double thickness) {
  if (Acad::ErrorStatus es = checkWrite("setThickness"); es != Acad::eOk) return es;
  mThickness = thickness;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  mStart.transformBy(xform);
  mEnd.transformBy(xform);
  mNormal = tdhost::transformNormal(mNormal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  extents = AcDbExtents();
  extents.addPoint(mStart);
  extents.addPoint(mEnd);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mStart);
  stretchPoints.append(mEnd);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices) {
    if (i == 0) mStart += offset;
    else if (i == 1) mEnd += offset;
    else return Acad::eInvalidIndex;
  }
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDbLine::subPath() const {
  auto path = std::make_shared<tdhost::CurvePath>();
  path->addLine(mStart, mEnd, 0.0, mStart.distanceTo(mEnd));
  path->finish(false, false);
  return path;
}

AcDbCurve* AcDbLine::subCurveBetween(double fromParam, double toParam) const {
  const double len = mStart.distanceTo(mEnd);
  const AcGeVector3d d = len > 0.0 ? (mEnd - mStart) / len : AcGeVector3d();
  auto* line = new AcDbLine(mStart + d * fromParam, mStart + d * toParam);
  line->mNormal = mNormal;
  line->mThickness = mThickness;
  tdhost::copyTraits(*this, *line);
  return line;
}

Acad::ErrorStatus AcDbLine::subExtendTo(bool atStart, double newParam) {
  const double len = mStart.distanceTo(mEnd);
  if (len <= 0.0) return Acad::eDegenerateGeometry;
  const AcGePoint3d p = mStart + (mEnd - mStart) * (newParam / len);
  (atStart ? mStart : mEnd) = p;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  auto* line = new AcDbLine(mStart.orthoProject(plane), mEnd.orthoProject(plane));
  line->mNormal = plane.normal();
  tdhost::copyTraits(*this, *line);
  projCurve = line;
  return Acad::eOk;
}
