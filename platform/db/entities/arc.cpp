// AcDbArc and AcDbCircle: circular curves in the plane of their normal, parameterised by angle.
#include <cmath>

#include "dbents.h"
#include "entities/curve_path.h"
#include "entities/entity_util.h"
#include "geplane.h"
#include "host_init.h"

TDHOST_DEFINE_MEMBERS(AcDbArc)
TDHOST_DEFINE_MEMBERS(AcDbCircle)

using tdhost::kTwoPi;

namespace {

// The world arc of a centre, normal and OCS angles (end raised above the start).
AcGeCircArc3d worldArc(const AcGePoint3d& c, const AcGeVector3d& n, double r, double start, double end) {
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(n, x, y);
  AcGeCircArc3d arc;
  arc.set(c, n, x, r, start, end);
  return arc;
}

double raisedEnd(double start, double end) {
  while (end <= start) end += kTwoPi;
  return end;
}

}  // namespace

AcDbArc::AcDbArc() = default;
AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : mCenter(center), mRadius(radius), mStartAngle(startAngle), mEndAngle(endAngle) {}
AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : mCenter(center), mNormal(normal.normal()), mRadius(radius), mStartAngle(startAngle), mEndAngle(endAngle) {}
AcDbArc::~AcDbArc() = default;

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
  if (Acad::ErrorStatus es = checkWrite("setCenter"); es != Acad::eOk) return es;
  mCenter = center;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
  if (Acad::ErrorStatus es = checkWrite("setRadius"); es != Acad::eOk) return es;
  if (!(radius > 0.0)) return Acad::eInvalidInput;
  mRadius = radius;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
  if (Acad::ErrorStatus es = checkWrite("setStartAngle"); es != Acad::eOk) return es;
  mStartAngle = angle;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
  if (Acad::ErrorStatus es = checkWrite("setEndAngle"); es != Acad::eOk) return es;
  mEndAngle = angle;
  return Acad::eOk;
}

double AcDbArc::totalAngle() const { return raisedEnd(mStartAngle, mEndAngle) - mStartAngle; }

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setThickness(double thickness) {
  if (Acad::ErrorStatus es = checkWrite("setThickness"); es != Acad::eOk) return es;
  mThickness = thickness;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double scale = 1.0;
  if (!tdhost::uniformScale(xform, scale)) return Acad::eCannotScaleNonUniformly;
  const AcGeCircArc3d arc = worldArc(mCenter, mNormal, mRadius, mStartAngle, raisedEnd(mStartAngle, mEndAngle));
  AcGePoint3d s = arc.startPoint(), e = arc.endPoint();
  s.transformBy(xform);
  e.transformBy(xform);
  mCenter.transformBy(xform);
  // The image of the OCS axes keeps the sweep counter-clockwise, reflections included.
  mNormal = tdhost::transformNormal(mNormal, xform);
  mRadius *= scale;
  mStartAngle = tdhost::ocsAngle(s - mCenter, mNormal);
  mEndAngle = tdhost::ocsAngle(e - mCenter, mNormal);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  AcGePoint3d lo, hi;
  subPath()->extents(lo, hi);
  extents = AcDbExtents(lo, hi);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  const double end = raisedEnd(mStartAngle, mEndAngle);
  const AcGeCircArc3d arc = worldArc(mCenter, mNormal, mRadius, mStartAngle, end);
  stretchPoints.append(arc.startPoint());
  stretchPoints.append(arc.endPoint());
  stretchPoints.append(arc.evalPoint((mStartAngle + end) / 2.0));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  bool moved[3] = {false, false, false};
  for (int i : indices) {
    if (i < 0 || i > 2) return Acad::eInvalidIndex;
    moved[i] = true;
  }
  if (!moved[0] && !moved[1] && !moved[2]) return Acad::eOk;
  if (moved[0] && moved[1] && moved[2]) {
    mCenter += offset;
    return Acad::eOk;
  }
  AcGePoint3dArray pts;
  getStretchPoints(pts);
  for (int k = 0; k < 3; ++k)
    if (moved[k]) pts[k] += offset;
  // The arc through the moved ends and middle; it keeps its side of the old normal (start and
  // end trade places when the three points now turn the other way).
  AcGeError error = AcGe::kOk;
  AcGeCircArc3d fit;
  fit.set(pts[0], pts[2], pts[1], error);
  if (error != AcGe::kOk) return Acad::eDegenerateGeometry;
  const bool turned = fit.normal().dotProduct(mNormal) < 0.0;
  mCenter = fit.center();
  mRadius = fit.radius();
  mNormal = turned ? -fit.normal() : fit.normal();
  mStartAngle = tdhost::ocsAngle((turned ? pts[1] : pts[0]) - mCenter, mNormal);
  mEndAngle = tdhost::ocsAngle((turned ? pts[0] : pts[1]) - mCenter, mNormal);
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDbArc::subPath() const {
  const double end = raisedEnd(mStartAngle, mEndAngle);
  auto path = std::make_shared<tdhost::CurvePath>();
  path->addArc(worldArc(mCenter, mNormal, mRadius, mStartAngle, end), mStartAngle, end);
  path->finish(false, false);
  return path;
}

AcDbCurve* AcDbArc::subCurveBetween(double fromParam, double toParam) const {
  auto* arc = new AcDbArc(mCenter, mNormal, mRadius, tdhost::wrapAngle(fromParam), tdhost::wrapAngle(toParam));
  arc->mThickness = mThickness;
  tdhost::copyTraits(*this, *arc);
  return arc;
}

Acad::ErrorStatus AcDbArc::subExtendTo(bool atStart, double newParam) {
  const double end = raisedEnd(mStartAngle, mEndAngle);
  if ((atStart ? end - newParam : newParam - mStartAngle) >= kTwoPi) return Acad::eInvalidInput;
  (atStart ? mStartAngle : mEndAngle) = tdhost::wrapAngle(newParam);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  if (!mNormal.isParallelTo(plane.normal())) return Acad::eNotApplicable;
  auto* arc = new AcDbArc(mCenter.orthoProject(plane), mNormal, mRadius, mStartAngle, mEndAngle);
  tdhost::copyTraits(*this, *arc);
  projCurve = arc;
  return Acad::eOk;
}

AcDbCircle::AcDbCircle() = default;
AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : mCenter(center), mNormal(normal.normal()), mRadius(radius) {}
AcDbCircle::~AcDbCircle() = default;

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
  if (Acad::ErrorStatus es = checkWrite("setCenter"); es != Acad::eOk) return es;
  mCenter = center;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
  if (Acad::ErrorStatus es = checkWrite("setRadius"); es != Acad::eOk) return es;
  if (!(radius > 0.0)) return Acad::eInvalidInput;
  mRadius = radius;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
  if (Acad::ErrorStatus es = checkWrite("setNormal"); es != Acad::eOk) return es;
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  mNormal = normal.normal();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::setThickness(double thickness) {
  if (Acad::ErrorStatus es = checkWrite("setThickness"); es != Acad::eOk) return es;
  mThickness = thickness;
  return Acad::eOk;
}

double AcDbCircle::circumference() const { return kTwoPi * mRadius; }

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = checkWrite("transformBy"); es != Acad::eOk) return es;
  double scale = 1.0;
  if (!tdhost::uniformScale(xform, scale)) return Acad::eCannotScaleNonUniformly;
  mCenter.transformBy(xform);
  mNormal = tdhost::transformNormal(mNormal, xform);
  mRadius *= scale;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getGeomExtents(AcDbExtents& extents) const {
  if (Acad::ErrorStatus es = checkRead("getGeomExtents"); es != Acad::eOk) return es;
  AcGePoint3d lo, hi;
  subPath()->extents(lo, hi);
  extents = AcDbExtents(lo, hi);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::getStretchPoints(AcGePoint3dArray& stretchPoints) const {
  if (Acad::ErrorStatus es = checkRead("getStretchPoints"); es != Acad::eOk) return es;
  stretchPoints.append(mCenter);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
  if (Acad::ErrorStatus es = checkWrite("moveStretchPointsAt"); es != Acad::eOk) return es;
  for (int i : indices)
    if (i != 0) return Acad::eInvalidIndex;
  if (indices.length() > 0) mCenter += offset;
  return Acad::eOk;
}

std::shared_ptr<const tdhost::CurvePath> AcDbCircle::subPath() const {
  auto path = std::make_shared<tdhost::CurvePath>();
  path->addArc(worldArc(mCenter, mNormal, mRadius, 0.0, kTwoPi), 0.0, kTwoPi);
  path->finish(true, true);
  return path;
}

AcDbCurve* AcDbCircle::subCurveBetween(double fromParam, double toParam) const {
  auto* arc = new AcDbArc(mCenter, mNormal, mRadius, tdhost::wrapAngle(fromParam), tdhost::wrapAngle(toParam));
  arc->setThickness(mThickness);
  tdhost::copyTraits(*this, *arc);
  return arc;
}

Acad::ErrorStatus AcDbCircle::subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const {
  if (!mNormal.isParallelTo(plane.normal())) return Acad::eNotApplicable;
  auto* circle = new AcDbCircle(mCenter.orthoProject(plane), mNormal, mRadius);
  tdhost::copyTraits(*this, *circle);
  projCurve = circle;
  return Acad::eOk;
}
