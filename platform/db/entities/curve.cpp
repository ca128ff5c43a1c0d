// AcDbCurve: the generic curve queries, answered on the entity's exact line/arc pieces.
#include "dbcurve.h"

#include <algorithm>
#include <cmath>

#include "entities/curve_path.h"
#include "geplin3d.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbCurve)

AcDbCurve::AcDbCurve() = default;
AcDbCurve::~AcDbCurve() = default;

namespace {

using tdhost::CurvePath;
using tdhost::PathLocation;
using tdhost::PathPiece;

constexpr double kTwoPi = 6.283185307179586;

// The path of a readable curve; null (with the status) when it has no geometry or may not be read.
std::shared_ptr<const CurvePath> readPath(const AcDbCurve& c, Acad::ErrorStatus& es) {
  std::shared_ptr<const CurvePath> path = c.subPath();
  es = path && !path->empty() ? Acad::eOk : Acad::eDegenerateGeometry;
  return es == Acad::eOk ? path : nullptr;
}

// The location of a point on the path; eInvalidInput when it is off the curve.
Acad::ErrorStatus locatePoint(const CurvePath& path, const AcGePoint3d& p, PathLocation& loc) {
  loc = path.closest(p);
  return path.pointAt(loc).distanceTo(p) <= path.pointTolerance() ? Acad::eOk : Acad::eInvalidInput;
}

// The normal of the plane a path lies in (the first arc's, or Newell's over the vertices).
AcGeVector3d areaNormal(const CurvePath& path) {
  if (path.isPlanar()) return path.planeNormal();
  for (const PathPiece& p : path.pieces())
    if (p.isArc) return p.arc.normal();
  AcGeVector3d n;
  const auto& pieces = path.pieces();
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const AcGePoint3d a = pieces[i].startPoint(), b = pieces[(i + 1) % pieces.size()].startPoint();
    n += AcGeVector3d((a.y - b.y) * (a.z + b.z), (a.z - b.z) * (a.x + b.x), (a.x - b.x) * (a.y + b.y));
  }
  return n.isZeroLength() ? AcGeVector3d::kZAxis : n.normal();
}

}  // namespace

bool AcDbCurve::isClosed() const {
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  return path && path->isClosed();
}

bool AcDbCurve::isPeriodic() const {
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  return path && path->isPeriodic();
}

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
  if (Acad::ErrorStatus es = checkRead("getStartParam"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (path) param = path->startParam();
  return es;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
  if (Acad::ErrorStatus es = checkRead("getEndParam"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (path) param = path->endParam();
  return es;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getStartPoint"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (path) point = path->pieces().front().startPoint();
  return es;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getEndPoint"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (path) point = path->pieces().back().endPoint();
  return es;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getPointAtParam"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (!path->normalizeParam(param)) return Acad::eInvalidInput;
  point = path->pointAt(path->locateParam(param));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  if (Acad::ErrorStatus es = checkRead("getParamAtPoint"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  PathLocation loc;
  if ((es = locatePoint(*path, point, loc)) != Acad::eOk) return es;
  param = path->paramAt(loc);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
  if (Acad::ErrorStatus es = checkRead("getDistAtParam"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (!path->normalizeParam(param)) return Acad::eInvalidInput;
  dist = path->distAt(path->locateParam(param));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
  if (Acad::ErrorStatus es = checkRead("getParamAtDist"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  const double tol = path->pointTolerance();
  if (dist < -tol || dist > path->length() + tol) return Acad::eInvalidInput;
  param = path->paramAt(path->locateDist(std::clamp(dist, 0.0, path->length())));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  if (Acad::ErrorStatus es = checkRead("getDistAtPoint"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  PathLocation loc;
  if ((es = locatePoint(*path, point, loc)) != Acad::eOk) return es;
  dist = path->distAt(loc);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getPointAtDist"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  const double tol = path->pointTolerance();
  if (dist < -tol || dist > path->length() + tol) return Acad::eInvalidInput;
  point = path->pointAt(path->locateDist(std::clamp(dist, 0.0, path->length())));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {
  if (Acad::ErrorStatus es = checkRead("getFirstDeriv"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (!path->normalizeParam(param)) return Acad::eInvalidInput;
  const PathLocation loc = path->locateParam(param);
  const PathPiece& piece = path->pieces()[loc.piece];
  const double k = piece.paramPerDist();
  firstDeriv = k > 0.0 ? piece.tangentAt(loc.s) / k : piece.tangentAt(loc.s) * 0.0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const {
  double param = 0.0;
  if (Acad::ErrorStatus es = getParamAtPoint(point, param); es != Acad::eOk) return es;
  return getFirstDeriv(param, firstDeriv);
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(double param, AcGeVector3d& secDeriv) const {
  if (Acad::ErrorStatus es = checkRead("getSecondDeriv"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (!path->normalizeParam(param)) return Acad::eInvalidInput;
  const PathLocation loc = path->locateParam(param);
  const PathPiece& piece = path->pieces()[loc.piece];
  const double k = piece.paramPerDist();
  secDeriv = k > 0.0 ? piece.curvatureAt(loc.s) / (k * k) : AcGeVector3d();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const {
  double param = 0.0;
  if (Acad::ErrorStatus es = getParamAtPoint(point, param); es != Acad::eOk) return es;
  return getSecondDeriv(param, secDeriv);
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                               bool extend) const {
  if (Acad::ErrorStatus es = checkRead("getClosestPointTo"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  pointOnCurve = extend ? path->closestExtended(givenPnt) : path->pointAt(path->closest(givenPnt));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& givenPnt, const AcGeVector3d& normal,
                                               AcGePoint3d& pointOnCurve, bool extend) const {
  if (Acad::ErrorStatus es = checkRead("getClosestPointTo"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  const AcGeVector3d dir = normal.normal();
  pointOnCurve = extend ? path->closestAlongExtended(givenPnt, dir) : path->pointAt(path->closestAlong(givenPnt, dir));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  projCurve = nullptr;
  if (Acad::ErrorStatus es = checkRead("getOrthoProjectedCurve"); es != Acad::eOk) return es;
  return subProjected(plane, projCurve);
}

Acad::ErrorStatus AcDbCurve::getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& projDir,
                                               AcDbCurve*& projCurve) const {
  projCurve = nullptr;
  if (!projDir.isParallelTo(plane.normal())) return Acad::eNotApplicable;
  return getOrthoProjectedCurve(plane, projCurve);
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
  if (Acad::ErrorStatus es = checkRead("getArea"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  // Green's theorem over the pieces: the chord polygon (shoelace in the plane) plus, for each
  // arc, the signed circular segment between its chord and the arc.
  const AcGeVector3d n = areaNormal(*path);
  double twice = 0.0;
  const AcGePoint3d o = path->pieces().front().startPoint();
  for (const PathPiece& p : path->pieces()) {
    const AcGeVector3d a = p.startPoint() - o, b = p.endPoint() - o;
    twice += a.crossProduct(b).dotProduct(n);
    if (p.isArc) {
      const double r = p.arc.radius(), sweep = p.length / r;
      const double segment = r * r * (sweep - std::sin(sweep));
      twice += p.arc.normal().dotProduct(n) >= 0.0 ? segment : -segment;
    }
  }
  area = std::fabs(twice) / 2.0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const {
  if (Acad::ErrorStatus es = checkRead("getSplitCurves"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  const double lo = path->startParam(), hi = path->endParam(), tol = path->paramTolerance();
  std::vector<double> cuts;
  for (double p : params) {
    if (!path->normalizeParam(p)) return Acad::eInvalidInput;
    cuts.push_back(p);
  }
  std::sort(cuts.begin(), cuts.end());
  std::vector<double> bounds;
  for (double p : cuts) {
    const bool atEnd = p <= lo + tol || p >= hi - tol;
    if (atEnd && !path->isClosed()) continue;
    if (atEnd) p = lo;
    if (bounds.empty() || p > bounds.back() + tol) bounds.push_back(p);
  }
  std::vector<std::pair<double, double>> spans;
  if (path->isClosed() && !bounds.empty()) {
    for (std::size_t i = 0; i + 1 < bounds.size(); ++i) spans.emplace_back(bounds[i], bounds[i + 1]);
    spans.emplace_back(bounds.back(), bounds.front() + (hi - lo));
  } else {
    bounds.insert(bounds.begin(), lo);
    bounds.push_back(hi);
    for (std::size_t i = 0; i + 1 < bounds.size(); ++i) spans.emplace_back(bounds[i], bounds[i + 1]);
  }
  AcDbVoidPtrArray made;
  for (const auto& [from, to] : spans) {
    AcDbCurve* piece = subCurveBetween(from, to);
    if (piece == nullptr) {
      for (void* p : made) delete static_cast<AcDbCurve*>(p);
      return Acad::eNotApplicable;
    }
    made.append(piece);
  }
  for (void* p : made) curveSegments.append(p);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curveSegments) const {
  AcGeDoubleArray params;
  for (const AcGePoint3d& p : points) {
    double param = 0.0;
    Acad::ErrorStatus es = getParamAtPoint(p, param);
    if (es == Acad::eInvalidInput) return Acad::ePointNotOnEntity;
    if (es != Acad::eOk) return es;
    params.append(param);
  }
  return getSplitCurves(params, curveSegments);
}

Acad::ErrorStatus AcDbCurve::extend(double newParam) {
  if (Acad::ErrorStatus es = checkWrite("extend"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (path->isClosed()) return Acad::eNotApplicable;
  if (newParam < path->startParam()) return subExtendTo(true, newParam);
  if (newParam > path->endParam()) return subExtendTo(false, newParam);
  return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCurve::extend(bool extendStart, const AcGePoint3d& toPoint) {
  if (Acad::ErrorStatus es = checkWrite("extend"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  if (path->isClosed()) return Acad::eNotApplicable;
  // The parameter of the nearest point on the end piece's extension (line or circle).
  const PathPiece& piece = extendStart ? path->pieces().front() : path->pieces().back();
  double s = 0.0;
  if (piece.isArc) {
    const AcGeVector3d v = toPoint - piece.arc.center();
    const AcGeVector3d y = piece.arc.normal().crossProduct(piece.arc.refVec());
    double rel = std::atan2(v.dotProduct(y), v.dotProduct(piece.arc.refVec())) - piece.arc.startAng();
    rel = std::fmod(rel, kTwoPi);
    if (rel < 0.0) rel += kTwoPi;
    if (extendStart && rel > 0.0) rel -= kTwoPi;  // reach the point backwards from the start
    s = rel * piece.arc.radius();
  } else {
    if (piece.length <= 0.0) return Acad::eDegenerateGeometry;
    s = (toPoint - piece.line.startPoint()).dotProduct(piece.tangentAt(0.0));
  }
  return subExtendTo(extendStart, piece.param0 + s * piece.paramPerDist());
}

Acad::ErrorStatus AcDbCurve::getGeCurve(AcGeCurve3d*& pGeCurve, const AcGeTol&) const {
  pGeCurve = nullptr;
  if (Acad::ErrorStatus es = checkRead("getGeCurve"); es != Acad::eOk) return es;
  Acad::ErrorStatus es;
  auto path = readPath(*this, es);
  if (!path) return es;
  const auto& pieces = path->pieces();
  if (pieces.size() == 1) {
    const PathPiece& p = pieces.front();
    pGeCurve = p.isArc ? static_cast<AcGeCurve3d*>(new AcGeCircArc3d(p.arc)) : new AcGeLineSeg3d(p.line);
    return Acad::eOk;
  }
  AcGePoint3dArray pts;
  for (const PathPiece& p : pieces) {
    if (p.isArc) return Acad::eNotApplicable;  // no composite curve type on this host
    pts.append(p.startPoint());
  }
  pts.append(pieces.back().endPoint());
  pGeCurve = new AcGePolyline3d(pts);
  return Acad::eOk;
}

AcDbCurve* AcDbCurve::subCurveBetween(double, double) const { return nullptr; }
Acad::ErrorStatus AcDbCurve::subExtendTo(bool, double) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbCurve::subProjected(const AcGePlane&, AcDbCurve*&) const { return Acad::eNotApplicable; }
