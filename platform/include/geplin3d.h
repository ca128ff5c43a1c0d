// AcGePolyline3d: straight segments through a list of points. The parameter of point i is i, so
// vertex index + fraction addresses a point: the interval is [0, numFitPoints() - 1].
#pragma once

#include <vector>

#include "gesent3d.h"
#include "platformexport.h"

class TDHOST_API AcGePolyline3d : public AcGeSplineEnt3d {
 public:
  AcGePolyline3d() = default;
  explicit AcGePolyline3d(const AcGePoint3dArray& points);
  // Approximates the curve by its sample points within apprEps of it.
  AcGePolyline3d(const AcGeCurve3d& crv, double apprEps);

  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kPolyline3d || AcGeSplineEnt3d::isKindOf(entType);
  }
  AcGe::EntityId type() const override { return AcGe::kPolyline3d; }
  AcGeEntity3d* copy() const override { return new AcGePolyline3d(*this); }
  bool isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol = AcGeContext::gTol) const override;
  AcGeEntity3d& transformBy(const AcGeMatrix3d& xfm) override;

  int numFitPoints() const { return static_cast<int>(mPoints.size()); }
  AcGePoint3d fitPointAt(int idx) const { return mPoints.at(static_cast<size_t>(idx)); }
  AcGeSplineEnt3d& setFitPointAt(int idx, const AcGePoint3d& point) { return setControlPointAt(idx, point); }
  int degree() const override { return 1; }
  int numControlPoints() const override { return numFitPoints(); }
  AcGePoint3d controlPointAt(int idx) const override { return fitPointAt(idx); }
  AcGeSplineEnt3d& setControlPointAt(int idx, const AcGePoint3d& pnt) override;
  bool hasFitData() const override { return true; }

  void getInterval(AcGeInterval& intrvl) const override;
  using AcGeCurve3d::getInterval;
  // Parameters outside the interval extrapolate along the first or last segment.
  AcGePoint3d evalPoint(double param) const override;
  using AcGeCurve3d::evalPoint;
  double length(double fromParam, double toParam, double tol = AcGeContext::gTol.equalPoint()) const override;
  double paramAtLength(double datumParam, double length, bool posParamDir = true,
                       double tol = AcGeContext::gTol.equalPoint()) const override;

 protected:
  double closestParam(const AcGePoint3d& pnt) const override;
  double projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const override;
  AcGeVector3d derivative(double param, int order) const override;
  void appendSampleParams(double fromParam, double toParam, double approxEps, AcGeDoubleArray& params) const override;

 private:
  // Index of the segment [i, i+1] holding param (clamped to the existing segments).
  int segmentOf(double param) const;
  // Length from parameter 0 to param (negative before the start).
  double lengthTo(double param) const;
  void updateLengths();

  std::vector<AcGePoint3d> mPoints;
  std::vector<double> mCumLength;  // length from point 0 to point i
};
