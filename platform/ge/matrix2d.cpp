// AcGeMatrix2d and the 2D value types' matrix products.
#include "gemat2d.h"

#include <algorithm>
#include <cmath>

AcGeMatrix2d::AcGeMatrix2d() { setToIdentity(); }

AcGeMatrix2d& AcGeMatrix2d::setToIdentity() {
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& m) const {
  AcGeMatrix2d out;
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) out.entry[r][c] = entry[r][0] * m.entry[0][c] + entry[r][1] * m.entry[1][c] + entry[r][2] * m.entry[2][c];
  return out;
}

AcGeMatrix2d& AcGeMatrix2d::preMultBy(const AcGeMatrix2d& leftSide) { return *this = leftSide * *this; }
AcGeMatrix2d& AcGeMatrix2d::postMultBy(const AcGeMatrix2d& rightSide) { return *this = *this * rightSide; }
AcGeMatrix2d& AcGeMatrix2d::setToProduct(const AcGeMatrix2d& a, const AcGeMatrix2d& b) { return *this = a * b; }

double AcGeMatrix2d::det() const {
  const auto& e = entry;
  return e[0][0] * (e[1][1] * e[2][2] - e[1][2] * e[2][1]) - e[0][1] * (e[1][0] * e[2][2] - e[1][2] * e[2][0]) +
         e[0][2] * (e[1][0] * e[2][1] - e[1][1] * e[2][0]);
}

bool AcGeMatrix2d::isSingular(const AcGeTol& tol) const { return std::fabs(det()) <= tol.equalPoint(); }

AcGeMatrix2d AcGeMatrix2d::inverse() const {
  const double d = det();
  if (d == 0.0) return *this;
  const auto& e = entry;
  AcGeMatrix2d inv;
  // Adjugate divided by the determinant.
  inv.entry[0][0] = (e[1][1] * e[2][2] - e[1][2] * e[2][1]) / d;
  inv.entry[0][1] = (e[0][2] * e[2][1] - e[0][1] * e[2][2]) / d;
  inv.entry[0][2] = (e[0][1] * e[1][2] - e[0][2] * e[1][1]) / d;
  inv.entry[1][0] = (e[1][2] * e[2][0] - e[1][0] * e[2][2]) / d;
  inv.entry[1][1] = (e[0][0] * e[2][2] - e[0][2] * e[2][0]) / d;
  inv.entry[1][2] = (e[0][2] * e[1][0] - e[0][0] * e[1][2]) / d;
  inv.entry[2][0] = (e[1][0] * e[2][1] - e[1][1] * e[2][0]) / d;
  inv.entry[2][1] = (e[0][1] * e[2][0] - e[0][0] * e[2][1]) / d;
  inv.entry[2][2] = (e[0][0] * e[1][1] - e[0][1] * e[1][0]) / d;
  return inv;
}

AcGeMatrix2d& AcGeMatrix2d::invert() { return *this = inverse(); }

AcGeMatrix2d& AcGeMatrix2d::transposeIt() {
  std::swap(entry[0][1], entry[1][0]);
  std::swap(entry[0][2], entry[2][0]);
  std::swap(entry[1][2], entry[2][1]);
  return *this;
}

AcGeMatrix2d AcGeMatrix2d::transpose() const { AcGeMatrix2d m(*this); return m.transposeIt(); }

bool AcGeMatrix2d::isEqualTo(const AcGeMatrix2d& m, const AcGeTol& tol) const {
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c)
      if (std::fabs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
  return true;
}

bool AcGeMatrix2d::isScaledOrtho(const AcGeTol& tol) const {
  const AcGeVector2d c0(entry[0][0], entry[1][0]), c1(entry[0][1], entry[1][1]);
  if (c0.isZeroLength(tol) || c1.isZeroLength(tol)) return false;
  return std::fabs(c0.dotProduct(c1)) <= tol.equalVector() * c0.length() * c1.length();
}

bool AcGeMatrix2d::isUniScaledOrtho(const AcGeTol& tol) const {
  if (!isScaledOrtho(tol)) return false;
  const double a = std::hypot(entry[0][0], entry[1][0]), b = std::hypot(entry[0][1], entry[1][1]);
  return std::fabs(a - b) <= tol.equalVector() * std::max(a, b);
}

double AcGeMatrix2d::scale() const {
  return std::max(std::hypot(entry[0][0], entry[1][0]), std::hypot(entry[0][1], entry[1][1]));
}

AcGeMatrix2d& AcGeMatrix2d::setTranslation(const AcGeVector2d& v) { entry[0][2] = v.x; entry[1][2] = v.y; return *this; }
AcGeVector2d AcGeMatrix2d::translation() const { return {entry[0][2], entry[1][2]}; }

AcGeMatrix2d& AcGeMatrix2d::setCoordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0, const AcGeVector2d& e1) {
  setToIdentity();
  entry[0][0] = e0.x; entry[1][0] = e0.y;
  entry[0][1] = e1.x; entry[1][1] = e1.y;
  entry[0][2] = origin.x; entry[1][2] = origin.y;
  return *this;
}

void AcGeMatrix2d::getCoordSystem(AcGePoint2d& origin, AcGeVector2d& e0, AcGeVector2d& e1) const {
  origin.set(entry[0][2], entry[1][2]);
  e0.set(entry[0][0], entry[1][0]);
  e1.set(entry[0][1], entry[1][1]);
}

AcGeMatrix2d& AcGeMatrix2d::setToTranslation(const AcGeVector2d& v) { setToIdentity(); return setTranslation(v); }

AcGeMatrix2d& AcGeMatrix2d::setToRotation(double angle, const AcGePoint2d& center) {
  const double c = std::cos(angle), s = std::sin(angle);
  setToIdentity();
  entry[0][0] = c; entry[0][1] = -s;
  entry[1][0] = s; entry[1][1] = c;
  // p' = R (p - center) + center
  entry[0][2] = center.x - c * center.x + s * center.y;
  entry[1][2] = center.y - s * center.x - c * center.y;
  return *this;
}

AcGeMatrix2d& AcGeMatrix2d::setToScaling(double s, const AcGePoint2d& center) {
  setToIdentity();
  entry[0][0] = s; entry[1][1] = s;
  entry[0][2] = (1.0 - s) * center.x;
  entry[1][2] = (1.0 - s) * center.y;
  return *this;
}

AcGeMatrix2d& AcGeMatrix2d::setToMirroring(const AcGePoint2d& pnt) { return setToScaling(-1.0, pnt); }

AcGeMatrix2d& AcGeMatrix2d::setToAlignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                               const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                               const AcGeVector2d& toE0, const AcGeVector2d& toE1) {
  AcGeMatrix2d from, to;
  from.setCoordSystem(fromOrigin, fromE0, fromE1);
  to.setCoordSystem(toOrigin, toE0, toE1);
  return *this = to * from.inverse();
}

AcGeMatrix2d AcGeMatrix2d::translation(const AcGeVector2d& v) { AcGeMatrix2d m; return m.setToTranslation(v); }
AcGeMatrix2d AcGeMatrix2d::rotation(double a, const AcGePoint2d& c) { AcGeMatrix2d m; return m.setToRotation(a, c); }
AcGeMatrix2d AcGeMatrix2d::scaling(double s, const AcGePoint2d& c) { AcGeMatrix2d m; return m.setToScaling(s, c); }
AcGeMatrix2d AcGeMatrix2d::mirroring(const AcGePoint2d& p) { AcGeMatrix2d m; return m.setToMirroring(p); }
AcGeMatrix2d AcGeMatrix2d::alignCoordSys(const AcGePoint2d& fo, const AcGeVector2d& fe0, const AcGeVector2d& fe1,
                                         const AcGePoint2d& to, const AcGeVector2d& te0, const AcGeVector2d& te1) {
  AcGeMatrix2d m;
  return m.setToAlignCoordSys(fo, fe0, fe1, to, te0, te1);
}

AcGeVector2d operator*(const AcGeMatrix2d& m, const AcGeVector2d& v) {
  return {m(0, 0) * v.x + m(0, 1) * v.y, m(1, 0) * v.x + m(1, 1) * v.y};
}
AcGeVector2d& AcGeVector2d::setToProduct(const AcGeMatrix2d& mat, const AcGeVector2d& vec) { return *this = mat * vec; }
AcGeVector2d& AcGeVector2d::transformBy(const AcGeMatrix2d& leftSide) { return *this = leftSide * *this; }

AcGePoint2d operator*(const AcGeMatrix2d& m, const AcGePoint2d& p) {
  return {m(0, 0) * p.x + m(0, 1) * p.y + m(0, 2), m(1, 0) * p.x + m(1, 1) * p.y + m(1, 2)};
}
AcGePoint2d& AcGePoint2d::setToProduct(const AcGeMatrix2d& mat, const AcGePoint2d& pnt) { return *this = mat * pnt; }
AcGePoint2d& AcGePoint2d::transformBy(const AcGeMatrix2d& leftSide) { return *this = leftSide * *this; }
