// AcGeInterval: bounded and unbounded parameter intervals.
#include "geintrvl.h"

#include <algorithm>
#include <cmath>

AcGeInterval::AcGeInterval(double lower, double upper, double tol) : mTol(tol) { set(lower, upper); }

AcGeInterval::AcGeInterval(bool boundedBelow, double bound, double tol) : mTol(tol) { set(boundedBelow, bound); }

double AcGeInterval::element() const {
  if (isBounded()) return 0.5 * (mLower + mUpper);
  if (mBoundedBelow) return mLower;
  if (mBoundedAbove) return mUpper;
  return 0.0;
}

double AcGeInterval::length() const { return isBounded() ? mUpper - mLower : -1.0; }

AcGeInterval& AcGeInterval::set(double lower, double upper) {
  mLower = std::min(lower, upper);
  mUpper = std::max(lower, upper);
  mBoundedBelow = mBoundedAbove = true;
  return *this;
}

AcGeInterval& AcGeInterval::set(bool boundedBelow, double bound) {
  mBoundedBelow = boundedBelow;
  mBoundedAbove = !boundedBelow;
  mLower = mUpper = bound;
  return *this;
}

AcGeInterval& AcGeInterval::set() {
  mBoundedBelow = mBoundedAbove = false;
  mLower = mUpper = 0.0;
  return *this;
}

void AcGeInterval::getMerge(const AcGeInterval& other, AcGeInterval& result) const {
  result = *this;
  result.mBoundedBelow = mBoundedBelow && other.mBoundedBelow;
  result.mBoundedAbove = mBoundedAbove && other.mBoundedAbove;
  result.mLower = result.mBoundedBelow ? std::min(mLower, other.mLower) : 0.0;
  result.mUpper = result.mBoundedAbove ? std::max(mUpper, other.mUpper) : 0.0;
}

bool AcGeInterval::intersectWith(const AcGeInterval& other, AcGeInterval& result) const {
  result = *this;
  result.mBoundedBelow = mBoundedBelow || other.mBoundedBelow;
  result.mBoundedAbove = mBoundedAbove || other.mBoundedAbove;
  if (mBoundedBelow && other.mBoundedBelow) result.mLower = std::max(mLower, other.mLower);
  else if (other.mBoundedBelow) result.mLower = other.mLower;
  if (mBoundedAbove && other.mBoundedAbove) result.mUpper = std::min(mUpper, other.mUpper);
  else if (other.mBoundedAbove) result.mUpper = other.mUpper;
  return !(result.mBoundedBelow && result.mBoundedAbove && result.mLower > result.mUpper + mTol);
}

bool AcGeInterval::contains(const AcGeInterval& other) const {
  if (mBoundedBelow && (!other.mBoundedBelow || other.mLower < mLower - mTol)) return false;
  if (mBoundedAbove && (!other.mBoundedAbove || other.mUpper > mUpper + mTol)) return false;
  return true;
}

bool AcGeInterval::operator==(const AcGeInterval& other) const {
  if (mBoundedBelow != other.mBoundedBelow || mBoundedAbove != other.mBoundedAbove) return false;
  if (mBoundedBelow && std::fabs(mLower - other.mLower) > mTol) return false;
  if (mBoundedAbove && std::fabs(mUpper - other.mUpper) > mTol) return false;
  return true;
}
