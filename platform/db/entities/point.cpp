// AcDbPoint: a point entity with thickness and an ECS rotation for its display.
#include "dbents.h"
#include "entities/entity_util.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbPoint)

AcDbPoint::AcDbPoint() = default;
AcDbPoint::AcDbPoint(const AcGePoint3d& position) : mPosition(position) {}
AcDbPoint::~AcDbPoint() = default;

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& pt) {
  if (Acad::ErrorStatus es = checkWrite("setPosition"); es != Acad::eOk) return es;
  mPosition = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setThickness(double thickness) {
  if (Acad::ErrorStatus es = checkWrite("setThickness"); es != Acad::eOk) return es;
  mThickness = thickness;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::setEcsRotation(double rotation) {
  if (Acad::ErrorStatus es = checkWrite("setEcsRotation"); es != Acad::eOk) return es;
  mEcsRotation = rotation;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  mPosition.transformBy(xform);
  mNormal = tdhost::transformNormal(mNormal, xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  extents = AcDbExtents(mPosition, mPosition);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mPosition);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPoint::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices) {
    if (i != 0) return Acad::eInvalidIndex;
    mPosition += offset;
  }
  return Acad::eOk;
}
