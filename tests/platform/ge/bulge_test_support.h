// An independent construction of bulge arcs for the tests: the centre from the inscribed-angle
// rule instead of the chord-offset formula the code uses, and a golden-section refinement.
#pragma once

#include <cmath>
#include <functional>
#include <vector>

#include "gepnt2d.h"

namespace getest {

struct IndependentArc {
  AcGePoint2d center;
  double radius = 0.0;
  double startDir = 0.0;  // direction of the start point from the centre
  double sweep = 0.0;     // signed included angle
  AcGePoint2d at(double f) const {  // f in [0, 1] along the arc
    const double a = startDir + sweep * f;
    return {center.x + radius * std::cos(a), center.y + radius * std::sin(a)};
  }
};

inline IndependentArc independentArc(const AcGePoint2d& p0, const AcGePoint2d& p1, double bulge) {
  IndependentArc arc;
  arc.sweep = 4.0 * std::atan(bulge);
  const double c = p0.distanceTo(p1);
  const double half = std::fabs(arc.sweep) / 2.0;
  arc.radius = c / (2.0 * std::sin(half));
  // The radius to the centre leaves p0 at (90 degrees - half the sweep) from the chord, on the turning side.
  AcGeVector2d dir = (p1 - p0) / c;
  dir.rotateBy((arc.sweep > 0.0 ? 1.0 : -1.0) * (std::acos(-1.0) / 2.0 - half));
  arc.center = p0 + dir * arc.radius;
  arc.startDir = std::atan2(p0.y - arc.center.y, p0.x - arc.center.x);
  return arc;
}

// Minimum of f over [0, 1]: dense sampling, then golden-section search around the best sample.
inline double minimizeOnUnit(const std::function<double(double)>& f, int samples = 4000) {
  int best = 0;
  double bestVal = f(0.0);
  for (int i = 1; i <= samples; ++i) {
    const double v = f(static_cast<double>(i) / samples);
    if (v < bestVal) { bestVal = v; best = i; }
  }
  double a = std::max(0, best - 1) / static_cast<double>(samples);
  double b = std::min(samples, best + 1) / static_cast<double>(samples);
  const double g = (std::sqrt(5.0) - 1.0) / 2.0;
  for (int it = 0; it < 100; ++it) {
    const double x1 = b - g * (b - a), x2 = a + g * (b - a);
    if (f(x1) < f(x2)) b = x2; else a = x1;
  }
  return std::min(bestVal, f(0.5 * (a + b)));
}

}  // namespace getest
