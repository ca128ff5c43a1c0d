// AcGeCurve3d: the base of parametric 3D curves. Each curve defines its parameter: a line segment
// runs over [0, 1], an arc over its angles, a polyline over [0, number of points - 1].
#pragma once

#include "acarray.h"
#include "geent3d.h"
#include "geintrvl.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "platformexport.h"

class TDHOST_API AcGeCurve3d : public AcGeEntity3d {
 public:
  bool isKindOf(AcGe::EntityId entType) const override {
    return entType == AcGe::kCurve3d || AcGeEntity3d::isKindOf(entType);
  }

  virtual void getInterval(AcGeInterval& intrvl) const = 0;
  // The start and end points are set only where the interval is bounded.
  void getInterval(AcGeInterval& intrvl, AcGePoint3d& start, AcGePoint3d& end) const;

  double distanceTo(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;
  // The curve point nearest pnt (exact for lines, arcs and polylines). On ties the smaller parameter wins.
  AcGePoint3d closestPointTo(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;
  // The curve point whose projection along projectDirection (onto a plane normal to it) lies nearest
  // the projection of pnt: the point "above or below" pnt as seen along the direction.
  AcGePoint3d projClosestPointTo(const AcGePoint3d& pnt, const AcGeVector3d& projectDirection,
                                 const AcGeTol& tol = AcGeContext::gTol) const;

  bool isOn(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const override;
  bool isOn(const AcGePoint3d& pnt, double& param, const AcGeTol& tol = AcGeContext::gTol) const;
  bool isOn(double param, const AcGeTol& tol = AcGeContext::gTol) const;
  // Parameter of the curve point nearest pnt (pnt need not be on the curve).
  virtual double paramOf(const AcGePoint3d& pnt, const AcGeTol& tol = AcGeContext::gTol) const;

  virtual bool isClosed(const AcGeTol& tol = AcGeContext::gTol) const;
  // Arc length between two parameters, whatever their order (always >= 0).
  virtual double length(double fromParam, double toParam, double tol = AcGeContext::gTol.equalPoint()) const = 0;
  // The parameter `length` along the curve from datumParam, forwards or backwards; lengths beyond
  // the curve's end extrapolate along the underlying geometry.
  virtual double paramAtLength(double datumParam, double length, bool posParamDir = true,
                               double tol = AcGeContext::gTol.equalPoint()) const = 0;

  // False for an end that is unbounded.
  bool hasStartPoint(AcGePoint3d& startPnt) const;
  bool hasEndPoint(AcGePoint3d& endPnt) const;
  virtual AcGePoint3d evalPoint(double param) const = 0;
  // The point and its first numDeriv derivatives with respect to the parameter (up to 2).
  AcGePoint3d evalPoint(double param, int numDeriv, AcGeVector3dArray& derivArray) const;
  // Points with at most approxEps chord deviation between the parameters (exact points for lines,
  // chord-error steps for arcs).
  void getSamplePoints(double fromParam, double toParam, double approxEps, AcGePoint3dArray& pointArray,
                       AcGeDoubleArray& paramArray) const;
  // numSample points at evenly spaced parameters over a bounded interval (nothing for unbounded ones).
  void getSamplePoints(int numSample, AcGePoint3dArray& pointArray) const;
  void getSamplePoints(int numSample, AcGePoint3dArray& pointArray, AcGeDoubleArray& paramArray) const;

 protected:
  AcGeCurve3d() = default;
  AcGeCurve3d(const AcGeCurve3d&) = default;
  AcGeCurve3d& operator=(const AcGeCurve3d&) = default;

  // Parameter of the nearest point within the curve's interval.
  virtual double closestParam(const AcGePoint3d& pnt) const = 0;
  // Parameter minimising the distance seen along unitDir (unitDir is unit length). The default
  // brackets the minimum on a dense sampling and refines it by golden-section search.
  virtual double projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const;
  // Derivatives of order 1..2 with respect to the parameter.
  virtual AcGeVector3d derivative(double param, int order) const = 0;
  // Parameters where sampling must break (vertices); the default has none.
  virtual void appendSampleParams(double fromParam, double toParam, double approxEps, AcGeDoubleArray& params) const;
};
