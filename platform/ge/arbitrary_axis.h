// The arbitrary-axis rule (AutoCAD DXF reference, "Arbitrary Axis Algorithm"): a fixed x axis for a
// plane given by its normal alone.
#pragma once

#include "gevec3d.h"

namespace tdhost::ge {

// Unit x and y axes of the plane with the given normal; world x/y when the normal is zero.
inline void arbitraryAxes(const AcGeVector3d& normal, AcGeVector3d& xAxis, AcGeVector3d& yAxis) {
  const double len = normal.length();
  if (len == 0.0) {
    xAxis = AcGeVector3d::kXAxis;
    yAxis = AcGeVector3d::kYAxis;
    return;
  }
  const AcGeVector3d n = normal / len;
  constexpr double kLimit = 1.0 / 64.0;
  const AcGeVector3d ref = (std::fabs(n.x) < kLimit && std::fabs(n.y) < kLimit) ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis;
  xAxis = ref.crossProduct(n).normal();
  yAxis = n.crossProduct(xAxis).normal();
}

}  // namespace tdhost::ge
