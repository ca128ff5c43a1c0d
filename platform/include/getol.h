// Geometric tolerance: point equality and vector equality thresholds.
#pragma once

#include "platformexport.h"

class TDHOST_API AcGeTol {
 public:
  AcGeTol() = default;
  double equalPoint() const { return mEqualPoint; }
  double equalVector() const { return mEqualVector; }
  void setEqualPoint(double value) { mEqualPoint = value; }
  void setEqualVector(double value) { mEqualVector = value; }

 private:
  double mEqualPoint = 1.0e-10;
  double mEqualVector = 1.0e-10;
};

struct TDHOST_API AcGeContext {
  // The global tolerance used when a call passes none.
  static AcGeTol gTol;
};
