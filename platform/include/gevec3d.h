// AcGeVector3d: a 3D vector value type.
#pragma once

#include <cmath>

#include "getol.h"
#include "platformexport.h"

class TDHOST_API AcGeVector3d {
 public:
  AcGeVector3d() = default;
  AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  static const AcGeVector3d kIdentity;
  static const AcGeVector3d kXAxis;
  static const AcGeVector3d kYAxis;
  static const AcGeVector3d kZAxis;

  AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-() const { return {-x, -y, -z}; }
  AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
  AcGeVector3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGeVector3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  AcGeVector3d& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  AcGeVector3d& operator/=(double s) { x /= s; y /= s; z /= s; return *this; }
  bool operator==(const AcGeVector3d& v) const { return isEqualTo(v); }
  bool operator!=(const AcGeVector3d& v) const { return !isEqualTo(v); }
  double operator[](unsigned i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](unsigned i) { return i == 0 ? x : (i == 1 ? y : z); }

  AcGeVector3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }
  double length() const { return std::sqrt(x * x + y * y + z * z); }
  double lengthSqrd() const { return x * x + y * y + z * z; }
  double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  AcGeVector3d crossProduct(const AcGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  // A zero vector (within the tolerance) is returned unchanged.
  AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
    AcGeVector3d v(*this);
    return v.normalize(tol);
  }
  AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
    const double len = length();
    if (len > tol.equalVector()) *this /= len;
    return *this;
  }
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isUnitLength(const AcGeTol& tol = AcGeContext::gTol) const {
    return std::fabs(length() - 1.0) <= tol.equalVector();
  }
  bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - v).length() <= tol.equalVector();
  }
  bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    const double a = length(), b = v.length();
    if (a <= tol.equalVector() || b <= tol.equalVector()) return false;
    return crossProduct(v).length() / (a * b) <= tol.equalVector();
  }
  bool isPerpendicularTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    const double a = length(), b = v.length();
    if (a <= tol.equalVector() || b <= tol.equalVector()) return false;
    return std::fabs(dotProduct(v)) / (a * b) <= tol.equalVector();
  }
  // Unsigned angle to v in [0, pi].
  double angleTo(const AcGeVector3d& v) const {
    return std::atan2(crossProduct(v).length(), dotProduct(v));
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
