// Small vector helpers and tolerance assertions shared by the geometry tests, so that expected
// values are computed independently of the library's own formulas.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace tdtest {

using Vec3 = std::array<double, 3>;

inline Vec3 sub(const Vec3& a, const Vec3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline Vec3 add(const Vec3& a, const Vec3& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
inline Vec3 scale(const Vec3& a, double s) { return {a[0] * s, a[1] * s, a[2] * s}; }
inline double dot(const Vec3& a, const Vec3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double norm(const Vec3& a) { return std::sqrt(dot(a, a)); }
inline double distance(const Vec3& a, const Vec3& b) { return norm(sub(a, b)); }

// Distance from p to the closed segment a-b (a point when a == b).
inline double pointSegmentDistance(const Vec3& p, const Vec3& a, const Vec3& b) {
  const Vec3 ab = sub(b, a);
  const double len2 = dot(ab, ab);
  const double t = len2 > 0.0 ? std::clamp(dot(sub(p, a), ab) / len2, 0.0, 1.0) : 0.0;
  return distance(p, add(a, scale(ab, t)));
}

// |actual - expected| <= rel * max(1, |expected|): relative for large values, absolute near 0.
inline ::testing::AssertionResult nearRel(double actual, double expected, double rel) {
  const double allowed = rel * std::max(1.0, std::fabs(expected));
  if (std::fabs(actual - expected) <= allowed) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << actual << " differs from " << expected << " by "
                                       << std::fabs(actual - expected) << " (allowed " << allowed << ")";
}

inline ::testing::AssertionResult nearRel(const Vec3& actual, const Vec3& expected, double rel) {
  for (int i = 0; i < 3; ++i) {
    ::testing::AssertionResult r = nearRel(actual[i], expected[i], rel);
    if (!r) return r << " in component " << i;
  }
  return ::testing::AssertionSuccess();
}

}  // namespace tdtest
