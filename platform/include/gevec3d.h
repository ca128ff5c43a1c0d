// AcGeVector3d: a 3D vector value type.
#pragma once

#include <cmath>

#include "gegbl.h"
#include "gegblabb.h"
#include "getol.h"
#include "platformexport.h"

class AcGeMatrix3d;
class AcGeVector2d;
class AcGePlanarEnt;

class TDHOST_API AcGeVector3d {
 public:
  AcGeVector3d() = default;
  AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  // The 3D vector of plane coordinates (u, v): u * axis1 + v * axis2 of the plane's coordinate system.
  AcGeVector3d(const AcGePlanarEnt& pln, const AcGeVector2d& vec);

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
  AcGeVector3d& set(const AcGePlanarEnt& pln, const AcGeVector2d& vec);

  // Matrix products act on the linear part only: translation does not move a vector.
  friend TDHOST_API AcGeVector3d operator*(const AcGeMatrix3d& mat, const AcGeVector3d& vec);
  AcGeVector3d& setToProduct(const AcGeMatrix3d& mat, const AcGeVector3d& vec);
  AcGeVector3d& transformBy(const AcGeMatrix3d& leftSide);
  // Right-handed rotation by ang radians about axis (through the origin); a zero axis leaves it unchanged.
  AcGeVector3d& rotateBy(double ang, const AcGeVector3d& axis);
  // Reflection in the plane through the origin with the given normal.
  AcGeVector3d& mirror(const AcGeVector3d& normalToPlane);
  // Components along the plane's two axes (the axes need not be orthogonal).
  AcGeVector2d convert2d(const AcGePlanarEnt& pln) const;
  AcGeVector3d& setToProduct(const AcGeVector3d& v, double s) { x = v.x * s; y = v.y * s; z = v.z * s; return *this; }
  AcGeVector3d& setToSum(const AcGeVector3d& a, const AcGeVector3d& b) {
    x = a.x + b.x; y = a.y + b.y; z = a.z + b.z;
    return *this;
  }
  AcGeVector3d& negate() { x = -x; y = -y; z = -z; return *this; }
  // A vector perpendicular to this one, of the same length, chosen by the arbitrary-axis rule
  // (the DXF reference's OCS rule): Wz x v, or Wy x v when v is within 1/64 of the z axis. A vector
  // in the XY plane is turned 90 degrees counter-clockwise.
  AcGeVector3d perpVector() const;
  // Angle to v in [0, 2pi): the unsigned angle when refVec . (this x v) >= 0, else 2pi minus it.
  double angleTo(const AcGeVector3d& v, const AcGeVector3d& refVec) const;
  // Angle of the projection onto the plane, measured from its first axis about its normal, in [0, 2pi).
  double angleOnPlane(const AcGePlanarEnt& pln) const;
  AcGeVector3d& normalize(const AcGeTol& tol, AcGeError& flag) {
    flag = length() > tol.equalVector() ? AcGe::kOk : AcGe::k0This;
    return normalize(tol);
  }
  bool isCodirectionalTo(const AcGeVector3d& v, const AcGeTol& tol = AcGeContext::gTol) const {
    return isParallelTo(v, tol) && dotProduct(v) > 0.0;
  }
  // Projection onto the plane through the origin with the given normal, along projectDirection;
  // a direction parallel to the plane leaves the vector unchanged.
  AcGeVector3d project(const AcGeVector3d& planeNormal, const AcGeVector3d& projectDirection) const;
  AcGeVector3d orthoProject(const AcGeVector3d& planeNormal) const;
  // Index (0, 1, 2) of the component of largest magnitude.
  unsigned largestElement() const {
    const double ax = std::fabs(x), ay = std::fabs(y), az = std::fabs(z);
    if (ax >= ay && ax >= az) return 0;
    return ay >= az ? 1 : 2;
  }
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
