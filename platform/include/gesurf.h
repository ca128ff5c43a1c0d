// AcGeSurface: the base of parametric surfaces (here: planes).
#pragma once

#include "geent3d.h"
#include "gepnt2d.h"
#include "platformexport.h"

class TDHOST_API AcGeSurface : public AcGeEntity3d {
 public:
  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kSurface || AcGeEntity3d::isKindOf(entType);
  }
  // Surface parameters (u, v) of the surface point closest to pnt.
  virtual AcGePoint2d paramOf(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const = 0;
  virtual AcGePoint3d evalPoint(const AcGePoint2d& param) const = 0;
  virtual AcGePoint3d closestPointTo(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const = 0;
  double distanceTo(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const {
    return pnt.distanceTo(closestPointTo(pnt, tol));
  }
  bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override {
    return distanceTo(pnt, tol) <= tol.equalPoint();
  }

 protected:
  AcGeSurface() = default;
  AcGeSurface(const AcGeSurface&) = default;
  AcGeSurface& operator=(const AcGeSurface&) = default;
};
