// AcGePoint2d: a 2D point value type.
#pragma once

#include "gevec2d.h"
#include "platformexport.h"

class AcGeMatrix2d;

class TDHOST_API AcGePoint2d {
 public:
  AcGePoint2d() = default;
  AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}

  static const AcGePoint2d kOrigin;

  friend TDHOST_API AcGePoint2d operator*(const AcGeMatrix2d& mat, const AcGePoint2d& pnt);
  AcGePoint2d& setToProduct(const AcGeMatrix2d& mat, const AcGePoint2d& pnt);
  AcGePoint2d& transformBy(const AcGeMatrix2d& leftSide);
  // Counter-clockwise rotation about wrtPoint.
  AcGePoint2d& rotateBy(double angle, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin) {
    AcGeVector2d v = *this - wrtPoint;
    v.rotateBy(angle);
    return *this = wrtPoint + v;
  }
  AcGePoint2d& scaleBy(double factor, const AcGePoint2d& wrtPoint = AcGePoint2d::kOrigin) {
    return *this = wrtPoint + (*this - wrtPoint) * factor;
  }

  AcGePoint2d operator*(double s) const { return {x * s, y * s}; }
  AcGePoint2d& operator*=(double s) { x *= s; y *= s; return *this; }
  AcGePoint2d operator/(double s) const { return {x / s, y / s}; }
  AcGePoint2d& operator/=(double s) { x /= s; y /= s; return *this; }
  AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  AcGePoint2d& operator+=(const AcGeVector2d& v) { x += v.x; y += v.y; return *this; }
  AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  AcGePoint2d& operator-=(const AcGeVector2d& v) { x -= v.x; y -= v.y; return *this; }
  AcGePoint2d& setToSum(const AcGePoint2d& p, const AcGeVector2d& v) { return set(p.x + v.x, p.y + v.y); }
  AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
  AcGeVector2d asVector() const { return {x, y}; }
  double distanceTo(const AcGePoint2d& p) const { return std::hypot(x - p.x, y - p.y); }
  bool operator==(const AcGePoint2d& p) const { return isEqualTo(p); }
  bool operator!=(const AcGePoint2d& p) const { return !isEqualTo(p); }
  bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  double operator[](unsigned i) const { return i == 0 ? x : y; }
  double& operator[](unsigned i) { return i == 0 ? x : y; }
  AcGePoint2d& set(double xx, double yy) { x = xx; y = yy; return *this; }

  double x = 0.0;
  double y = 0.0;
};

inline AcGePoint2d operator*(double s, const AcGePoint2d& p) { return p * s; }
