// AcDbPolyline: lightweight polyline vertices and its exact bulge-segment curve.
#include "dbpl.h"

#include <cmath>

#include "adsdef.h"
#include "dbents.h"
#include "dbfiler.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "ge/bulge_segment.h"
#include "geplane.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbPolyline)

using tdhost::ge::BulgeSegment;

AcDbPolyline::AcDbPolyline() = default;
AcDbPolyline::AcDbPolyline(unsigned int num_verts) { mVerts.reserve(num_verts); }
AcDbPolyline::~AcDbPolyline() = default;

AcDbPolyline::AcDbPolyline(const AcDbPolyline& other)
    : AcDbCurve(other),
      mVerts(other.mVerts),
      mNormal(other.mNormal),
      mElevation(other.mElevation),
      mThickness(other.mThickness),
      mClosed(other.mClosed),
      mPlinegen(other.mPlinegen) {}

AcDbPolyline& AcDbPolyline::operator=(const AcDbPolyline& other) {
  if (this == &other) return *this;
  AcDbCurve::operator=(other);
  mVerts = other.mVerts;
  mNormal = other.mNormal;
  mElevation = other.mElevation;
  mThickness = other.mThickness;
  mClosed = other.mClosed;
  mPlinegen = other.mPlinegen;
  std::lock_guard<std::mutex> lock(mPathMutex);
  mPath.reset();
  return *this;
}

Acad::ErrorStatus AcDbPolyline::modify(const char* what) {
  if (Acad::ErrorStatus es = checkWrite(what); es != Acad::eOk) return es;
  std::lock_guard<std::mutex> lock(mPathMutex);
  mPath.reset();
  return Acad::eOk;
}

unsigned int AcDbPolyline::numSegs() const {
  const auto n = numVerts();
  if (n < 2) return 0;
  return mClosed ? n : n - 1;
}

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge, double startWidth,
                                            double endWidth) {
  if (Acad::ErrorStatus es = modify("addVertexAt"); es != Acad::eOk) return es;
  if (index > numVerts()) return Acad::eInvalidIndex;
  Vertex v{pt, bulge, startWidth < 0.0 ? 0.0 : startWidth, endWidth < 0.0 ? 0.0 : endWidth};
  mVerts.insert(mVerts.begin() + index, v);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
  if (Acad::ErrorStatus es = modify("removeVertexAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  mVerts.erase(mVerts.begin() + index);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reset(bool reuse, unsigned int numVerts) {
  if (Acad::ErrorStatus es = modify("reset"); es != Acad::eOk) return es;
  if (!reuse) mVerts.clear();
  else if (numVerts < mVerts.size()) mVerts.resize(numVerts);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& pt) const {
  if (Acad::ErrorStatus es = checkRead("getPointAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  pt = mVerts[index].pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& pt) const {
  if (Acad::ErrorStatus es = checkRead("getPointAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  pt.set(mVerts[index].pt.x, mVerts[index].pt.y, mElevation);
  pt.transformBy(tdhost::ocsToWorld(mNormal));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& pt) {
  if (Acad::ErrorStatus es = modify("setPointAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  mVerts[index].pt = pt;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
  if (Acad::ErrorStatus es = checkRead("getBulgeAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  bulge = mVerts[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
  if (Acad::ErrorStatus es = modify("setBulgeAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  mVerts[index].bulge = bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
  if (Acad::ErrorStatus es = checkRead("getWidthsAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  startWidth = mVerts[index].startWidth;
  endWidth = mVerts[index].endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
  if (Acad::ErrorStatus es = modify("setWidthsAt"); es != Acad::eOk) return es;
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (startWidth < 0.0 || endWidth < 0.0) return Acad::eInvalidInput;
  mVerts[index].startWidth = startWidth;
  mVerts[index].endWidth = endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
  if (Acad::ErrorStatus es = checkRead("getConstantWidth"); es != Acad::eOk) return es;
  if (mVerts.empty()) return Acad::eInvalidInput;
  width = mVerts.front().startWidth;
  for (const Vertex& v : mVerts)
    if (v.startWidth != width || v.endWidth != width) return Acad::eInvalidInput;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
  if (Acad::ErrorStatus es = modify("setConstantWidth"); es != Acad::eOk) return es;
  if (width < 0.0) return Acad::eInvalidInput;
  for (Vertex& v : mVerts) v.startWidth = v.endWidth = width;
  return Acad::eOk;
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
  if (mVerts.empty()) return kEmpty;
  if (mVerts.size() == 1) return kPoint;
  if (index >= numSegs()) return kEmpty;
  const Vertex& a = mVerts[index];
  const Vertex& b = mVerts[(index + 1) % mVerts.size()];
  if (a.pt.isEqualTo(b.pt)) return kCoincident;
  return BulgeSegment(a.pt, b.pt, a.bulge).isArc() ? kArc : kLine;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg3d& ln) const {
  if (Acad::ErrorStatus es = checkRead("getLineSegAt"); es != Acad::eOk) return es;
  if (index >= numSegs()) return Acad::eInvalidIndex;
  const Vertex& a = mVerts[index];
  ln = BulgeSegment(a.pt, mVerts[(index + 1) % mVerts.size()].pt, 0.0).line3d(mNormal, mElevation);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc3d& arc) const {
  if (Acad::ErrorStatus es = checkRead("getArcSegAt"); es != Acad::eOk) return es;
  if (index >= numSegs()) return Acad::eInvalidIndex;
  const Vertex& a = mVerts[index];
  BulgeSegment seg(a.pt, mVerts[(index + 1) % mVerts.size()].pt, a.bulge);
  if (!seg.isArc()) return Acad::eNotApplicable;
  arc = seg.arc3d(mNormal, mElevation);
  return Acad::eOk;
}

bool AcDbPolyline::onSegAt(unsigned int index, const AcGePoint2d& pt2d, double& param) const {
  if (checkRead("onSegAt") != Acad::eOk || index >= numSegs()) return false;
  const Vertex& a = mVerts[index];
  BulgeSegment seg(a.pt, mVerts[(index + 1) % mVerts.size()].pt, a.bulge);
  const tdhost::ge::SegmentClosest c = seg.closestPoint(pt2d);
  const double scale = 1.0 + std::fabs(pt2d.x) + std::fabs(pt2d.y);
  if (c.distance > 1e-9 * scale) return false;
  param = index + (seg.length() > 0.0 ? c.distAlong / seg.length() : 0.0);
  return true;
}

void AcDbPolyline::setClosed(bool closed) {
  if (modify("setClosed") == Acad::eOk) mClosed = closed;
}

bool AcDbPolyline::hasBulges() const {
  for (const Vertex& v : mVerts)
    if (v.bulge != 0.0) return true;
  return false;
}

bool AcDbPolyline::hasWidth() const {
  for (const Vertex& v : mVerts)
    if (v.startWidth != 0.0 || v.endWidth != 0.0) return true;
  return false;
}

void AcDbPolyline::setElevation(double elev) {
  if (modify("setElevation") == Acad::eOk) mElevation = elev;
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = modify("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) {
  if (Acad::ErrorStatus es = modify("setThickness"); es != Acad::eOk) return es;
  mThickness = thickness;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = modify("transformBy"); es != Acad::eOk) return es;
  double scale = 1.0;
  if (!tdhost::uniformScale(xform, scale)) return Acad::eCannotScaleNonUniformly;
  const AcGeMatrix3d toWorld = tdhost::ocsToWorld(mNormal);
  const AcGeVector3d newNormal = tdhost::transformNormal(mNormal, xform);
  // The image of the OCS axes keeps every bulge's sense about the new normal.
  const AcGeMatrix3d toOcs = tdhost::ocsToWorld(newNormal).inverse();
  double elevation = mElevation;
  for (std::size_t i = 0; i < mVerts.size(); ++i) {
    AcGePoint3d p(mVerts[i].pt.x, mVerts[i].pt.y, mElevation);
    p.transformBy(toWorld).transformBy(xform).transformBy(toOcs);
    mVerts[i].pt.set(p.x, p.y);
    mVerts[i].startWidth *= scale;
    mVerts[i].endWidth *= scale;
    if (i == 0) elevation = p.z;
  }
  if (mVerts.empty()) {
    AcGePoint3d o(0, 0, mElevation);
    elevation = o.transformBy(toWorld).transformBy(xform).transformBy(toOcs).z;
  }
  mElevation = elevation;
  mNormal = newNormal;
  mThickness *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  for (unsigned int i = 0; i < numVerts(); ++i) {
    AcGePoint3d p;
    getPointAt(i, p);
    stretchPoints.append(p);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = modify("moveStretchPointsAt"); es != Acad::eOk) return es;
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(mNormal, x, y);
  for (int i : indices) {
    if (i < 0 || static_cast<unsigned int>(i) >= numVerts()) return Acad::eInvalidIndex;
    mVerts[i].pt += AcGeVector2d(offset.dotProduct(x), offset.dotProduct(y));
  }
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDbPolyline::subPath() const {
  std::lock_guard<std::mutex> lock(mPathMutex);
  if (mPath) return mPath;
  auto path = std::make_shared<tdhost::CurvePath>();
  const unsigned int n = numVerts();
  for (unsigned int i = 0; i < numSegs(); ++i) {
    BulgeSegment seg(mVerts[i].pt, mVerts[(i + 1) % n].pt, mVerts[i].bulge);
    path->addBulge(seg, mNormal, mElevation, i, i + 1.0);
  }
  path->finish(mClosed, false);
  mPath = path;
  return mPath;
}

AcDbCurve* AcDbPolyline::subCurveBetween(double fromParam, double toParam) const {
  // Walks vertex index + fraction from `from` to `to`; `to` beyond the last segment of a closed
  // polyline continues from vertex 0. Partial arcs keep their centre: bulge of the angle share.
  const unsigned int n = numVerts(), m = numSegs();
  auto segAt = [&](unsigned int i) {
    return BulgeSegment(mVerts[i % n].pt, mVerts[(i + 1) % n].pt, mVerts[i % n].bulge);
  };
  auto pointAt = [&](double param) {
    unsigned int i = static_cast<unsigned int>(std::floor(param));
    if (i >= m && !mClosed) i = m - 1;
    const BulgeSegment s = segAt(i);
    return s.pointAtDist((param - i) * s.length());
  };
  auto* pl = new AcDbPolyline;
  pl->mNormal = mNormal;
  pl->mElevation = mElevation;
  pl->mThickness = mThickness;
  double p = fromParam;
  while (p < toParam - 1e-12) {
    unsigned int i = static_cast<unsigned int>(std::floor(p + 1e-12));
    if (!mClosed && i >= m) i = m - 1;
    const double q = std::min(toParam, i + 1.0);
    const Vertex& v = mVerts[i % n];
    const double share = q - p;
    const double bulge = BulgeSegment::bulgeOf(segAt(i).includedAngle() * share);
    const double f0 = p - i, f1 = q - i;
    const double w0 = v.startWidth + (v.endWidth - v.startWidth) * f0;
    const double w1 = v.startWidth + (v.endWidth - v.startWidth) * f1;
    pl->mVerts.push_back({pointAt(p), bulge, w0, w1});
    p = q;
  }
  pl->mVerts.push_back({pointAt(toParam), 0.0, 0.0, 0.0});
  tdhost::copyTraits(*this, *pl);
  return pl;
}

Acad::ErrorStatus AcDbPolyline::subExtendTo(bool atStart, double newParam) {
  const unsigned int m = numSegs();
  if (m == 0) return Acad::eDegenerateGeometry;
  const unsigned int i = atStart ? 0 : m - 1;
  const BulgeSegment seg = BulgeSegment(mVerts[i].pt, mVerts[i + 1].pt, mVerts[i].bulge);
  const double t = newParam - i;  // fraction along segment i (below 0 or above 1)
  AcGePoint2d p;
  double newBulge = mVerts[i].bulge;
  if (seg.isArc()) {
    const double sweep = seg.includedAngle() * (atStart ? 1.0 - t : t);
    if (std::fabs(sweep) >= tdhost::kTwoPi) return Acad::eInvalidInput;
    p = mVerts[i].pt;
    p.rotateBy(seg.includedAngle() * t, seg.center());
    newBulge = BulgeSegment::bulgeOf(sweep);
  } else {
    p = mVerts[i].pt + (mVerts[i + 1].pt - mVerts[i].pt) * t;
  }
  if (atStart) {
    mVerts[0].pt = p;
  } else {
    mVerts[i + 1].pt = p;
  }
  mVerts[i].bulge = newBulge;
  std::lock_guard<std::mutex> lock(mPathMutex);
  mPath.reset();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  const bool parallel = mNormal.isParallelTo(plane.normal());
  // Arcs seen at an angle are ellipses: only straight polylines project onto a tilted plane.
  if (!parallel)
    for (const Vertex& v : mVerts)
      if (v.bulge != 0.0) return Acad::eNotApplicable;
  auto* pl = new AcDbPolyline;
  pl->mVerts = mVerts;
  pl->mNormal = parallel ? mNormal : plane.normal().normal();
  pl->mClosed = mClosed;
  pl->mThickness = mThickness;
  pl->mElevation = plane.pointOnPlane().asVector().dotProduct(pl->mNormal);
  if (!parallel) {
    const AcGeMatrix3d toWorld = tdhost::ocsToWorld(mNormal), toOcs = tdhost::ocsToWorld(pl->mNormal).inverse();
    for (Vertex& v : pl->mVerts) {
      const AcGePoint3d p =
          AcGePoint3d(v.pt.x, v.pt.y, mElevation).transformBy(toWorld).orthoProject(plane).transformBy(toOcs);
      v.pt.set(p.x, p.y);
    }
  }
  tdhost::copyTraits(*this, *pl);
  projCurve = pl;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::dxfInFields(AcDbDxfFiler* filer) {
  if (filer == nullptr) return Acad::eNullObjectPointer;
  if (Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer); es != Acad::eOk) return es;
  std::vector<Vertex> verts;
  double constantWidth = 0.0;
  resbuf rb{};
  while (filer->readItem(&rb) == Acad::eOk) {
    switch (rb.restype) {
      case 70:
        mClosed = (rb.resval.rint & 1) != 0;
        mPlinegen = (rb.resval.rint & 128) != 0;
        break;
      case 90:  // the vertex count: room for exactly that many (bounded against a bad file)
        if (rb.resval.rlong > 0) verts.reserve(static_cast<std::size_t>(std::min(rb.resval.rlong, Adesk::Int32{1} << 16)));
        break;
      case 43: constantWidth = rb.resval.rreal; break;
      case 38: mElevation = rb.resval.rreal; break;
      case 39: mThickness = rb.resval.rreal; break;
      case 10: verts.push_back({AcGePoint2d(rb.resval.rpoint[0], rb.resval.rpoint[1]), 0.0, constantWidth, constantWidth}); break;
      case 40: if (!verts.empty()) verts.back().startWidth = rb.resval.rreal; break;
      case 41: if (!verts.empty()) verts.back().endWidth = rb.resval.rreal; break;
      case 42: if (!verts.empty()) verts.back().bulge = rb.resval.rreal; break;
      case 210: {
        const AcGeVector3d n(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]);
        // A zero or non-finite direction would leave no plane; such files mean world z.
        mNormal = n.length() > 1e-12 && std::isfinite(n.length()) ? n : AcGeVector3d::kZAxis;
        break;
      }
      default: break;  // codes the class does not hold stay with the reader
    }
  }
  mVerts = std::move(verts);
  std::lock_guard<std::mutex> lock(mPathMutex);
  mPath.reset();
  return Acad::eOk;
}

void AcDbPolyline::setPlinegen(bool plinegen) {
  if (checkWrite("setPlinegen") == Acad::eOk) mPlinegen = plinegen;
}
