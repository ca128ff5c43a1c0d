// AcGePoint3d: a 3D point value type.
#pragma once

#include "gevec3d.h"
#include "platformexport.h"

class AcGeMatrix3d;
class AcGePlane;
class AcGePlanarEnt;
class AcGePoint2d;

class TDHOST_API AcGePoint3d {
 public:
  AcGePoint3d() = default;
  AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  // The point of plane coordinates (u, v): origin + u * axis1 + v * axis2.
  AcGePoint3d(const AcGePlanarEnt& pln, const AcGePoint2d& pnt2d);

  static const AcGePoint3d kOrigin;

  AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  AcGePoint3d& operator+=(const AcGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  AcGePoint3d& operator-=(const AcGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  bool operator==(const AcGePoint3d& p) const { return isEqualTo(p); }
  bool operator!=(const AcGePoint3d& p) const { return !isEqualTo(p); }
  double operator[](unsigned i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](unsigned i) { return i == 0 ? x : (i == 1 ? y : z); }

  AcGePoint3d& set(double xx, double yy, double zz) { x = xx; y = yy; z = zz; return *this; }
  AcGePoint3d& set(const AcGePlanarEnt& pln, const AcGePoint2d& pnt2d);

  friend TDHOST_API AcGePoint3d operator*(const AcGeMatrix3d& mat, const AcGePoint3d& pnt);
  AcGePoint3d& setToProduct(const AcGeMatrix3d& mat, const AcGePoint3d& pnt);
  AcGePoint3d& transformBy(const AcGeMatrix3d& leftSide);
  // Right-handed rotation by angle radians about the axis vec through wrtPoint.
  AcGePoint3d& rotateBy(double angle, const AcGeVector3d& vec, const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin);
  AcGePoint3d& mirror(const AcGePlane& pln);
  AcGePoint3d& scaleBy(double factor, const AcGePoint3d& wrtPoint = AcGePoint3d::kOrigin) {
    return *this = wrtPoint + (*this - wrtPoint) * factor;
  }
  // Plane coordinates (u, v) in the plane's coordinate system, after orthogonal projection.
  AcGePoint2d convert2d(const AcGePlanarEnt& pln) const;
  AcGePoint3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGePoint3d& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  AcGePoint3d operator/(double s) const { return {x / s, y / s, z / s}; }
  AcGePoint3d& operator/=(double s) { x /= s; y /= s; z /= s; return *this; }
  AcGePoint3d& setToSum(const AcGePoint3d& p, const AcGeVector3d& v) { return set(p.x + v.x, p.y + v.y, p.z + v.z); }
  // Projection onto the plane along vec; when vec is parallel to the plane the point is returned unchanged.
  AcGePoint3d project(const AcGePlane& pln, const AcGeVector3d& vec) const;
  AcGePoint3d orthoProject(const AcGePlane& pln) const;
  AcGeVector3d asVector() const { return {x, y, z}; }
  double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
  bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline AcGePoint3d operator*(double s, const AcGePoint3d& p) { return p * s; }
