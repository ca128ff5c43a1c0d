// acedTrans: points and displacements between the world, the UCS, the current view's display
// system and entity (object) systems.
#include "acedads.h"
#include "coordinate_frames.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "object_access.h"

namespace {

// The extrusion direction that defines an entity's object system; entities whose
// coordinates are world coordinates (lines, points, 3D polylines, faces, rays, mtexts) have
// the world's.
AcGeVector3d entityNormal(const AcDbEntity& ent) {
  if (auto* e = AcDbArc::cast(&ent)) return e->normal();
  if (auto* e = AcDbCircle::cast(&ent)) return e->normal();
  if (auto* e = AcDbText::cast(&ent)) return e->normal();
  if (auto* e = AcDbBlockReference::cast(&ent)) return e->normal();
  if (auto* e = AcDbPolyline::cast(&ent)) return e->normal();
  if (auto* e = AcDb2dPolyline::cast(&ent)) return e->normal();
  if (AcDb2dVertex::cast(&ent) != nullptr) {
    // A vertex lies in its polyline's object system.
    if (auto* owner = AcDb2dPolyline::cast(tdhost::peek(ent.ownerId()))) return owner->normal();
  }
  return AcGeVector3d::kZAxis;
}

// The matrix from the coordinate system `rb` names to the world; false for one this host does
// not have. The entity is read without opening it, so a caller may hold it open.
bool systemToWorld(const resbuf* rb, AcGeMatrix3d& toWorld) {
  if (rb == nullptr) return false;
  if (rb->restype == RT3DPOINT) {
    toWorld = tdhost::entityToWorld(AcGeVector3d(rb->resval.rpoint[X], rb->resval.rpoint[Y], rb->resval.rpoint[Z]));
    return true;
  }
  if (rb->restype == RTENAME) {
    AcDbObjectId id;
    if (acdbGetObjectId(id, rb->resval.rlname) != Acad::eOk) return false;
    const auto* ent = AcDbEntity::cast(tdhost::peek(id));
    if (ent == nullptr || ent->isErased()) return false;
    toWorld = tdhost::entityToWorld(entityNormal(*ent));
    return true;
  }
  int code = -1;
  if (rb->restype == RTSHORT) code = rb->resval.rint;
  else if (rb->restype == RTLONG) code = rb->resval.rlong;
  if (code == 0) {
    toWorld.setToIdentity();
    return true;
  }
  // 1 and 2 belong to the working database; 3 (paper-space display) needs paper space.
  const AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (db == nullptr || (code != 1 && code != 2)) return false;
  if (code == 1) {
    toWorld = tdhost::ucsToWorld(*db);
    return true;
  }
  const AcDbViewportTableRecord* view = tdhost::activeViewport(*db);
  if (view == nullptr) return false;
  toWorld = tdhost::displayToWorld(*view);
  return true;
}

}  // namespace

int acedTrans(const ads_point pt, const resbuf* from, const resbuf* to, int disp, ads_point result) {
  if (pt == nullptr || result == nullptr) return RTERROR;
  AcGeMatrix3d fromSystem, toSystem;
  if (!systemToWorld(from, fromSystem) || !systemToWorld(to, toSystem)) return RTERROR;
  const AcGeMatrix3d m = toSystem.inverse() * fromSystem;
  AcGePoint3d p(pt[X], pt[Y], pt[Z]);
  if (disp != 0) p = AcGePoint3d::kOrigin + m * p.asVector();
  else p = m * p;
  result[X] = p.x;
  result[Y] = p.y;
  result[Z] = p.z;
  return RTNORM;
}
