// AcGeRay3d: a half line, point(t) = pnt + t * vec for t >= 0.
#pragma once

#include "gelent3d.h"
#include "platformexport.h"

class TDHOST_API AcGeRay3d : public AcGeLinearEnt3d {
 public:
  AcGeRay3d() = default;  // from the origin along +x
  AcGeRay3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : AcGeLinearEnt3d(pnt, vec) {}
  AcGeRay3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : AcGeLinearEnt3d(pnt1, pnt2 - pnt1) {}

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kRay3d || AcGeLinearEnt3d::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kRay3d; }
  AcGeEntity3d* copy() const override { return new AcGeRay3d(*this); }
  void getInterval(AcGeInterval& intrvl) const override { intrvl.set(true, 0.0); }
  using AcGeCurve3d::getInterval;

  AcGeRay3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) { mPoint = pnt; mVec = vec; return *this; }
  AcGeRay3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) { return set(pnt1, pnt2 - pnt1); }
};
