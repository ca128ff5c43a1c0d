// Old-style 2D and 3D polylines: vertices are database objects the polyline owns; the curve
// is built from them on each query (a vertex can change without its polyline being opened).
#include <cmath>

#include "database_impl.h"
#include "dbents.h"
#include "dbidmap.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "ge/bulge_segment.h"
#include "host_init.h"
#include "object_access.h"

TDHOST_DEFINE_MEMBERS(AcDbVertex)
TDHOST_DEFINE_MEMBERS(AcDb2dVertex)
TDHOST_DEFINE_MEMBERS(AcDb3dPolylineVertex)
TDHOST_DEFINE_MEMBERS(AcDb2dPolyline)
TDHOST_DEFINE_MEMBERS(AcDb3dPolyline)

using tdhost::ObjectAccess;
using tdhost::ge::BulgeSegment;

namespace tdhost {

VertexStore::VertexStore() = default;
VertexStore::~VertexStore() = default;

VertexStore::VertexStore(const VertexStore& other) : mIds(other.mIds) {
  for (const auto& v : other.mHeld) mHeld.emplace_back(static_cast<AcDbVertex*>(v->clone()));
}

VertexStore& VertexStore::operator=(const VertexStore& other) {
  if (this == &other) return *this;
  mIds = other.mIds;
  mHeld.clear();
  for (const auto& v : other.mHeld) mHeld.emplace_back(static_cast<AcDbVertex*>(v->clone()));
  return *this;
}

Acad::ErrorStatus VertexStore::insert(AcDbEntity& owner, std::size_t pos, AcDbVertex* v, AcDbObjectId& id) {
  id.setNull();
  if (v == nullptr) return Acad::eNullObjectPointer;
  if (!v->objectId().isNull()) return Acad::eAlreadyInDb;
  if (pos > count()) return Acad::eInvalidIndex;
  copyTraits(owner, *v);
  AcDbDatabase* db = owner.database();
  if (db == nullptr) {
    mHeld.emplace(mHeld.begin() + static_cast<std::ptrdiff_t>(pos), v);
    return Acad::eOk;
  }
  ObjectAccess::setOwner(*v, owner.objectId());
  id = AcDbObjectId(db->impl().adopt(std::unique_ptr<AcDbObject>(v)));
  mIds.insert(mIds.begin() + static_cast<std::ptrdiff_t>(pos), id);
  return Acad::eOk;
}

std::size_t VertexStore::find(AcDbObjectId id, const AcDbVertex* v) const {
  for (std::size_t i = 0; i < mIds.size(); ++i)
    if ((!id.isNull() && mIds[i] == id) || (v != nullptr && peek(mIds[i]) == v)) return i;
  for (std::size_t i = 0; i < mHeld.size(); ++i)
    if (v != nullptr && mHeld[i].get() == v) return i;
  return count();
}

std::vector<const AcDbVertex*> VertexStore::live() const {
  std::vector<const AcDbVertex*> out;
  for (const AcDbObjectId& id : mIds) {
    const AcDbObject* o = peek(id);
    if (o != nullptr && !o->isErased()) out.push_back(static_cast<const AcDbVertex*>(o));
  }
  for (const auto& v : mHeld) out.push_back(v.get());
  return out;
}

std::vector<AcDbVertex*> VertexStore::touchLive() {
  std::vector<AcDbVertex*> out;
  for (const AcDbObjectId& id : mIds) {
    const AcDbObject* o = peek(id);
    if (o != nullptr && !o->isErased()) out.push_back(static_cast<AcDbVertex*>(touch(id)));
  }
  for (const auto& v : mHeld) out.push_back(v.get());
  return out;
}

AcDbObjectIterator* VertexStore::iterator() const {
  AcDbObjectIdArray ids;
  AcArray<AcDbEntity*> ents;
  for (const AcDbObjectId& id : mIds) {
    ids.append(id);
    ents.append(nullptr);
  }
  for (const auto& v : mHeld) {
    ids.append(AcDbObjectId::kNull);
    ents.append(v.get());
  }
  return new AcDbObjectIterator(ids, ents);
}

void VertexStore::ownedIds(AcDbObjectIdArray& ids) const {
  for (const AcDbObjectId& id : mIds) ids.append(id);
}

void VertexStore::translateIds(const AcDbIdMapping& idMap) {
  for (AcDbObjectId& id : mIds) {
    AcDbIdPair pair(id, AcDbObjectId::kNull, false);
    if (idMap.compute(pair) && !pair.value().isNull()) id = pair.value();
  }
}

void VertexStore::setErased(bool erasing) {
  // Each vertex's change is its own undo record, so undoing the owner's erase restores them.
  for (const AcDbObjectId& id : mIds) {
    AcDbStub* stub = id;
    AcDbObject* o = peek(id);
    if (o == nullptr || o->isErased() == erasing) continue;
    stub->database->impl().undo->recordErased(stub, erasing);
    ObjectAccess::setErased(*o, erasing);
  }
}

void VertexStore::addToDatabase(AcDbEntity& owner) {
  AcDbDatabase* db = owner.database();
  if (db == nullptr) return;
  for (auto& v : mHeld) {
    ObjectAccess::setOwner(*v, owner.objectId());
    if (v->layerId().isNull()) v->setLayer(owner.layerId());
    AcDbStub* stub = db->impl().adopt(std::unique_ptr<AcDbObject>(v.release()));
    stub->object->close();
    mIds.push_back(AcDbObjectId(stub));
  }
  mHeld.clear();
}

}  // namespace tdhost

AcDbVertex::AcDbVertex() = default;
AcDbVertex::~AcDbVertex() = default;

// ---- AcDb2dVertex

AcDb2dVertex::AcDb2dVertex() = default;
AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& position, double bulge, double startWidth, double endWidth,
                           double tangent)
    : mPosition(position), mBulge(bulge), mStartWidth(startWidth), mEndWidth(endWidth), mTangent(tangent) {}
AcDb2dVertex::~AcDb2dVertex() = default;

#define TDHOST_VERTEX_SETTER(CLASS, NAME, TYPE, FIELD)                             \
  Acad::ErrorStatus CLASS::NAME(TYPE value) {                                      \
    if (Acad::ErrorStatus es = checkWrite(#NAME); es != Acad::eOk) return es;     \
    FIELD = value;                                                                 \
    return Acad::eOk;                                                              \
  }

TDHOST_VERTEX_SETTER(AcDb2dVertex, setPosition, const AcGePoint3d&, mPosition)
TDHOST_VERTEX_SETTER(AcDb2dVertex, setBulge, double, mBulge)
TDHOST_VERTEX_SETTER(AcDb2dVertex, setStartWidth, double, mStartWidth)
TDHOST_VERTEX_SETTER(AcDb2dVertex, setEndWidth, double, mEndWidth)
TDHOST_VERTEX_SETTER(AcDb2dVertex, setTangent, double, mTangent)
TDHOST_VERTEX_SETTER(AcDb3dPolylineVertex, setPosition, const AcGePoint3d&, mPosition)

Acad::ErrorStatus AcDb2dVertex::useTangent() {
  if (Acad::ErrorStatus es = checkWrite("useTangent"); es != Acad::eOk) return es;
  mTangentUsed = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::ignoreTangent() {
  if (Acad::ErrorStatus es = checkWrite("ignoreTangent"); es != Acad::eOk) return es;
  mTangentUsed = false;
  return Acad::eOk;
}

// The position is in the owner's coordinate system, which only the owner can transform.
Acad::ErrorStatus AcDb2dVertex::transformBy(const AcGeMatrix3d&) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  return Acad::eNotApplicable;
}

// ---- AcDb3dPolylineVertex

AcDb3dPolylineVertex::AcDb3dPolylineVertex() = default;
AcDb3dPolylineVertex::AcDb3dPolylineVertex(const AcGePoint3d& position) : mPosition(position) {}
AcDb3dPolylineVertex::~AcDb3dPolylineVertex() = default;

Acad::ErrorStatus AcDb3dPolylineVertex::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  mPosition.transformBy(xform);
  return Acad::eOk;
}

// ---- shared vertex bookkeeping of both kinds

namespace {

template <class Vertex>
Acad::ErrorStatus insertAfter(tdhost::VertexStore& store, AcDbObjectId indexId, const Vertex* indexVert,
                              std::size_t& pos) {
  if (indexId.isNull() && indexVert == nullptr) {
    pos = 0;
    return Acad::eOk;
  }
  const std::size_t at = store.find(indexId, indexVert);
  if (at >= store.count()) return Acad::eInvalidInput;
  pos = at + 1;
  return Acad::eOk;
}

template <class Vertex>
Acad::ErrorStatus openOwnedVertex(const AcDbObject& owner, Vertex*& vertex, AcDbObjectId id, AcDb::OpenMode mode,
                                  bool openErased) {
  vertex = nullptr;
  if (Acad::ErrorStatus es = acdbOpenObject(vertex, id, mode, openErased); es != Acad::eOk) return es;
  if (vertex->ownerId() != owner.objectId()) {
    vertex->close();
    vertex = nullptr;
    return Acad::eInvalidInput;
  }
  return Acad::eOk;
}

}  // namespace

// ---- AcDb2dPolyline

AcDb2dPolyline::AcDb2dPolyline() = default;

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation,
                               bool closed, double defStartWidth, double defEndWidth,
                               const AcGeDoubleArray* bulges)
    : mElevation(elevation), mDefStartWidth(defStartWidth), mDefEndWidth(defEndWidth), mPolyType(type),
      mClosed(closed) {
  for (int i = 0; i < vertices.length(); ++i) {
    const double bulge = bulges != nullptr && i < bulges->length() ? (*bulges)[i] : 0.0;
    AcGePoint3d p = vertices[i];
    p.z = elevation;
    AcDbObjectId id;
    insertAt(mVertices.count(), new AcDb2dVertex(p, bulge, defStartWidth, defEndWidth), id);
  }
}

AcDb2dPolyline::~AcDb2dPolyline() = default;

Acad::ErrorStatus AcDb2dPolyline::insertAt(std::size_t pos, AcDb2dVertex* v, AcDbObjectId& id) {
  if (Acad::ErrorStatus es = checkWrite("appendVertex"); es != Acad::eOk) return es;
  if (v != nullptr) v->mPosition.z = mElevation;
  return mVertices.insert(*this, pos, v, id);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* pNewVertex) {
  AcDbObjectId id;
  return insertAt(mVertices.count(), pNewVertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& objId, AcDb2dVertex* pNewVertex) {
  return insertAt(mVertices.count(), pNewVertex, objId);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(const AcDb2dVertex* pIndexVert, AcDb2dVertex* pNewVertex) {
  std::size_t pos = 0;
  if (Acad::ErrorStatus es = insertAfter(mVertices, AcDbObjectId::kNull, pIndexVert, pos); es != Acad::eOk)
    return es;
  AcDbObjectId id;
  return insertAt(pos, pNewVertex, id);
}

Acad::ErrorStatus AcDb2dPolyline::insertVertexAt(AcDbObjectId& newVertId, const AcDbObjectId& indexVertId,
                                                 AcDb2dVertex* pNewVertex) {
  std::size_t pos = 0;
  if (Acad::ErrorStatus es = insertAfter<AcDb2dVertex>(mVertices, indexVertId, nullptr, pos); es != Acad::eOk)
    return es;
  return insertAt(pos, pNewVertex, newVertId);
}

Acad::ErrorStatus AcDb2dPolyline::openVertex(AcDb2dVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                                             bool openErasedOne) const {
  return openOwnedVertex(*this, pVertex, vertId, mode, openErasedOne);
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const { return mVertices.iterator(); }

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vert) const {
  AcGePoint3d p(vert.position().x, vert.position().y, mElevation);
  return p.transformBy(tdhost::ocsToWorld(mNormal));
}

#define TDHOST_POLY_SETTER(CLASS, NAME, TYPE, FIELD)                               \
  Acad::ErrorStatus CLASS::NAME(TYPE value) {                                      \
    if (Acad::ErrorStatus es = checkWrite(#NAME); es != Acad::eOk) return es;     \
    FIELD = value;                                                                 \
    return Acad::eOk;                                                              \
  }

TDHOST_POLY_SETTER(AcDb2dPolyline, setPolyType, AcDb::Poly2dType, mPolyType)
TDHOST_POLY_SETTER(AcDb2dPolyline, setThickness, double, mThickness)
TDHOST_POLY_SETTER(AcDb2dPolyline, setDefaultStartWidth, double, mDefStartWidth)
TDHOST_POLY_SETTER(AcDb2dPolyline, setDefaultEndWidth, double, mDefEndWidth)
TDHOST_POLY_SETTER(AcDb3dPolyline, setPolyType, AcDb::Poly3dType, mPolyType)

Acad::ErrorStatus AcDb2dPolyline::makeClosed() {
  if (Acad::ErrorStatus es = checkWrite("makeClosed"); es != Acad::eOk) return es;
  mClosed = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::makeOpen() {
  if (Acad::ErrorStatus es = checkWrite("makeOpen"); es != Acad::eOk) return es;
  mClosed = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOn() {
  if (Acad::ErrorStatus es = checkWrite("setLinetypeGenerationOn"); es != Acad::eOk) return es;
  mLinetypeGen = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setLinetypeGenerationOff() {
  if (Acad::ErrorStatus es = checkWrite("setLinetypeGenerationOff"); es != Acad::eOk) return es;
  mLinetypeGen = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setElevation(double elev) {
  if (Acad::ErrorStatus es = checkWrite("setElevation"); es != Acad::eOk) return es;
  mElevation = elev;
  for (AcDbVertex* v : mVertices.touchLive()) static_cast<AcDb2dVertex*>(v)->mPosition.z = elev;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

std::vector<const AcDb2dVertex*> AcDb2dPolyline::curveVertices() const {
  std::vector<const AcDb2dVertex*> out;
  for (const AcDbVertex* v : mVertices.live()) {
    const auto* v2 = static_cast<const AcDb2dVertex*>(v);
    if (v2->vertexType() != AcDb::k2dSplineCtlVertex) out.push_back(v2);
  }
  return out;
}

Acad::ErrorStatus AcDb2dPolyline::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double scale = 1.0;
  if (!tdhost::uniformScale(xform, scale)) return Acad::eCannotScaleNonUniformly;
  const AcGeMatrix3d toWorld = tdhost::ocsToWorld(mNormal);
  const AcGeVector3d newNormal = tdhost::transformNormal(mNormal, xform);
  // The image of the OCS axes keeps every bulge's sense about the new normal.
  const AcGeMatrix3d toOcs = tdhost::ocsToWorld(newNormal).inverse();
  AcGePoint3d origin(0, 0, mElevation);
  double elevation = origin.transformBy(toWorld).transformBy(xform).transformBy(toOcs).z;
  std::vector<AcDbVertex*> verts = mVertices.touchLive();
  for (std::size_t i = 0; i < verts.size(); ++i) {
    auto* v = static_cast<AcDb2dVertex*>(verts[i]);
    AcGePoint3d p(v->mPosition.x, v->mPosition.y, mElevation);
    p.transformBy(toWorld).transformBy(xform).transformBy(toOcs);
    if (i == 0) elevation = p.z;
    v->mPosition = p;
    v->mStartWidth *= scale;
    v->mEndWidth *= scale;
  }
  for (AcDbVertex* v : verts) static_cast<AcDb2dVertex*>(v)->mPosition.z = elevation;
  mElevation = elevation;
  mNormal = newNormal;
  mThickness *= scale;
  mDefStartWidth *= scale;
  mDefEndWidth *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  for (const AcDbVertex* v : mVertices.live()) stretchPoints.append(vertexPosition(*static_cast<const AcDb2dVertex*>(v)));
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  const std::size_t n = mVertices.live().size();
  for (int i : indices)
    if (i < 0 || static_cast<std::size_t>(i) >= n) return Acad::eInvalidIndex;
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(mNormal, x, y);
  std::vector<AcDbVertex*> verts = mVertices.touchLive();
  for (int i : indices) static_cast<AcDb2dVertex*>(verts[i])->mPosition += AcGeVector3d(offset.dotProduct(x), offset.dotProduct(y), 0.0);
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDb2dPolyline::subPath() const {
  auto path = std::make_shared<tdhost::CurvePath>();
  const std::vector<const AcDb2dVertex*> v = curveVertices();
  const std::size_t n = v.size();
  const std::size_t segs = n < 2 ? 0 : (mClosed ? n : n - 1);
  for (std::size_t i = 0; i < segs; ++i) {
    const AcDb2dVertex& a = *v[i];
    const AcDb2dVertex& b = *v[(i + 1) % n];
    BulgeSegment seg(AcGePoint2d(a.position().x, a.position().y), AcGePoint2d(b.position().x, b.position().y),
                     a.bulge());
    path->addBulge(seg, mNormal, mElevation, static_cast<double>(i), i + 1.0);
  }
  path->finish(mClosed, false);
  return path;
}

void AcDb2dPolyline::subOwnedIds(AcDbObjectIdArray& ids) const {
  AcDbCurve::subOwnedIds(ids);
  mVertices.ownedIds(ids);
}

void AcDb2dPolyline::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbCurve::subTranslateIds(idMap);
  mVertices.translateIds(idMap);
}

Acad::ErrorStatus AcDb2dPolyline::subErase(bool erasing) {
  mVertices.setErased(erasing);
  return AcDbCurve::subErase(erasing);
}

void AcDb2dPolyline::subAddedToDatabase() { mVertices.addToDatabase(*this); }

// ---- AcDb3dPolyline

AcDb3dPolyline::AcDb3dPolyline() = default;

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& vertices, bool closed)
    : mPolyType(type), mClosed(closed) {
  for (int i = 0; i < vertices.length(); ++i) {
    AcDbObjectId id;
    insertAt(mVertices.count(), new AcDb3dPolylineVertex(vertices[i]), id);
  }
}

AcDb3dPolyline::~AcDb3dPolyline() = default;

Acad::ErrorStatus AcDb3dPolyline::insertAt(std::size_t pos, AcDb3dPolylineVertex* v, AcDbObjectId& id) {
  if (Acad::ErrorStatus es = checkWrite("appendVertex"); es != Acad::eOk) return es;
  return mVertices.insert(*this, pos, v, id);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* pNewVertex) {
  AcDbObjectId id;
  return insertAt(mVertices.count(), pNewVertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& objId, AcDb3dPolylineVertex* pNewVertex) {
  return insertAt(mVertices.count(), pNewVertex, objId);
}

Acad::ErrorStatus AcDb3dPolyline::insertVertexAt(const AcDb3dPolylineVertex* pIndexVert,
                                                 AcDb3dPolylineVertex* pNewVertex) {
  std::size_t pos = 0;
  if (Acad::ErrorStatus es = insertAfter(mVertices, AcDbObjectId::kNull, pIndexVert, pos); es != Acad::eOk)
    return es;
  AcDbObjectId id;
  return insertAt(pos, pNewVertex, id);
}

Acad::ErrorStatus AcDb3dPolyline::insertVertexAt(AcDbObjectId& newVertId, const AcDbObjectId& indexVertId,
                                                 AcDb3dPolylineVertex* pNewVertex) {
  std::size_t pos = 0;
  if (Acad::ErrorStatus es = insertAfter<AcDb3dPolylineVertex>(mVertices, indexVertId, nullptr, pos);
      es != Acad::eOk)
    return es;
  return insertAt(pos, pNewVertex, newVertId);
}

Acad::ErrorStatus AcDb3dPolyline::openVertex(AcDb3dPolylineVertex*& pVertex, AcDbObjectId vertId,
                                             AcDb::OpenMode mode, bool openErasedOne) const {
  return openOwnedVertex(*this, pVertex, vertId, mode, openErasedOne);
}

AcDbObjectIterator* AcDb3dPolyline::vertexIterator() const { return mVertices.iterator(); }

Acad::ErrorStatus AcDb3dPolyline::makeClosed() {
  if (Acad::ErrorStatus es = checkWrite("makeClosed"); es != Acad::eOk) return es;
  mClosed = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::makeOpen() {
  if (Acad::ErrorStatus es = checkWrite("makeOpen"); es != Acad::eOk) return es;
  mClosed = false;
  return Acad::eOk;
}

std::vector<const AcDb3dPolylineVertex*> AcDb3dPolyline::curveVertices() const {
  std::vector<const AcDb3dPolylineVertex*> out;
  for (const AcDbVertex* v : mVertices.live()) {
    const auto* v3 = static_cast<const AcDb3dPolylineVertex*>(v);
    if (v3->vertexType() != AcDb::k3dControlVertex) out.push_back(v3);
  }
  return out;
}

Acad::ErrorStatus AcDb3dPolyline::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  for (AcDbVertex* v : mVertices.touchLive()) static_cast<AcDb3dPolylineVertex*>(v)->mPosition.transformBy(xform);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  for (const AcDbVertex* v : mVertices.live())
    stretchPoints.append(static_cast<const AcDb3dPolylineVertex*>(v)->position());
  return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  const std::size_t n = mVertices.live().size();
  for (int i : indices)
    if (i < 0 || static_cast<std::size_t>(i) >= n) return Acad::eInvalidIndex;
  std::vector<AcDbVertex*> verts = mVertices.touchLive();
  for (int i : indices) static_cast<AcDb3dPolylineVertex*>(verts[i])->mPosition += offset;
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDb3dPolyline::subPath() const {
  auto path = std::make_shared<tdhost::CurvePath>();
  const std::vector<const AcDb3dPolylineVertex*> v = curveVertices();
  const std::size_t n = v.size();
  const std::size_t segs = n < 2 ? 0 : (mClosed ? n : n - 1);
  for (std::size_t i = 0; i < segs; ++i)
    path->addLine(v[i]->position(), v[(i + 1) % n]->position(), static_cast<double>(i), i + 1.0);
  path->finish(mClosed, false);
  return path;
}

void AcDb3dPolyline::subOwnedIds(AcDbObjectIdArray& ids) const {
  AcDbCurve::subOwnedIds(ids);
  mVertices.ownedIds(ids);
}

void AcDb3dPolyline::subTranslateIds(const AcDbIdMapping& idMap) {
  AcDbCurve::subTranslateIds(idMap);
  mVertices.translateIds(idMap);
}

Acad::ErrorStatus AcDb3dPolyline::subErase(bool erasing) {
  mVertices.setErased(erasing);
  return AcDbCurve::subErase(erasing);
}

void AcDb3dPolyline::subAddedToDatabase() { mVertices.addToDatabase(*this); }
