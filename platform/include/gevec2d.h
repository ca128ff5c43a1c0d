// AcGeVector2d: a 2D vector value type.
#pragma once

#include <cmath>
#include <numbers>

#include "gegbl.h"
#include "gegblabb.h"
#include "platformexport.h"

class AcGeMatrix2d;

class TDHOST_API AcGeVector2d {
 public:
  AcGeVector2d() = default;
  AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}

  static const AcGeVector2d kIdentity;  // the zero vector, as in the SDK
  static const AcGeVector2d kXAxis;
  static const AcGeVector2d kYAxis;

  friend TDHOST_API AcGeVector2d operator*(const AcGeMatrix2d& mat, const AcGeVector2d& vec);
  AcGeVector2d& setToProduct(const AcGeMatrix2d& mat, const AcGeVector2d& vec);
  // Linear part only: a vector is not moved by the matrix's translation.
  AcGeVector2d& transformBy(const AcGeMatrix2d& leftSide);
  // Counter-clockwise rotation by angle radians.
  AcGeVector2d& rotateBy(double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return set(c * x - s * y, s * x + c * y);
  }
  // Reflection about the line through the origin along `line`; a zero `line` leaves the vector as is.
  AcGeVector2d& mirror(const AcGeVector2d& line) {
    const double l2 = line.lengthSqrd();
    if (l2 == 0.0) return *this;
    const double k = 2.0 * dotProduct(line) / l2;
    return set(k * line.x - x, k * line.y - y);
  }

  AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
  AcGeVector2d& operator*=(double s) { x *= s; y *= s; return *this; }
  AcGeVector2d& setToProduct(const AcGeVector2d& v, double s) { return set(v.x * s, v.y * s); }
  AcGeVector2d operator/(double s) const { return {x / s, y / s}; }
  AcGeVector2d& operator/=(double s) { x /= s; y /= s; return *this; }
  AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  AcGeVector2d& operator+=(const AcGeVector2d& v) { x += v.x; y += v.y; return *this; }
  AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  AcGeVector2d& operator-=(const AcGeVector2d& v) { x -= v.x; y -= v.y; return *this; }
  AcGeVector2d& setToSum(const AcGeVector2d& a, const AcGeVector2d& b) { return set(a.x + b.x, a.y + b.y); }
  AcGeVector2d operator-() const { return {-x, -y}; }
  AcGeVector2d& negate() { x = -x; y = -y; return *this; }
  // The vector turned 90 degrees counter-clockwise.
  AcGeVector2d perpVector() const { return {-y, x}; }

  // Direction from the x axis, counter-clockwise, in [0, 2pi); 0 for the zero vector.
  double angle() const {
    double a = std::atan2(y, x);
    if (a < 0.0) a += 2.0 * std::numbers::pi;
    return a >= 2.0 * std::numbers::pi ? 0.0 : a;
  }
  // Unsigned angle to v in [0, pi].
  double angleTo(const AcGeVector2d& v) const { return std::fabs(std::atan2(x * v.y - y * v.x, dotProduct(v))); }

  AcGeVector2d normal(const AcGeTol& tol = AcGeContext::gTol) const { AcGeVector2d v(*this); return v.normalize(tol); }
  // A vector shorter than the tolerance is left unchanged.
  AcGeVector2d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
    const double len = length();
    if (len > tol.equalVector()) *this /= len;
    return *this;
  }
  AcGeVector2d& normalize(const AcGeTol& tol, AcGeError& flag) {
    flag = length() > tol.equalVector() ? AcGe::kOk : AcGe::k0This;
    return normalize(tol);
  }
  double length() const { return std::hypot(x, y); }
  double lengthSqrd() const { return x * x + y * y; }
  bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const { return std::fabs(length() - 1.0) <= tol.equalVector(); }
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isParallelTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    const double a = length(), b = v.length();
    if (a <= tol.equalVector() || b <= tol.equalVector()) return false;
    return std::fabs(x * v.y - y * v.x) / (a * b) <= tol.equalVector();
  }
  bool isCodirectionalTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return isParallelTo(v, tol) && dotProduct(v) > 0.0;
  }
  bool isPerpendicularTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    const double a = length(), b = v.length();
    if (a <= tol.equalVector() || b <= tol.equalVector()) return false;
    return std::fabs(dotProduct(v)) / (a * b) <= tol.equalVector();
  }
  double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
  bool operator==(const AcGeVector2d& v) const { return isEqualTo(v); }
  bool operator!=(const AcGeVector2d& v) const { return !isEqualTo(v); }
  bool isEqualTo(const AcGeVector2d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - v).length() <= tol.equalVector();
  }
  double operator[](unsigned i) const { return i == 0 ? x : y; }
  double& operator[](unsigned i) { return i == 0 ? x : y; }
  AcGeVector2d& set(double xx, double yy) { x = xx; y = yy; return *this; }

  double x = 0.0;
  double y = 0.0;
};

inline AcGeVector2d operator*(double s, const AcGeVector2d& v) { return v * s; }
