// AcDbRay: a half line from a base point along a unit direction, without end. Parameter and
// distance: the distance from the base point (0 at the base, growing along the direction).
//
// What a ray has not got answers eNotApplicable: the end parameter and end point, the area,
// a move of the end. Its extents are infinite (eInvalidExtents).
#pragma once

#include "dbcurve.h"

class TDHOST_API AcDbRay : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbRay);
  // From the origin along +x.
  AcDbRay();
  ~AcDbRay() override;
  TDHOST_DECLARE_COPYABLE(AcDbRay)

  AcGePoint3d basePoint() const { return mBase; }
  void setBasePoint(const AcGePoint3d& pt);
  AcGeVector3d unitDir() const { return mDir; }
  // Normalised; a zero vector is ignored (a ray needs a direction).
  void setUnitDir(const AcGeVector3d& vec);
  // The point one unit along the ray.
  AcGePoint3d secondPoint() const { return mBase + mDir; }
  // Aims the ray through pt; eInvalidInput when pt is the base point.
  Acad::ErrorStatus setSecondPoint(const AcGePoint3d& pt);

  bool isClosed() const override { return false; }
  bool isPeriodic() const override { return false; }
  Acad::ErrorStatus getStartParam(double& param) const override;
  Acad::ErrorStatus getEndParam(double& param) const override;
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
  // Parameters and distances below zero (beyond a hair) give eInvalidInput; points off the ray
  // too (1e-9 of the coordinates' size).
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
  Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
  Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
  Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
  Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;
  using AcDbCurve::getFirstDeriv;
  using AcDbCurve::getSecondDeriv;
  Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const override;
  Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& secDeriv) const override;
  // With extend the ray runs back through its base point as a whole line.
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                      bool extend = false) const override;
  // A ray seen end-on along normal answers its base point.
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, const AcGeVector3d& normal,
                                      AcGePoint3d& pointOnCurve, bool extend = false) const override;
  Acad::ErrorStatus getArea(double& area) const override;
  // A line from the base to the first parameter, lines between the others, and a ray from the
  // last; parameters at or below zero are no split.
  using AcDbCurve::getSplitCurves;
  Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const override;
  // Only the start moves: newParam below zero, or the point's foot on the ray's line.
  Acad::ErrorStatus extend(double newParam) override;
  Acad::ErrorStatus extend(bool extendStart, const AcGePoint3d& toPoint) override;
  // An AcGeRay3d.
  Acad::ErrorStatus getGeCurve(AcGeCurve3d*& pGeCurve, const AcGeTol& tol = AcGeContext::gTol) const override;

  // Any matrix: the base point and the direction map (the direction renormalised).
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // The base point.
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& stretchPoints) const override;
  Acad::ErrorStatus moveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
  // One unit piece from the base that runs on without end (for intersections).
  std::shared_ptr<const tdhost::CurvePath> subPath() const override;

 protected:
  AcDbRay(const AcDbRay&) = default;
  AcDbRay& operator=(const AcDbRay&) = default;
  // A ray seen end-on gives eDegenerateGeometry.
  Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const override;

 private:
  AcGePoint3d mBase;
  AcGeVector3d mDir{1, 0, 0};
};
