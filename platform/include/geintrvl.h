// AcGeInterval: a parameter interval, bounded or unbounded at either end, with a tolerance.
#pragma once

#include "gegbl.h"
#include "platformexport.h"

class TDHOST_API AcGeInterval {
 public:
  explicit AcGeInterval(double tol = 1.e-12) : mTol(tol) {}
  AcGeInterval(double lower, double upper, double tol = 1.e-12);
  // Bounded on one side only: below at `bound` when boundedBelow, else above.
  AcGeInterval(bool boundedBelow, double bound, double tol = 1.e-12);

  double lowerBound() const { return mLower; }
  double upperBound() const { return mUpper; }
  // Some value inside: the midpoint, a bound, or 0 for an unbounded interval.
  double element() const;
  void getBounds(double& lower, double& upper) const { lower = mLower; upper = mUpper; }
  // upper - lower; -1 for an interval unbounded at an end.
  double length() const;
  double tolerance() const { return mTol; }

  AcGeInterval& set(double lower, double upper);
  AcGeInterval& set(bool boundedBelow, double bound);
  AcGeInterval& set();  // unbounded both ways
  AcGeInterval& setUpper(double upper) { mUpper = upper; mBoundedAbove = true; return *this; }
  AcGeInterval& setLower(double lower) { mLower = lower; mBoundedBelow = true; return *this; }
  AcGeInterval& setTolerance(double tol) { mTol = tol; return *this; }

  void getMerge(const AcGeInterval& other, AcGeInterval& result) const;
  bool intersectWith(const AcGeInterval& other, AcGeInterval& result) const;

  bool isBounded() const { return mBoundedBelow && mBoundedAbove; }
  bool isBoundedAbove() const { return mBoundedAbove; }
  bool isBoundedBelow() const { return mBoundedBelow; }
  bool isUnBounded() const { return !mBoundedBelow && !mBoundedAbove; }
  bool isSingleton() const { return isBounded() && mUpper - mLower <= mTol; }
  bool isDisjoint(const AcGeInterval& other) const { AcGeInterval r; return !intersectWith(other, r); }
  bool contains(const AcGeInterval& other) const;
  // Within the interval widened by the tolerance.
  bool contains(double val) const {
    return (!mBoundedBelow || val >= mLower - mTol) && (!mBoundedAbove || val <= mUpper + mTol);
  }
  bool operator==(const AcGeInterval& other) const;
  bool operator!=(const AcGeInterval& other) const { return !(*this == other); }
  bool isEqualAtUpper(double value) const { return mBoundedAbove && value - mUpper <= mTol && mUpper - value <= mTol; }
  bool isEqualAtLower(double value) const { return mBoundedBelow && value - mLower <= mTol && mLower - value <= mTol; }

 private:
  double mLower = 0.0;
  double mUpper = 0.0;
  double mTol = 1.e-12;
  bool mBoundedBelow = false;
  bool mBoundedAbove = false;
};
