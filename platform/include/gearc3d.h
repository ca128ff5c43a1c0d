// AcGeCircArc3d: a circular arc or full circle. The parameter is the angle in radians from refVec,
// counter-clockwise about the normal: point(a) = center + r (cos a * refVec + sin a * (normal x refVec)),
// over [startAng, endAng] with 0 < endAng - startAng <= 2pi.
#pragma once

#include "gecurv3d.h"
#include "geplane.h"
#include "platformexport.h"

class AcGeLine3d;
class AcGeLinearEnt3d;

class TDHOST_API AcGeCircArc3d : public AcGeCurve3d {
 public:
  AcGeCircArc3d() = default;  // unit circle about the origin in the XY plane
  AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius) { set(cent, nrm, radius); }
  AcGeCircArc3d(const AcGePoint3d& cent, const AcGeVector3d& nrm, const AcGeVector3d& refVec, double radius,
                double startAngle, double endAngle) {
    set(cent, nrm, refVec, radius, startAngle, endAngle);
  }
  AcGeCircArc3d(const AcGePoint3d& startPoint, const AcGePoint3d& pnt, const AcGePoint3d& endPoint) {
    set(startPoint, pnt, endPoint);
  }

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kCircArc3d || AcGeCurve3d::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kCircArc3d; }
  AcGeEntity3d* copy() const override { return new AcGeCircArc3d(*this); }
  bool isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol = AcGeContext::gTol) const override;
  // Non-uniform scaling would make an ellipse; it is applied through the scale of the matrix.
  AcGeEntity3d& transformBy(const AcGeMatrix3d& xfm) override;

  // Intersections (0, 1 or 2) with a line, ray or segment, each point on both entities.
  bool intersectWith(const AcGeLinearEnt3d& line, int& intn, AcGePoint3d& p1, AcGePoint3d& p2,
                     const AcGeTol& tol = AcGeContext::gTol) const;
  // Intersections with another arc, coplanar or not; overlapping arcs report none.
  bool intersectWith(const AcGeCircArc3d& arc, int& intn, AcGePoint3d& p1, AcGePoint3d& p2,
                     const AcGeTol& tol = AcGeContext::gTol) const;
  // The tangent line at pnt, which must lie on the arc.
  bool tangent(const AcGePoint3d& pnt, AcGeLine3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
  void getPlane(AcGePlane& plane) const;
  // Strictly inside the full circle and on its plane.
  bool isInside(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;

  AcGePoint3d center() const { return mCenter; }
  AcGeVector3d normal() const { return mNormal; }
  AcGeVector3d refVec() const { return mRefVec; }
  double radius() const { return mRadius; }
  double startAng() const { return mStartAng; }
  double endAng() const { return mEndAng; }
  AcGePoint3d startPoint() const { return evalPoint(mStartAng); }
  AcGePoint3d endPoint() const { return evalPoint(mEndAng); }

  AcGeCircArc3d& setCenter(const AcGePoint3d& cent) { mCenter = cent; return *this; }
  // refVec is made perpendicular to the normal; both are stored as unit vectors.
  AcGeCircArc3d& setAxes(const AcGeVector3d& normal, const AcGeVector3d& refVec);
  AcGeCircArc3d& setRadius(double radius) { mRadius = radius; return *this; }
  // An end angle not above the start is raised by whole turns; a sweep above 2pi is cut to 2pi.
  AcGeCircArc3d& setAngles(double startAngle, double endAngle);
  // Full circle; refVec from the arbitrary-axis rule.
  AcGeCircArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& nrm, double radius);
  AcGeCircArc3d& set(const AcGePoint3d& cent, const AcGeVector3d& nrm, const AcGeVector3d& refVec, double radius,
                     double startAngle, double endAngle);
  // The arc from startPoint through pnt to endPoint: refVec points at startPoint, startAng is 0 and
  // the normal makes the sweep counter-clockwise. Collinear points leave the arc unchanged.
  AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt, const AcGePoint3d& endPoint);
  AcGeCircArc3d& set(const AcGePoint3d& startPoint, const AcGePoint3d& pnt, const AcGePoint3d& endPoint,
                     AcGeError& error);

  void getInterval(AcGeInterval& intrvl) const override { intrvl.set(mStartAng, mEndAng); }
  using AcGeCurve3d::getInterval;
  AcGePoint3d evalPoint(double param) const override;
  using AcGeCurve3d::evalPoint;
  bool isClosed(const AcGeTol& tol = AcGeContext::gTol) const override;
  double length(double fromParam, double toParam, double tol = AcGeContext::gTol.equalPoint()) const override;
  double paramAtLength(double datumParam, double length, bool posParamDir = true,
                       double tol = AcGeContext::gTol.equalPoint()) const override;
  double paramOf(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;

 protected:
  double closestParam(const AcGePoint3d& pnt) const override;
  double projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const override;
  AcGeVector3d derivative(double param, int order) const override;
  void appendSampleParams(double fromParam, double toParam, double approxEps, AcGeDoubleArray& params) const override;

 private:
  AcGeVector3d yAxis() const { return mNormal.crossProduct(mRefVec); }
  // Angle of the direction v (projected onto the arc's plane) measured like the parameter, in [startAng, startAng + 2pi).
  double angleOf(const AcGeVector3d& v) const;
  bool isOnArcAngle(const AcGePoint3d& pnt, const AcGeTol& tol) const;

  AcGePoint3d mCenter;
  AcGeVector3d mNormal{0.0, 0.0, 1.0};
  AcGeVector3d mRefVec{1.0, 0.0, 0.0};
  double mRadius = 1.0;
  double mStartAng = 0.0;
  double mEndAng = 6.283185307179586;
};
