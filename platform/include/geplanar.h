// AcGePlanarEnt: a planar surface given by an origin and two axes; parameters (u, v) map to
// origin + u * axis1 + v * axis2.
#pragma once

#include "gesurf.h"
#include "gevec3d.h"
#include "platformexport.h"

class AcGeLinearEnt3d;

class TDHOST_API AcGePlanarEnt : public AcGeSurface {
 public:
  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kPlanarEnt || AcGeSurface::isKindOf(entType);
  }

  // The point where the linear entity meets the plane; false when it is parallel to the plane or
  // the meeting point lies outside the entity's parameter interval.
  bool intersectWith(const AcGeLinearEnt3d& linEnt, AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isParallelTo(const AcGeLinearEnt3d& linEnt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isParallelTo(const AcGePlanarEnt& otherPlnEnt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGeLinearEnt3d& linEnt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isPerpendicularTo(const AcGePlanarEnt& otherPlnEnt, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isCoplanarTo(const AcGePlanarEnt& otherPlnEnt, const AcGeTol& tol = AcGeContext::gTol) const;
  // Projection of p onto the plane along direction; false (projP = p) when the direction is parallel to it.
  bool project(const AcGePoint3d& p, const AcGeVector3d& direction, AcGePoint3d& projP,
               const AcGeTol& tol = AcGeContext::gTol) const;

  void get(AcGePoint3d& origin, AcGeVector3d& uVec, AcGeVector3d& vVec) const { origin = mOrigin; uVec = mAxisU; vVec = mAxisV; }
  void get(AcGePoint3d& uPnt, AcGePoint3d& origin, AcGePoint3d& vPnt) const {
    uPnt = mOrigin + mAxisU; origin = mOrigin; vPnt = mOrigin + mAxisV;
  }
  AcGePoint3d pointOnPlane() const { return mOrigin; }
  // Unit normal, axis1 x axis2 normalised; zero for a degenerate plane.
  AcGeVector3d normal() const { return mNormal; }
  // a x + b y + c z + d = 0 with (a, b, c) the unit normal.
  void getCoefficients(double& a, double& b, double& c, double& d) const;
  void getCoordSystem(AcGePoint3d& origin, AcGeVector3d& axis1, AcGeVector3d& axis2) const { get(origin, axis1, axis2); }

  AcGePoint2d paramOf(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;
  AcGePoint3d evalPoint(const AcGePoint2d& param) const override { return mOrigin + mAxisU * param.x + mAxisV * param.y; }
  AcGePoint3d closestPointTo(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;

 protected:
  AcGePlanarEnt() = default;
  AcGePlanarEnt(const AcGePlanarEnt&) = default;
  AcGePlanarEnt& operator=(const AcGePlanarEnt&) = default;
  // Stores the frame; the normal is derived from the axes.
  void setFrame(const AcGePoint3d& origin, const AcGeVector3d& axisU, const AcGeVector3d& axisV);
  void transformFrame(const AcGeMatrix3d& xfm);

  AcGePoint3d mOrigin;
  AcGeVector3d mAxisU{1.0, 0.0, 0.0};
  AcGeVector3d mAxisV{0.0, 1.0, 0.0};
  AcGeVector3d mNormal{0.0, 0.0, 1.0};
};
