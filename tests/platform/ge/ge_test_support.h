// Shared helpers of the geometry tests: seeded random inputs and tolerance assertions.
#pragma once

#include <gtest/gtest.h>

#include <random>

#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

namespace getest {

// Deterministic random source; each test makes its own so tests stay independent.
class Random {
 public:
  explicit Random(unsigned seed = 20240611u) : mEngine(seed) {}
  double uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(mEngine); }
  int integer(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(mEngine); }
  AcGePoint3d point(double range) { return {uniform(-range, range), uniform(-range, range), uniform(-range, range)}; }
  AcGePoint2d point2d(double range) { return {uniform(-range, range), uniform(-range, range)}; }
  AcGeVector3d vector(double range) { return {uniform(-range, range), uniform(-range, range), uniform(-range, range)}; }
  AcGeVector3d unitVector() {
    for (;;) {
      const AcGeVector3d v = vector(1.0);
      if (v.length() > 0.1 && v.length() <= 1.0) return v.normal();
    }
  }

 private:
  std::mt19937_64 mEngine;
};

inline ::testing::AssertionResult near3(const AcGePoint3d& a, const AcGePoint3d& b, double tol) {
  if (a.distanceTo(b) <= tol) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ", " << a.z << ") vs (" << b.x << ", " << b.y
                                       << ", " << b.z << "), distance " << a.distanceTo(b);
}

inline ::testing::AssertionResult near3(const AcGeVector3d& a, const AcGeVector3d& b, double tol) {
  return near3(AcGePoint3d::kOrigin + a, AcGePoint3d::kOrigin + b, tol);
}

inline ::testing::AssertionResult near2(const AcGePoint2d& a, const AcGePoint2d& b, double tol) {
  if (a.distanceTo(b) <= tol) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << a.x << ", " << a.y << ") vs (" << b.x << ", " << b.y << ")";
}

}  // namespace getest
