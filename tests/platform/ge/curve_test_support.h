// Independent minimisation over a curve's parameter range, for closest-point checks.
#pragma once

#include <functional>

#include "bulge_test_support.h"
#include "gecurv3d.h"

namespace getest {

// Least distance from pnt to points curve.evalPoint(lo + f (hi - lo)), optionally seen along a unit
// direction (distances measured in the plane normal to it).
inline double searchedDistance(const AcGeCurve3d& curve, double lo, double hi, const AcGePoint3d& pnt,
                               const AcGeVector3d* along = nullptr) {
  return minimizeOnUnit([&](double f) {
    AcGeVector3d d = curve.evalPoint(lo + f * (hi - lo)) - pnt;
    if (along) d -= *along * d.dotProduct(*along);
    return d.length();
  });
}

}  // namespace getest
