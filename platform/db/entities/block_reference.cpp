// AcDbBlockReference: placement of a block's entities by position, scale, rotation and normal.
#include <algorithm>
#include <cmath>
#include <vector>

#include "dbents.h"
#include "dbsymtb.h"
#include "entities/entity_util.h"
#include "gemat3d.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbBlockReference)

namespace {

// A walk through nested blocks: the blocks being placed (a block inside itself is a cycle and
// left out) and how many more entities may be visited, so that blocks holding many references
// to blocks holding many references cannot take forever; past it the box is incomplete.
struct Walk {
  std::vector<AcDbObjectId> placing;
  long budget = 200000;
};

void addPlacedExtents(const AcDbBlockReference& ref, AcDbExtents& out, Walk& walk);

// One block entity under the placement matrix, read through copies (the block's entities are
// not open). Entities owning vertex objects cannot be moved as copies (a copy shares the
// vertices), so they give their points or their box, transformed.
void addPlacedEntity(const AcDbEntity& ent, const AcGeMatrix3d& m, AcDbExtents& out, Walk& walk) {
  auto copyOf = [&ent] { return std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(ent.clone())); };
  std::unique_ptr<AcDbEntity> copy = copyOf();
  if (!copy) return;
  if (auto* nested = AcDbBlockReference::cast(copy.get())) {
    if (nested->transformBy(m) == Acad::eOk) {
      addPlacedExtents(*nested, out, walk);
      return;
    }
    // A placement the reference cannot take (non-uniform): its own box, placed; within this
    // walk, so that a block inside itself still ends.
    AcDbExtents box;
    addPlacedExtents(*AcDbBlockReference::cast(&ent), box, walk);
    if (box.minPoint().x > box.maxPoint().x) return;
    box.transformBy(m);
    out.addExt(box);
    return;
  }
  if (auto* p3 = AcDb3dPolyline::cast(copy.get())) {
    AcGePoint3dArray pts;
    p3->getStretchPoints(pts);
    for (AcGePoint3d p : pts) out.addPoint(p.transformBy(m));
    return;
  }
  if (AcDb2dPolyline::cast(copy.get()) == nullptr) {
    AcDbExtents box;
    if (copy->transformBy(m) == Acad::eOk) {
      if (copy->getGeomExtents(box) == Acad::eOk) out.addExt(box);
      return;
    }
    copy = copyOf();  // a refused transform may have left it part changed
  }
  AcDbExtents box;
  if (copy->getGeomExtents(box) != Acad::eOk) return;
  box.transformBy(m);
  out.addExt(box);
}

void addPlacedExtents(const AcDbBlockReference& ref, AcDbExtents& out, Walk& walk) {
  const AcDbObjectId blockId = ref.blockTableRecord();
  if (std::find(walk.placing.begin(), walk.placing.end(), blockId) != walk.placing.end()) return;
  const auto* block = AcDbBlockTableRecord::cast(tdhost::peek(blockId));
  if (block == nullptr) return;
  walk.placing.push_back(blockId);
  const AcGeMatrix3d m = ref.blockTransform();
  for (const AcDbObjectId& id : block->entityIds()) {
    if (--walk.budget < 0) break;
    const auto* ent = AcDbEntity::cast(tdhost::peek(id));
    if (ent != nullptr && !ent->isErased()) addPlacedEntity(*ent, m, out, walk);
  }
  walk.placing.pop_back();
}

}  // namespace

AcDbBlockReference::AcDbBlockReference() = default;
AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec)
    : mBlockId(blockTableRec), mPosition(position) {}
AcDbBlockReference::~AcDbBlockReference() = default;

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId blockId) {
  if (Acad::ErrorStatus es = checkWrite("setBlockTableRecord"); es != Acad::eOk) return es;
  mBlockId = blockId;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
  if (Acad::ErrorStatus es = checkWrite("setPosition"); es != Acad::eOk) return es;
  mPosition = position;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
  if (Acad::ErrorStatus es = checkWrite("setScaleFactors"); es != Acad::eOk) return es;
  if (scale.sx == 0.0 || scale.sy == 0.0 || scale.sz == 0.0) return Acad::eInvalidInput;
  mScale = scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double newVal) {
  if (Acad::ErrorStatus es = checkWrite("setRotation"); es != Acad::eOk) return es;
  mRotation = tdhost::wrapAngle(newVal);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& newVal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (newVal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = newVal.normal();
  return Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  AcGePoint3d origin = AcGePoint3d::kOrigin;
  if (const auto* block = AcDbBlockTableRecord::cast(tdhost::peek(mBlockId))) origin = block->origin();
  AcGeMatrix3d scale;
  mScale.getMatrix(scale);
  return AcGeMatrix3d::translation(mPosition.asVector()) * tdhost::ocsToWorld(mNormal) *
         AcGeMatrix3d::rotation(mRotation, AcGeVector3d::kZAxis) * scale *
         AcGeMatrix3d::translation(-origin.asVector());
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double s = 1.0;
  if (!tdhost::uniformScale(xform, s)) return Acad::eCannotScaleNonUniformly;
  // The block's own axes in world, carried by the matrix, give the new rotation and normal.
  const AcGeMatrix3d toWorld = tdhost::ocsToWorld(mNormal);
  AcGeVector3d xAxis = AcGeVector3d(std::cos(mRotation), std::sin(mRotation), 0.0).transformBy(toWorld);
  AcGeVector3d zAxis = mNormal;
  xAxis.transformBy(xform);
  zAxis.transformBy(xform);
  const AcGeVector3d newNormal = tdhost::transformNormal(mNormal, xform);
  mRotation = tdhost::ocsAngle(xAxis, newNormal);
  mScale *= s;
  // A reflection leaves the block's z axis against the new normal.
  if (zAxis.dotProduct(newNormal) < 0.0) mScale.sz = -mScale.sz;
  mNormal = newNormal;
  mPosition.transformBy(xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  AcDbExtents box;
  Walk walk;
  addPlacedExtents(*this, box, walk);
  if (box.minPoint().x > box.maxPoint().x) return Acad::eInvalidExtents;
  extents = box;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mPosition);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices) {
    if (i != 0) return Acad::eInvalidIndex;
    mPosition += offset;
  }
  return Acad::eOk;
}
