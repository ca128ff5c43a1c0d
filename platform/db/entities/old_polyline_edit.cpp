// Old-style 2D and 3D polylines cut into pieces, extended at an end and projected onto planes:
// the pieces and projections are new non-database polylines with vertices of their own.
#include <cmath>

#include "dbents.h"
#include "entities/entity_util.h"
#include "ge/bulge_segment.h"
#include "geplane.h"

using tdhost::ge::BulgeSegment;

namespace {

AcGePoint2d plan(const AcDb2dVertex& v) { return {v.position().x, v.position().y}; }

// Walks [from, to] one segment at a time: visit(segment index, fraction at the piece's start,
// fraction at its end). A closed curve's `to` may pass its end parameter and wrap.
template <class Visit>
void forEachShare(double fromParam, double toParam, std::size_t segments, bool closed, Visit visit) {
  double p = fromParam;
  while (p < toParam - 1e-12) {
    std::size_t i = static_cast<std::size_t>(std::floor(p + 1e-12));
    if (!closed && i >= segments) i = segments - 1;
    const double q = std::min(toParam, i + 1.0);
    visit(i, p - i, q - i);
    p = q;
  }
}

// The index and fraction of a parameter, the last segment's end staying on it.
std::size_t segmentOf(double param, std::size_t segments, bool closed, double& fraction) {
  std::size_t i = static_cast<std::size_t>(std::floor(param));
  if (i >= segments && !closed) i = segments - 1;
  fraction = param - i;
  return i;
}

}  // namespace

// ---- AcDb2dPolyline

AcDb2dPolyline* AcDb2dPolyline::emptyCopy() const {
  auto* pl = new AcDb2dPolyline;
  pl->mNormal = mNormal;
  pl->mElevation = mElevation;
  pl->mThickness = mThickness;
  pl->mDefStartWidth = mDefStartWidth;
  pl->mDefEndWidth = mDefEndWidth;
  tdhost::copyTraits(*this, *pl);  // before the vertices, which take the owner's traits
  return pl;
}

AcDbCurve* AcDb2dPolyline::subCurveBetween(double fromParam, double toParam) const {
  if (isSplineFit()) return nullptr;
  const std::vector<const AcDb2dVertex*> v = curveVertices();
  const std::size_t n = v.size(), m = mClosed ? n : n - 1;
  auto segAt = [&](std::size_t i) { return BulgeSegment(plan(*v[i % n]), plan(*v[(i + 1) % n]), v[i % n]->bulge()); };
  auto pointAt = [&](double param) {
    double f = 0.0;
    const BulgeSegment s = segAt(segmentOf(param, m, mClosed, f));
    const AcGePoint2d p = s.pointAtDist(f * s.length());
    return AcGePoint3d(p.x, p.y, mElevation);
  };
  AcDb2dPolyline* pl = emptyCopy();
  AcDbObjectId id;
  // A part of an arc keeps its centre: the bulge of its share of the included angle.
  forEachShare(fromParam, toParam, m, mClosed, [&](std::size_t i, double f0, double f1) {
    const AcDb2dVertex& a = *v[i % n];
    const double w0 = a.startWidth() + (a.endWidth() - a.startWidth()) * f0;
    const double w1 = a.startWidth() + (a.endWidth() - a.startWidth()) * f1;
    const double bulge = BulgeSegment::bulgeOf(segAt(i).includedAngle() * (f1 - f0));
    pl->insertAt(pl->mVertices.count(), new AcDb2dVertex(pointAt(i + f0), bulge, w0, w1), id);
  });
  pl->insertAt(pl->mVertices.count(), new AcDb2dVertex(pointAt(toParam)), id);
  return pl;
}

Acad::ErrorStatus AcDb2dPolyline::subExtendTo(bool atStart, double newParam) {
  if (isSplineFit()) return Acad::eNotApplicable;
  std::vector<AcDbVertex*> live = mVertices.touchLive();
  if (live.size() < 2) return Acad::eDegenerateGeometry;
  const std::size_t i = atStart ? 0 : live.size() - 2;
  auto* a = static_cast<AcDb2dVertex*>(live[i]);
  auto* b = static_cast<AcDb2dVertex*>(live[i + 1]);
  const BulgeSegment seg(plan(*a), plan(*b), a->mBulge);
  const double t = newParam - i;  // fraction along the end segment (below 0 or above 1)
  AcGePoint2d p;
  if (seg.isArc()) {
    // Along the segment's circle; a sweep of a whole turn or more is no arc.
    const double sweep = seg.includedAngle() * (atStart ? 1.0 - t : t);
    if (std::fabs(sweep) >= tdhost::kTwoPi) return Acad::eInvalidInput;
    p = plan(*a);
    p.rotateBy(seg.includedAngle() * t, seg.center());
    a->mBulge = BulgeSegment::bulgeOf(sweep);
  } else {
    p = plan(*a) + (plan(*b) - plan(*a)) * t;
  }
  (atStart ? a : b)->mPosition.set(p.x, p.y, mElevation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  const std::vector<const AcDbVertex*> live = mVertices.live();
  const bool parallel = mNormal.isParallelTo(plane.normal());
  if (!parallel) {
    // Arcs seen at an angle are ellipses, and fitted curves have no kind of their own here.
    if (mPolyType != AcDb::k2dSimplePoly) return Acad::eNotApplicable;
    for (const AcDbVertex* v : live)
      if (static_cast<const AcDb2dVertex*>(v)->bulge() != 0.0) return Acad::eNotApplicable;
  }
  AcDb2dPolyline* pl = emptyCopy();
  pl->mPolyType = mPolyType;
  pl->mClosed = mClosed;
  if (parallel) {
    // The same object coordinates, moved along the normal onto the plane.
    pl->mElevation = plane.pointOnPlane().asVector().dotProduct(mNormal);
  } else {
    pl->mNormal = plane.normal().normal();
    pl->mElevation = plane.pointOnPlane().asVector().dotProduct(pl->mNormal);
  }
  const AcGeMatrix3d toOcs = tdhost::ocsToWorld(pl->mNormal).inverse();
  AcDbObjectId id;
  for (const AcDbVertex* vv : live) {
    const auto& v = *static_cast<const AcDb2dVertex*>(vv);
    AcGePoint3d p = v.position();
    if (!parallel) p = vertexPosition(v).orthoProject(plane).transformBy(toOcs);
    auto* copy = new AcDb2dVertex(AcGePoint3d(p.x, p.y, pl->mElevation), v.bulge(), v.startWidth(), v.endWidth(),
                                  v.tangent());
    copy->mTangentUsed = v.mTangentUsed;
    copy->mType = v.mType;
    pl->insertAt(pl->mVertices.count(), copy, id);
  }
  projCurve = pl;
  return Acad::eOk;
}

// ---- AcDb3dPolyline

AcDbCurve* AcDb3dPolyline::subCurveBetween(double fromParam, double toParam) const {
  if (isSplineFit()) return nullptr;
  const std::vector<const AcDb3dPolylineVertex*> v = curveVertices();
  const std::size_t n = v.size(), m = mClosed ? n : n - 1;
  auto pointAt = [&](double param) {
    double f = 0.0;
    const std::size_t i = segmentOf(param, m, mClosed, f);
    const AcGePoint3d a = v[i % n]->position(), b = v[(i + 1) % n]->position();
    return a + (b - a) * f;
  };
  auto* pl = new AcDb3dPolyline;
  tdhost::copyTraits(*this, *pl);
  AcDbObjectId id;
  forEachShare(fromParam, toParam, m, mClosed, [&](std::size_t i, double f0, double) {
    pl->insertAt(pl->mVertices.count(), new AcDb3dPolylineVertex(pointAt(i + f0)), id);
  });
  pl->insertAt(pl->mVertices.count(), new AcDb3dPolylineVertex(pointAt(toParam)), id);
  return pl;
}

Acad::ErrorStatus AcDb3dPolyline::subExtendTo(bool atStart, double newParam) {
  if (isSplineFit()) return Acad::eNotApplicable;
  std::vector<AcDbVertex*> live = mVertices.touchLive();
  if (live.size() < 2) return Acad::eDegenerateGeometry;
  const std::size_t i = atStart ? 0 : live.size() - 2;
  auto* a = static_cast<AcDb3dPolylineVertex*>(live[i]);
  auto* b = static_cast<AcDb3dPolylineVertex*>(live[i + 1]);
  const AcGePoint3d p = a->mPosition + (b->mPosition - a->mPosition) * (newParam - i);
  (atStart ? a : b)->mPosition = p;
  return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  auto* pl = new AcDb3dPolyline;
  pl->mPolyType = mPolyType;
  pl->mClosed = mClosed;
  tdhost::copyTraits(*this, *pl);
  AcDbObjectId id;
  for (const AcDbVertex* vv : mVertices.live()) {
    const auto& v = *static_cast<const AcDb3dPolylineVertex*>(vv);
    auto* copy = new AcDb3dPolylineVertex(v.position().orthoProject(plane));
    copy->mType = v.mType;
    pl->insertAt(pl->mVertices.count(), copy, id);
  }
  projCurve = pl;
  return Acad::eOk;
}
