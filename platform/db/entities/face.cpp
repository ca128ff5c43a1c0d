// AcDbFace: four corners with per-edge visibility.
#include "dbents.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbFace)

AcDbFace::AcDbFace() = default;

AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, const AcGePoint3d& pt3,
                   bool e0vis, bool e1vis, bool e2vis, bool e3vis)
    : mPts{pt0, pt1, pt2, pt3}, mVisible{e0vis, e1vis, e2vis, e3vis} {}

AcDbFace::AcDbFace(const AcGePoint3d& pt0, const AcGePoint3d& pt1, const AcGePoint3d& pt2, bool e0vis, bool e1vis,
                   bool e2vis, bool e3vis)
    : AcDbFace(pt0, pt1, pt2, pt2, e0vis, e1vis, e2vis, e3vis) {}

AcDbFace::~AcDbFace() = default;

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& pt) const {
  if (Acad::ErrorStatus es = checkRead("getVertexAt"); es != Acad::eOk) return es;
  if (index > 3) return Acad::eInvalidIndex;
  pt = mPts[index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& pt) {
  if (Acad::ErrorStatus es = checkWrite("setVertexAt"); es != Acad::eOk) return es;
  if (index > 3) return Acad::eInvalidIndex;
  mPts[index] = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const {
  if (Acad::ErrorStatus es = checkRead("isEdgeVisibleAt"); es != Acad::eOk) return es;
  if (index > 3) return Acad::eInvalidIndex;
  visible = mVisible[index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
  if (Acad::ErrorStatus es = checkWrite("makeEdgeVisibleAt"); es != Acad::eOk) return es;
  if (index > 3) return Acad::eInvalidIndex;
  mVisible[index] = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
  if (Acad::ErrorStatus es = checkWrite("makeEdgeInvisibleAt"); es != Acad::eOk) return es;
  if (index > 3) return Acad::eInvalidIndex;
  mVisible[index] = false;
  return Acad::eOk;
}

// Corners are plain points, so any affine matrix applies.
Acad::ErrorStatus AcDbFace::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  for (AcGePoint3d& p : mPts) p.transformBy(xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  extents = AcDbExtents();
  for (const AcGePoint3d& p : mPts) extents.addPoint(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  for (const AcGePoint3d& p : mPts) stretchPoints.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices)
    if (i < 0 || i > 3) return Acad::eInvalidIndex;
  for (int i : indices) mPts[i] += offset;
  return Acad::eOk;
}
