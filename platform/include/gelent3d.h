// AcGeLinearEnt3d: the base of lines, rays and segments: point(t) = pointOnLine + t * (defining vector).
#pragma once

#include "gecurv3d.h"
#include "platformexport.h"

class AcGeLine3d;
class AcGePlane;
class AcGePlanarEnt;

class TDHOST_API AcGeLinearEnt3d : public AcGeCurve3d {
 public:
  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kLinearEnt3d || AcGeCurve3d::isKindOf(entType);
  }

  // The single point shared with another linear entity (both within their intervals); false for
  // parallel entities and for skew ones farther apart than tol.equalPoint().
  bool intersectWith(const AcGeLinearEnt3d& line, AcGePoint3d& intPt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool intersectWith(const AcGePlanarEnt& plane, AcGePoint3d& intPnt, const AcGeTol& tol = AcGeContext::gTol) const;

  using AcGeCurve3d::isOn;
  bool isOn(const AcGePlane& plane, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isParallelTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isParallelTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGePlanarEnt& plane, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isColinearTo(const AcGeLinearEnt3d& line, const AcGeTol& tol = AcGeContext::gTol) const;
  // The plane through pnt perpendicular to this entity.
  void getPerpPlane(const AcGePoint3d& pnt, AcGePlane& plane) const;
  AcGePoint3d pointOnLine() const { return mPoint; }
  // Unit direction.
  AcGeVector3d direction() const { return mVec.normal(); }
  // The unbounded line through this entity, with the same parameterisation.
  void getLine(AcGeLine3d& line) const;

  bool isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol = AcGeContext::gTol) const override;
  AcGeEntity3d& transformBy(const AcGeMatrix3d& xfm) override;
  AcGePoint3d evalPoint(double param) const override { return mPoint + mVec * param; }
  using AcGeCurve3d::evalPoint;
  double length(double fromParam, double toParam, double tol = AcGeContext::gTol.equalPoint()) const override;
  double paramAtLength(double datumParam, double length, bool posParamDir = true,
                       double tol = AcGeContext::gTol.equalPoint()) const override;
  double paramOf(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;

 protected:
  AcGeLinearEnt3d() = default;
  AcGeLinearEnt3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : mPoint(pnt), mVec(vec) {}
  AcGeLinearEnt3d(const AcGeLinearEnt3d&) = default;
  AcGeLinearEnt3d& operator=(const AcGeLinearEnt3d&) = default;

  // Unclamped parameter of the foot of the perpendicular from pnt.
  double footParam(const AcGePoint3d& pnt) const;
  double clampParam(double t) const;
  double closestParam(const AcGePoint3d& pnt) const override { return clampParam(footParam(pnt)); }
  double projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const override;
  AcGeVector3d derivative(double, int order) const override { return order == 1 ? mVec : AcGeVector3d(); }

  AcGePoint3d mPoint;
  AcGeVector3d mVec{1.0, 0.0, 0.0};
};
