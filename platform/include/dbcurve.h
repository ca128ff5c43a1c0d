// AcDbCurve: the queries every curve entity answers, in the curve's own parameter:
// lines and rays by distance from the start, arcs and circles by angle (radians, an arc runs
// from its start angle up to its end angle), polylines by vertex index plus the fraction of the
// segment (by length, which for an arc is also the fraction of its angle).
//
// Statuses: a parameter or distance a hair outside the curve (1e-9 relative) is clamped;
// beyond it eInvalidInput. A point off the curve (beyond 1e-9 of the curve's size) gives
// eInvalidInput. Periodic curves (circles) wrap parameters.
#pragma once

#include "dbmain.h"
#include "gecurv3d.h"
#include "gept3dar.h"
#include "gevec3d.h"

class AcGePlane;

class TDHOST_API AcDbCurve : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCurve);
  ~AcDbCurve() override;

  virtual bool isClosed() const;
  virtual bool isPeriodic() const;

  virtual Acad::ErrorStatus getStartParam(double& param) const;
  virtual Acad::ErrorStatus getEndParam(double& param) const;
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
  virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
  virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
  virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
  // Derivatives of the point with respect to the parameter (so an arc's first derivative has
  // the radius as its length; a polyline segment's, the segment length).
  virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& firstDeriv) const;
  virtual Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& firstDeriv) const;
  virtual Acad::ErrorStatus getSecondDeriv(double param, AcGeVector3d& secDeriv) const;
  virtual Acad::ErrorStatus getSecondDeriv(const AcGePoint3d& point, AcGeVector3d& secDeriv) const;

  // The curve point nearest givenPnt; with extend, an open curve's ends extend (a line to its
  // infinite line, an arc to its circle, a polyline's end segments).
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, AcGePoint3d& pointOnCurve,
                                              bool extend = false) const;
  // The curve point nearest givenPnt as seen along `normal` (distances measured in the plane
  // normal to it): the point above or below givenPnt; extend as above.
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt, const AcGeVector3d& normal,
                                              AcGePoint3d& pointOnCurve, bool extend = false) const;

  // A new non-database curve: this one projected orthogonally onto the plane. Arcs, circles and
  // bulged polylines project only onto planes parallel to their own (eNotApplicable otherwise).
  virtual Acad::ErrorStatus getOrthoProjectedCurve(const AcGePlane& plane, AcDbCurve*& projCurve) const;
  // The same along projDir; only orthogonal directions are supported here.
  virtual Acad::ErrorStatus getProjectedCurve(const AcGePlane& plane, const AcGeVector3d& projDir,
                                              AcDbCurve*& projCurve) const;

  // The enclosed area (a closed curve's, or that of an open planar curve closed by its chord).
  virtual Acad::ErrorStatus getArea(double& area) const;

  // New non-database curves of the same kind between the given parameters (or points, which
  // must lie on the curve); the caller owns and deletes them. A closed curve's last piece runs
  // through the start to the first split.
  virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params, AcDbVoidPtrArray& curveSegments) const;
  virtual Acad::ErrorStatus getSplitCurves(const AcGePoint3dArray& points, AcDbVoidPtrArray& curveSegments) const;

  // Moves the start or end so the curve runs to newParam (lines: a distance beyond either end;
  // arcs: an angle). Closed curves give eNotApplicable.
  virtual Acad::ErrorStatus extend(double newParam);
  // Extends (or trims) the start or end to the point nearest toPoint on the extended curve.
  virtual Acad::ErrorStatus extend(bool extendStart, const AcGePoint3d& toPoint);

  // A new AcGe copy of the curve (segment, arc or polyline of points) the caller deletes.
  virtual Acad::ErrorStatus getGeCurve(AcGeCurve3d*& pGeCurve, const AcGeTol& tol = AcGeContext::gTol) const;

 protected:
  AcDbCurve();
  AcDbCurve(const AcDbCurve&) = default;
  AcDbCurve& operator=(const AcDbCurve&) = default;

  // Host hooks for the generic queries: a new non-database curve of this kind running between two
  // parameters (a closed curve's `to` may exceed its end parameter to wrap through the start),
  // and the move of one end to a parameter.
  virtual AcDbCurve* subCurveBetween(double fromParam, double toParam) const;
  virtual Acad::ErrorStatus subExtendTo(bool atStart, double newParam);
  virtual Acad::ErrorStatus subProjected(const AcGePlane& plane, AcDbCurve*& projCurve) const;
};
