// The DXF fields of the modelled entities, written through the filer after the common entity
// fields. Centres of circles and arcs are in the entity's object coordinate system.
#include <cmath>

#include "dbents.h"
#include "dbfiler.h"
#include "dbpl.h"

namespace {

constexpr double kRadToDeg = 180.0 / 3.141592653589793;

AcDb::DxfCode code(int groupCode) { return static_cast<AcDb::DxfCode>(groupCode); }

bool isWorldZ(const AcGeVector3d& normal) { return normal.x == 0.0 && normal.y == 0.0 && normal.z == 1.0; }

// The DXF arbitrary-axis algorithm: the object coordinate system of an extrusion direction.
AcGePoint3d worldToObject(const AcGePoint3d& p, const AcGeVector3d& normal) {
  if (isWorldZ(normal)) return p;
  const AcGeVector3d n = normal.normal();
  constexpr double kLimit = 1.0 / 64.0;
  const AcGeVector3d ax =
      (std::fabs(n.x) < kLimit && std::fabs(n.y) < kLimit ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis)
          .crossProduct(n)
          .normal();
  const AcGeVector3d ay = n.crossProduct(ax).normal();
  const AcGeVector3d v = p.asVector();
  return {v.dotProduct(ax), v.dotProduct(ay), v.dotProduct(n)};
}

void writeThicknessAndNormal(AcDbDxfFiler* filer, double thickness, const AcGeVector3d& normal) {
  if (thickness != 0.0) filer->writeDouble(code(39), thickness);
  if (!isWorldZ(normal)) filer->writeVector3d(code(210), normal);
}

}  // namespace

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbLine");
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  filer->writePoint3d(code(10), startPoint());
  filer->writePoint3d(code(11), endPoint());
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbCircle::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbCircle");
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  filer->writePoint3d(code(10), worldToObject(center(), normal()));
  filer->writeDouble(code(40), radius());
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  // An arc is a circle record followed by its angles, in degrees.
  filer->writeString(code(100), L"AcDbCircle");
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  filer->writePoint3d(code(10), worldToObject(center(), normal()));
  filer->writeDouble(code(40), radius());
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  filer->writeString(code(100), L"AcDbArc");
  filer->writeDouble(code(50), startAngle() * kRadToDeg);
  filer->writeDouble(code(51), endAngle() * kRadToDeg);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbPoint::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbEntity::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbPoint");
  filer->writePoint3d(code(10), position());
  writeThicknessAndNormal(filer, thickness(), normal());
  if (ecsRotation() != 0.0) filer->writeDouble(code(50), ecsRotation() * kRadToDeg);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbPolyline::dxfOutFields(AcDbDxfFiler* filer) const {
  if (const Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbPolyline");
  filer->writeInt32(code(90), static_cast<Adesk::Int32>(numVerts()));
  filer->writeInt16(code(70), isClosed() ? 1 : 0);
  double constantWidth = 0.0;
  const bool constant = getConstantWidth(constantWidth) == Acad::eOk;
  if (constant) filer->writeDouble(code(43), constantWidth);
  if (elevation() != 0.0) filer->writeDouble(code(38), elevation());
  if (thickness() != 0.0) filer->writeDouble(code(39), thickness());
  for (unsigned int i = 0; i < numVerts(); ++i) {
    AcGePoint2d pt;
    double bulge = 0.0, startWidth = 0.0, endWidth = 0.0;
    getPointAt(i, pt);
    getBulgeAt(i, bulge);
    getWidthsAt(i, startWidth, endWidth);
    filer->writePoint2d(code(10), pt);
    if (!constant && (startWidth != 0.0 || endWidth != 0.0)) {
      filer->writeDouble(code(40), startWidth);
      filer->writeDouble(code(41), endWidth);
    }
    if (bulge != 0.0) filer->writeDouble(code(42), bulge);
  }
  if (!isWorldZ(normal())) filer->writeVector3d(code(210), normal());
  return filer->filerStatus();
}
