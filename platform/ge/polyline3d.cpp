// AcGePolyline3d: straight segments through points; parameter = vertex index + fraction.
#include "geplin3d.h"

#include <algorithm>
#include <cmath>

#include "gemat3d.h"

AcGePolyline3d::AcGePolyline3d(const AcGePoint3dArray& points) : mPoints(points.begin(), points.end()) {
  updateLengths();
}

AcGePolyline3d::AcGePolyline3d(const AcGeCurve3d& crv, double apprEps) {
  AcGeInterval range;
  crv.getInterval(range);
  if (range.isBounded()) {
    AcGePoint3dArray pts;
    AcGeDoubleArray params;
    crv.getSamplePoints(range.lowerBound(), range.upperBound(), apprEps, pts, params);
    mPoints.assign(pts.begin(), pts.end());
  }
  updateLengths();
}

void AcGePolyline3d::updateLengths() {
  mCumLength.assign(mPoints.size(), 0.0);
  for (size_t i = 1; i < mPoints.size(); ++i) mCumLength[i] = mCumLength[i - 1] + mPoints[i].distanceTo(mPoints[i - 1]);
}

AcGeSplineEnt3d& AcGePolyline3d::setControlPointAt(int idx, const AcGePoint3d& pnt) {
  mPoints.at(static_cast<size_t>(idx)) = pnt;
  updateLengths();
  return *this;
}

bool AcGePolyline3d::isEqualTo(const AcGeEntity3d& ent, const AcGeTol& tol) const {
  if (ent.type() != AcGe::kPolyline3d) return false;
  const auto& o = static_cast<const AcGePolyline3d&>(ent);
  if (o.mPoints.size() != mPoints.size()) return false;
  for (size_t i = 0; i < mPoints.size(); ++i)
    if (!mPoints[i].isEqualTo(o.mPoints[i], tol)) return false;
  return true;
}

AcGeEntity3d& AcGePolyline3d::transformBy(const AcGeMatrix3d& xfm) {
  for (AcGePoint3d& p : mPoints) p.transformBy(xfm);
  updateLengths();
  return *this;
}

void AcGePolyline3d::getInterval(AcGeInterval& intrvl) const {
  intrvl.set(0.0, mPoints.empty() ? 0.0 : static_cast<double>(mPoints.size() - 1));
}

int AcGePolyline3d::segmentOf(double param) const {
  const int last = static_cast<int>(mPoints.size()) - 2;
  if (last < 0) return 0;
  return std::clamp(static_cast<int>(std::floor(param)), 0, last);
}

AcGePoint3d AcGePolyline3d::evalPoint(double param) const {
  if (mPoints.empty()) return AcGePoint3d::kOrigin;
  if (mPoints.size() == 1) return mPoints[0];
  const int i = segmentOf(param);
  const AcGePoint3d& a = mPoints[static_cast<size_t>(i)];
  return a + (mPoints[static_cast<size_t>(i) + 1] - a) * (param - i);
}

AcGeVector3d AcGePolyline3d::derivative(double param, int order) const {
  if (order != 1 || mPoints.size() < 2) return {};
  const size_t i = static_cast<size_t>(segmentOf(param));
  return mPoints[i + 1] - mPoints[i];
}

double AcGePolyline3d::lengthTo(double param) const {
  if (mPoints.size() < 2) return 0.0;
  const int i = segmentOf(param);
  const size_t s = static_cast<size_t>(i);
  return mCumLength[s] + (mCumLength[s + 1] - mCumLength[s]) * (param - i);
}

double AcGePolyline3d::length(double fromParam, double toParam, double) const {
  return std::fabs(lengthTo(toParam) - lengthTo(fromParam));
}

double AcGePolyline3d::paramAtLength(double datumParam, double length, bool posParamDir, double) const {
  if (mPoints.size() < 2) return datumParam;
  const double target = lengthTo(datumParam) + (posParamDir ? length : -length);
  const size_t n = mPoints.size();
  const double total = mCumLength.back();
  if (target <= 0.0) {
    const double first = mCumLength[1];
    return first > 0.0 ? target / first : 0.0;
  }
  if (target >= total) {
    const double lastLen = total - mCumLength[n - 2];
    return static_cast<double>(n - 1) + (lastLen > 0.0 ? (target - total) / lastLen : 0.0);
  }
  // The first vertex at or beyond target: a length landing on a vertex gives that vertex's index (the
  // first of repeated vertices); otherwise the segment before it holds target and has positive length.
  const size_t k = static_cast<size_t>(std::lower_bound(mCumLength.begin(), mCumLength.end(), target) - mCumLength.begin());
  if (mCumLength[k] == target) return static_cast<double>(k);
  return static_cast<double>(k - 1) + (target - mCumLength[k - 1]) / (mCumLength[k] - mCumLength[k - 1]);
}

double AcGePolyline3d::closestParam(const AcGePoint3d& pnt) const {
  if (mPoints.size() < 2) return 0.0;
  double bestParam = 0.0, bestDist = HUGE_VAL;
  for (size_t i = 0; i + 1 < mPoints.size(); ++i) {
    const AcGeVector3d d = mPoints[i + 1] - mPoints[i];
    const double l2 = d.lengthSqrd();
    const double f = l2 > 0.0 ? std::clamp((pnt - mPoints[i]).dotProduct(d) / l2, 0.0, 1.0) : 0.0;
    const double dist = (mPoints[i] + d * f).distanceTo(pnt);
    if (dist < bestDist) {
      bestDist = dist;
      bestParam = static_cast<double>(i) + f;
    }
  }
  return bestParam;
}

double AcGePolyline3d::projClosestParam(const AcGePoint3d& pnt, const AcGeVector3d& unitDir) const {
  if (mPoints.size() < 2) return 0.0;
  auto flatten = [&unitDir](const AcGeVector3d& v) { return v - unitDir * v.dotProduct(unitDir); };
  double bestParam = 0.0, bestDist = HUGE_VAL;
  for (size_t i = 0; i + 1 < mPoints.size(); ++i) {
    const AcGeVector3d d = flatten(mPoints[i + 1] - mPoints[i]);
    const AcGeVector3d w = flatten(pnt - mPoints[i]);
    const double l2 = d.lengthSqrd();
    const double f = l2 > 0.0 ? std::clamp(w.dotProduct(d) / l2, 0.0, 1.0) : 0.0;
    const double dist = (w - d * f).length();
    if (dist < bestDist) {
      bestDist = dist;
      bestParam = static_cast<double>(i) + f;
    }
  }
  return bestParam;
}

void AcGePolyline3d::appendSampleParams(double fromParam, double toParam, double, AcGeDoubleArray& params) const {
  for (double v = std::floor(fromParam) + 1.0; v < toParam; v += 1.0) params.append(v);
}
