// AcDbRay: a half line, parameterised by distance from its base point.
#include "dbray.h"

#include <algorithm>
#include <cmath>

#include "adsdef.h"
#include "dbents.h"
#include "dbfiler.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "geplane.h"
#include "geray3d.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbRay)

namespace {

// "On the ray" within 1e-9 of the size of the coordinates involved.
double tolerance(const AcGePoint3d& a, const AcGePoint3d& b) {
  return 1e-9 * std::max({1.0, std::fabs(a.x), std::fabs(a.y), std::fabs(a.z), std::fabs(b.x), std::fabs(b.y),
                          std::fabs(b.z)});
}

AcDb::DxfCode code(int groupCode) { return static_cast<AcDb::DxfCode>(groupCode); }

}  // namespace

AcDbRay::AcDbRay() = default;
AcDbRay::~AcDbRay() = default;

void AcDbRay::setBasePoint(const AcGePoint3d& pt) {
  if (checkWrite("setBasePoint") == Acad::eOk) mBase = pt;
}

void AcDbRay::setUnitDir(const AcGeVector3d& vec) {
  if (checkWrite("setUnitDir") == Acad::eOk && !vec.isZeroLength()) mDir = vec.normal();
}

Acad::ErrorStatus AcDbRay::setSecondPoint(const AcGePoint3d& pt) {
  if (Acad::ErrorStatus es = checkWrite("setSecondPoint"); es != Acad::eOk) return es;
  if (pt.isEqualTo(mBase)) return Acad::eInvalidInput;
  mDir = (pt - mBase).normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getStartParam(double& param) const {
  if (Acad::ErrorStatus es = checkRead("getStartParam"); es != Acad::eOk) return es;
  param = 0.0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getEndParam(double&) const {
  if (Acad::ErrorStatus es = checkRead("getEndParam"); es != Acad::eOk) return es;
  return Acad::eNotApplicable;  // the end parameter would be +infinity
}

Acad::ErrorStatus AcDbRay::getStartPoint(AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getStartPoint"); es != Acad::eOk) return es;
  point = mBase;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getEndPoint(AcGePoint3d&) const {
  if (Acad::ErrorStatus es = checkRead("getEndPoint"); es != Acad::eOk) return es;
  return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbRay::getPointAtParam(double param, AcGePoint3d& point) const {
  if (Acad::ErrorStatus es = checkRead("getPointAtParam"); es != Acad::eOk) return es;
  if (!std::isfinite(param) || param < -tolerance(mBase, mBase)) return Acad::eInvalidInput;
  point = mBase + mDir * std::max(param, 0.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  if (Acad::ErrorStatus es = checkRead("getParamAtPoint"); es != Acad::eOk) return es;
  const double t = std::max((point - mBase).dotProduct(mDir), 0.0);
  if (point.distanceTo(mBase + mDir * t) > tolerance(mBase, point)) return Acad::eInvalidInput;
  param = t;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getDistAtParam(double param, double& dist) const {
  AcGePoint3d p;
  if (Acad::ErrorStatus es = getPointAtParam(param, p); es != Acad::eOk) return es;
  dist = std::max(param, 0.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getParamAtDist(double dist, double& param) const {
  AcGePoint3d p;
  if (Acad::ErrorStatus es = getPointAtParam(dist, p); es != Acad::eOk) return es;
  param = std::max(dist, 0.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  return getParamAtPoint(point, dist);
}

Acad::ErrorStatus AcDbRay::getPointAtDist(double dist, AcGePoint3d& point) const {
  return getPointAtParam(dist, point);
}

Acad::ErrorStatus AcDbRay::getFirstDeriv(double param, AcGeVector3d& firstDeriv) const {
  AcGePoint3d p;
  if (Acad::ErrorStatus es = getPointAtParam(param, p); es != Acad::eOk) return es;
  firstDeriv = mDir;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getSecondDeriv(double param, AcGeVector3d& secDeriv) const {
  AcGePoint3d p;
  if (Acad::ErrorStatus es = getPointAtParam(param, p); es != Acad::eOk) return es;
  secDeriv = AcGeVector3d();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                             bool extend) const {
  if (Acad::ErrorStatus es = checkRead("getClosestPointTo"); es != Acad::eOk) return es;
  const double t = (givenPnt - mBase).dotProduct(mDir);
  pointOnCurve = mBase + mDir * (extend ? t : std::max(t, 0.0));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getClosestPointTo(const AcGePoint3d& givenPnt, const AcGeVector3d& normal,
                                             AcGePoint3d& pointOnCurve, bool extend) const {
  if (Acad::ErrorStatus es = checkRead("getClosestPointTo"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  // In the plane across the view direction the ray is a half line again (or only its base).
  const AcGeVector3d n = normal.normal();
  const AcGeVector3d across = mDir - n * mDir.dotProduct(n);
  const double k = across.lengthSqrd();
  if (k <= 1e-24) {
    pointOnCurve = mBase;
    return Acad::eOk;
  }
  AcGeVector3d w = givenPnt - mBase;
  w -= n * w.dotProduct(n);
  const double t = w.dotProduct(across) / k;
  pointOnCurve = mBase + mDir * (extend ? t : std::max(t, 0.0));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getArea(double&) const {
  if (Acad::ErrorStatus es = checkRead("getArea"); es != Acad::eOk) return es;
  return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbRay::getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const {
  if (Acad::ErrorStatus es = checkRead("getSplitCurves"); es != Acad::eOk) return es;
  const double tol = tolerance(mBase, mBase);
  std::vector<double> cuts;
  for (double p : params) {
    if (!std::isfinite(p) || p < -tol) return Acad::eInvalidInput;
    if (p > tol) cuts.push_back(p);
  }
  std::sort(cuts.begin(), cuts.end());
  cuts.erase(std::unique(cuts.begin(), cuts.end(), [&](double a, double b) { return b - a <= tol * (1.0 + a); }),
             cuts.end());
  double from = 0.0;
  for (double to : cuts) {
    auto* line = new AcDbLine(mBase + mDir * from, mBase + mDir * to);
    tdhost::copyTraits(*this, *line);
    curveSegments.append(static_cast<AcDbCurve*>(line));
    from = to;
  }
  auto* rest = new AcDbRay;
  rest->mBase = mBase + mDir * from;
  rest->mDir = mDir;
  tdhost::copyTraits(*this, *rest);
  curveSegments.append(static_cast<AcDbCurve*>(rest));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::extend(double newParam) {
  if (Acad::ErrorStatus es = checkWrite("extend"); es != Acad::eOk) return es;
  if (!std::isfinite(newParam)) return Acad::eInvalidInput;
  if (newParam >= 0.0) return Acad::eInvalidInput;  // already on the ray
  mBase += mDir * newParam;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::extend(bool extendStart, const AcGePoint3d& toPoint) {
  if (Acad::ErrorStatus es = checkWrite("extend"); es != Acad::eOk) return es;
  if (!extendStart) return Acad::eNotApplicable;
  mBase += mDir * (toPoint - mBase).dotProduct(mDir);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::getGeCurve(AcGeCurve3d*& pGeCurve, const AcGeTol&) const {
  pGeCurve = nullptr;
  if (Acad::ErrorStatus es = checkRead("getGeCurve"); es != Acad::eOk) return es;
  pGeCurve = new AcGeRay3d(mBase, mDir);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  AcGeVector3d d = mDir;
  d.transformBy(xform);
  if (d.isZeroLength()) return Acad::eCannotScaleNonUniformly;  // a singular matrix flattens it
  mBase.transformBy(xform);
  mDir = d.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::dxfInFields(AcDbDxfFiler* filer) {
  if (filer == nullptr) return Acad::eNullObjectPointer;
  if (Acad::ErrorStatus es = AcDbCurve::dxfInFields(filer); es != Acad::eOk) return es;
  resbuf rb{};
  while (filer->readItem(&rb) == Acad::eOk) {
    if (rb.restype == 10) {
      mBase.set(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]);
    } else if (rb.restype == 11) {
      // A zero or non-finite direction leaves no ray; such files keep the one held.
      const AcGeVector3d v(rb.resval.rpoint[0], rb.resval.rpoint[1], rb.resval.rpoint[2]);
      if (v.length() > 1e-12 && std::isfinite(v.length())) mDir = v.normal();
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::dxfOutFields(AcDbDxfFiler* filer) const {
  if (Acad::ErrorStatus es = AcDbCurve::dxfOutFields(filer); es != Acad::eOk) return es;
  filer->writeString(code(100), L"AcDbRay");
  filer->writePoint3d(code(10), mBase);
  filer->writeVector3d(code(11), mDir);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbRay::getGeomExtents(AcDbExtents&) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  return Acad::eInvalidExtents;
}

Acad::ErrorStatus AcDbRay::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mBase);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRay::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices)
    if (i != 0) return Acad::eInvalidIndex;
  if (indices.length() > 0) mBase += offset;
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDbRay::subPath() const {
  auto path = std::make_shared<tdhost::CurvePath>();
  path->addLine(mBase, mBase + mDir, 0.0, 1.0);
  path->setUnboundedEnd();
  path->finish(false, false);
  return path;
}

Acad::ErrorStatus AcDbRay::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  const AcGePoint3d base = mBase.orthoProject(plane);
  const AcGeVector3d dir = (mBase + mDir).orthoProject(plane) - base;
  if (dir.length() <= 1e-12) return Acad::eDegenerateGeometry;
  auto* ray = new AcDbRay;
  ray->mBase = base;
  ray->mDir = dir.normal();
  tdhost::copyTraits(*this, *ray);
  projCurve = ray;
  return Acad::eOk;
}
