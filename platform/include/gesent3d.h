// AcGeSplineEnt3d: the base of spline-like curves given by control points (here: polylines of degree 1).
#pragma once

#include "gecurv3d.h"
#include "platformexport.h"

class TDHOST_API AcGeSplineEnt3d : public AcGeCurve3d {
 public:
  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kSplineEnt3d || AcGeCurve3d::isKindOf(entType);
  }
  bool isRational() const { return false; }
  virtual int degree() const = 0;
  int order() const { return degree() + 1; }
  virtual int numControlPoints() const = 0;
  virtual AcGePoint3d controlPointAt(int idx) const = 0;
  virtual AcGeSplineEnt3d& setControlPointAt(int idx, const AcGePoint3d& pnt) = 0;
  double startParam() const { AcGeInterval i; getInterval(i); return i.lowerBound(); }
  double endParam() const { AcGeInterval i; getInterval(i); return i.upperBound(); }
  AcGePoint3d startPoint() const { return evalPoint(startParam()); }
  AcGePoint3d endPoint() const { return evalPoint(endParam()); }
  virtual bool hasFitData() const { return false; }

 protected:
  AcGeSplineEnt3d() = default;
  AcGeSplineEnt3d(const AcGeSplineEnt3d&) = default;
  AcGeSplineEnt3d& operator=(const AcGeSplineEnt3d&) = default;
};
