// AcGeScale3d: three axis scale factors (block insertion scales).
#pragma once

#include <cmath>

#include "gegbl.h"
#include "gemat3d.h"
#include "platformexport.h"

class TDHOST_API AcGeScale3d {
 public:
  AcGeScale3d() = default;
  explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
  AcGeScale3d(double xFactor, double yFactor, double zFactor) : sx(xFactor), sy(yFactor), sz(zFactor) {}

  static const AcGeScale3d kIdentity;

  AcGeScale3d operator*(const AcGeScale3d& s) const { return {sx * s.sx, sy * s.sy, sz * s.sz}; }
  AcGeScale3d& operator*=(const AcGeScale3d& s) { return *this = *this * s; }
  AcGeScale3d& preMultBy(const AcGeScale3d& left) { return *this = left * *this; }
  AcGeScale3d& postMultBy(const AcGeScale3d& right) { return *this = *this * right; }
  AcGeScale3d& setToProduct(const AcGeScale3d& a, const AcGeScale3d& b) { return *this = a * b; }
  AcGeScale3d operator*(double f) const { return {sx * f, sy * f, sz * f}; }
  AcGeScale3d& operator*=(double f) { return *this = *this * f; }
  AcGeScale3d& setToProduct(const AcGeScale3d& s, double f) { return *this = s * f; }
  // Reciprocal factors; a zero factor makes the result infinite, as the arithmetic gives.
  AcGeScale3d inverse() const { return {1.0 / sx, 1.0 / sy, 1.0 / sz}; }
  AcGeScale3d& invert() { return *this = inverse(); }
  bool isProportional(const AcGeTol& tol = AcGeContext::gTol) const {
    return std::fabs(sx - sy) <= tol.equalVector() && std::fabs(sy - sz) <= tol.equalVector();
  }
  bool operator==(const AcGeScale3d& s) const { return isEqualTo(s); }
  bool operator!=(const AcGeScale3d& s) const { return !isEqualTo(s); }
  bool isEqualTo(const AcGeScale3d& s, const AcGeTol& tol = AcGeContext::gTol) const {
    return std::fabs(sx - s.sx) <= tol.equalVector() && std::fabs(sy - s.sy) <= tol.equalVector() &&
           std::fabs(sz - s.sz) <= tol.equalVector();
  }
  double operator[](unsigned i) const { return i == 0 ? sx : (i == 1 ? sy : sz); }
  double& operator[](unsigned i) { return i == 0 ? sx : (i == 1 ? sy : sz); }
  AcGeScale3d& set(double xFactor, double yFactor, double zFactor) { sx = xFactor; sy = yFactor; sz = zFactor; return *this; }
  // The diagonal scaling matrix about the origin.
  AcGeMatrix3d getMatrix(AcGeMatrix3d& mat) const {
    mat.setToIdentity();
    mat(0, 0) = sx; mat(1, 1) = sy; mat(2, 2) = sz;
    return mat;
  }
  operator AcGeMatrix3d() const { AcGeMatrix3d m; return getMatrix(m); }
  // The column lengths of the matrix's linear part.
  AcGeScale3d& extractScale(const AcGeMatrix3d& mat) {
    for (unsigned c = 0; c < 3; ++c)
      (*this)[c] = std::sqrt(mat(0, c) * mat(0, c) + mat(1, c) * mat(1, c) + mat(2, c) * mat(2, c));
    return *this;
  }

  double sx = 1.0;
  double sy = 1.0;
  double sz = 1.0;
};
