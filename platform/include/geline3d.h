// AcGeLine3d: an unbounded line, point(t) = pnt + t * vec.
#pragma once

#include "gelent3d.h"
#include "platformexport.h"

class TDHOST_API AcGeLine3d : public AcGeLinearEnt3d {
 public:
  AcGeLine3d() = default;  // the x axis
  AcGeLine3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : AcGeLinearEnt3d(pnt, vec) {}
  AcGeLine3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : AcGeLinearEnt3d(pnt1, pnt2 - pnt1) {}

  static const AcGeLine3d kXAxis;
  static const AcGeLine3d kYAxis;
  static const AcGeLine3d kZAxis;

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kLine3d || AcGeLinearEnt3d::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kLine3d; }
  AcGeEntity3d* copy() const override { return new AcGeLine3d(*this); }
  void getInterval(AcGeInterval& intrvl) const override { intrvl.set(); }
  using AcGeCurve3d::getInterval;

  AcGeLine3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) { mPoint = pnt; mVec = vec; return *this; }
  AcGeLine3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) { return set(pnt1, pnt2 - pnt1); }
};
