// AcGeLineSeg3d: a line segment, point(t) = start + t * (end - start) over [0, 1].
#pragma once

#include "gelent3d.h"
#include "platformexport.h"

class TDHOST_API AcGeLineSeg3d : public AcGeLinearEnt3d {
 public:
  AcGeLineSeg3d() = default;  // (0,0,0) to (1,0,0)
  AcGeLineSeg3d(const AcGePoint3d& pnt, const AcGeVector3d& vec) : AcGeLinearEnt3d(pnt, vec) {}
  AcGeLineSeg3d(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) : AcGeLinearEnt3d(pnt1, pnt2 - pnt1) {}

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kLineSeg3d || AcGeLinearEnt3d::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kLineSeg3d; }
  AcGeEntity3d* copy() const override { return new AcGeLineSeg3d(*this); }
  void getInterval(AcGeInterval& intrvl) const override { intrvl.set(0.0, 1.0); }
  using AcGeCurve3d::getInterval;

  // The plane through the midpoint perpendicular to the segment.
  void getBisector(AcGePlane& plane) const;
  // (1 - blendCoeff) * start + blendCoeff * end; coefficients outside [0, 1] extrapolate.
  AcGePoint3d baryComb(double blendCoeff) const { return evalPoint(blendCoeff); }
  AcGePoint3d startPoint() const { return mPoint; }
  AcGePoint3d midPoint() const { return evalPoint(0.5); }
  AcGePoint3d endPoint() const { return mPoint + mVec; }
  using AcGeLinearEnt3d::length;
  double length() const { return mVec.length(); }

  AcGeLineSeg3d& set(const AcGePoint3d& pnt, const AcGeVector3d& vec) { mPoint = pnt; mVec = vec; return *this; }
  AcGeLineSeg3d& set(const AcGePoint3d& pnt1, const AcGePoint3d& pnt2) { return set(pnt1, pnt2 - pnt1); }
};
