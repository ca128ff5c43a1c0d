// AcGeCurve3d: queries shared by all curves, built on each curve's evaluation and closest-parameter hooks.
#include "gecurv3d.h"

#include <algorithm>
#include <cmath>

void AcGeCurve3d::getInterval(AcGeInterval& intrvl, AcGePoint3d& start, AcGePoint3d& end) const {
  getInterval(intrvl);
  if (intrvl.isBoundedBelow()) start = evalPoint(intrvl.lowerBound());
  if (intrvl.isBoundedAbove()) end = evalPoint(intrvl.upperBound());
}

double AcGeCurve3d::distanceTo(const AcGePoint3d& pnt, const AcGeTol& tol) const {
  return pnt.distanceTo(closestPointTo(pnt, tol));
}

AcGePoint3d AcGeCurve3d::closestPointTo(const AcGePoint3d& pnt, const AcGeTol&) const {
  return evalPoint(closestParam(pnt));
}

AcGePoint3d AcGeCurve3d::projClosestPointTo(const AcGePoint3d& pnt, const AcGeVector3d& projectDirection,
                                            const AcGeTol& tol) const {
  if (projectDirection.isZeroLength(tol)) return closestPointTo(pnt, tol);
  return evalPoint(projClosestParam(pnt, projectDirection.normal()));
}

double AcGeCurve3d::projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const {
  AcGeInterval range;
  getInterval(range);
  const double lo = range.isBoundedBelow() ? range.lowerBound() : range.element() - 1.0e6;
  const double hi = range.isBoundedAbove() ? range.upperBound() : range.element() + 1.0e6;
  auto cost = [&](double t) {
    const AcGeVector3d d = evalPoint(t) - pnt;
    return (d - unitDir * d.dotProduct(unitDir)).lengthSqrd();
  };
  // Dense sampling finds the basin; golden-section search (Kiefer 1953) narrows it to rounding.
  constexpr int kSamples = 256;
  int best = 0;
  double bestCost = cost(lo);
  for (int i = 1; i <= kSamples; ++i) {
    const double c = cost(lo + (hi - lo) * i / kSamples);
    if (c < bestCost) { bestCost = c; best = i; }
  }
  double a = lo + (hi - lo) * std::max(best - 1, 0) / kSamples;
  double b = lo + (hi - lo) * std::min(best + 1, kSamples) / kSamples;
  const double g = (std::sqrt(5.0) - 1.0) / 2.0;
  double x1 = b - g * (b - a), x2 = a + g * (b - a);
  double f1 = cost(x1), f2 = cost(x2);
  for (int it = 0; it < 200 && b - a > 1e-15 * std::max(1.0, std::fabs(a)); ++it) {
    if (f1 < f2) { b = x2; x2 = x1; f2 = f1; x1 = b - g * (b - a); f1 = cost(x1); }
    else { a = x1; x1 = x2; f1 = f2; x2 = a + g * (b - a); f2 = cost(x2); }
  }
  const double t = 0.5 * (a + b);
  return cost(t) <= bestCost ? t : lo + (hi - lo) * best / kSamples;
}

bool AcGeCurve3d::isOn(const AcGePoint3d& pnt, const AcGeTol& tol) const { return distanceTo(pnt, tol) <= tol.equalPoint(); }

bool AcGeCurve3d::isOn(const AcGePoint3d& pnt, double& param, const AcGeTol& tol) const {
  const double t = closestParam(pnt);
  if (evalPoint(t).distanceTo(pnt) > tol.equalPoint()) return false;
  param = t;
  return true;
}

bool AcGeCurve3d::isOn(double param, const AcGeTol&) const {
  AcGeInterval range;
  getInterval(range);
  return range.contains(param);
}

double AcGeCurve3d::paramOf(const AcGePoint3d& pnt, const AcGeTol&) const { return closestParam(pnt); }

bool AcGeCurve3d::isClosed(const AcGeTol& tol) const {
  AcGeInterval range;
  getInterval(range);
  if (!range.isBounded()) return false;
  return evalPoint(range.lowerBound()).isEqualTo(evalPoint(range.upperBound()), tol);
}

bool AcGeCurve3d::hasStartPoint(AcGePoint3d& startPnt) const {
  AcGeInterval range;
  getInterval(range);
  if (!range.isBoundedBelow()) return false;
  startPnt = evalPoint(range.lowerBound());
  return true;
}

bool AcGeCurve3d::hasEndPoint(AcGePoint3d& endPnt) const {
  AcGeInterval range;
  getInterval(range);
  if (!range.isBoundedAbove()) return false;
  endPnt = evalPoint(range.upperBound());
  return true;
}

AcGePoint3d AcGeCurve3d::evalPoint(double param, int numDeriv, AcGeVector3dArray& derivArray) const {
  derivArray.removeAll();
  for (int order = 1; order <= numDeriv && order <= 2; ++order) derivArray.append(derivative(param, order));
  return evalPoint(param);
}

void AcGeCurve3d::appendSampleParams(double, double, double, AcGeDoubleArray&) const {}

void AcGeCurve3d::getSamplePoints(double fromParam, double toParam, double approxEps, AcGePoint3dArray& pointArray,
                                  AcGeDoubleArray& paramArray) const {
  pointArray.removeAll();
  paramArray.removeAll();
  if (toParam < fromParam) std::swap(fromParam, toParam);
  AcGeDoubleArray params;
  params.append(fromParam);
  appendSampleParams(fromParam, toParam, approxEps, params);
  params.append(toParam);
  std::sort(params.begin(), params.end());
  for (double t : params) {
    if (!paramArray.isEmpty() && t - paramArray.last() <= 0.0) continue;
    paramArray.append(t);
    pointArray.append(evalPoint(t));
  }
}

void AcGeCurve3d::getSamplePoints(int numSample, AcGePoint3dArray& pointArray) const {
  AcGeDoubleArray params;
  getSamplePoints(numSample, pointArray, params);
}

void AcGeCurve3d::getSamplePoints(int numSample, AcGePoint3dArray& pointArray, AcGeDoubleArray& paramArray) const {
  AcGeInterval range;
  getInterval(range);
  if (!range.isBounded() || numSample <= 0) return;
  const double lo = range.lowerBound(), hi = range.upperBound();
  for (int i = 0; i < numSample; ++i) {
    const double t = numSample == 1 ? lo : lo + (hi - lo) * i / (numSample - 1);
    paramArray.append(t);
    pointArray.append(evalPoint(t));
  }
}
