// AcGePoint3d: a 3D point value type.
#pragma once

#include "gevec3d.h"
#include "platformexport.h"

class TDHOST_API AcGePoint3d {
 public:
  AcGePoint3d() = default;
  AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

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
  AcGeVector3d asVector() const { return {x, y, z}; }
  double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
  bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};
