// AcGeMatrix3d: products, inversion and the standard transformations.
#include "gemat3d.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ge/arbitrary_axis.h"
#include "geline3d.h"
#include "geplane.h"

namespace {

AcGeVector3d column(const AcGeMatrix3d& m, unsigned c) { return {m(0, c), m(1, c), m(2, c)}; }

// Sets the linear part to a 3x3 block and the translation column to t.
void setAffine(AcGeMatrix3d& m, const double lin[3][3], const AcGeVector3d& t) {
  m.setToIdentity();
  for (unsigned r = 0; r < 3; ++r) {
    for (unsigned c = 0; c < 3; ++c) m(r, c) = lin[r][c];
    m(r, 3) = t[r];
  }
}

}  // namespace

AcGeMatrix3d::AcGeMatrix3d() { setToIdentity(); }

AcGeMatrix3d& AcGeMatrix3d::setToIdentity() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& m) const {
  AcGeMatrix3d out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      double s = 0.0;
      for (int k = 0; k < 4; ++k) s += entry[r][k] * m.entry[k][c];
      out.entry[r][c] = s;
    }
  return out;
}

AcGeMatrix3d& AcGeMatrix3d::preMultBy(const AcGeMatrix3d& leftSide) { return *this = leftSide * *this; }
AcGeMatrix3d& AcGeMatrix3d::postMultBy(const AcGeMatrix3d& rightSide) { return *this = *this * rightSide; }
AcGeMatrix3d& AcGeMatrix3d::setToProduct(const AcGeMatrix3d& a, const AcGeMatrix3d& b) { return *this = a * b; }

bool AcGeMatrix3d::inverse(AcGeMatrix3d& inv, double tol) const {
  // Gauss-Jordan elimination with partial pivoting on [A | I].
  double a[4][8];
  double largest = 0.0;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      a[r][c] = entry[r][c];
      a[r][c + 4] = r == c ? 1.0 : 0.0;
      // The translation column does not decide singularity; survey coordinates make it large.
      if (c < 3 || r == 3) largest = std::max(largest, std::fabs(entry[r][c]));
    }
  if (largest == 0.0) return false;
  for (int col = 0; col < 4; ++col) {
    int pivot = col;
    for (int r = col + 1; r < 4; ++r)
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
    if (std::fabs(a[pivot][col]) <= tol * largest) return false;
    if (pivot != col)
      for (int c = 0; c < 8; ++c) std::swap(a[pivot][c], a[col][c]);
    const double p = a[col][col];
    for (int c = 0; c < 8; ++c) a[col][c] /= p;
    for (int r = 0; r < 4; ++r) {
      if (r == col || a[r][col] == 0.0) continue;
      const double f = a[r][col];
      for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
    }
  }
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) inv.entry[r][c] = a[r][c + 4];
  return true;
}

AcGeMatrix3d AcGeMatrix3d::inverse(const AcGeTol& tol) const {
  AcGeMatrix3d inv;
  return inverse(inv, tol.equalPoint()) ? inv : *this;
}

AcGeMatrix3d AcGeMatrix3d::inverse() const { return inverse(AcGeContext::gTol); }

AcGeMatrix3d& AcGeMatrix3d::invert() { return *this = inverse(); }

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
  AcGeMatrix3d inv;
  return !inverse(inv, tol.equalPoint());
}

AcGeMatrix3d& AcGeMatrix3d::transposeIt() {
  for (int r = 0; r < 4; ++r)
    for (int c = r + 1; c < 4; ++c) std::swap(entry[r][c], entry[c][r]);
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::transpose() const { AcGeMatrix3d m(*this); return m.transposeIt(); }

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol) const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
  return true;
}

bool AcGeMatrix3d::isScaledOrtho(const AcGeTol& tol) const {
  const AcGeVector3d c0 = column(*this, 0), c1 = column(*this, 1), c2 = column(*this, 2);
  return c0.isPerpendicularTo(c1, tol) && c1.isPerpendicularTo(c2, tol) && c0.isPerpendicularTo(c2, tol);
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
  if (!isScaledOrtho(tol)) return false;
  const double a = column(*this, 0).length(), b = column(*this, 1).length(), c = column(*this, 2).length();
  const double m = std::max({a, b, c});
  return std::fabs(a - b) <= tol.equalVector() * m && std::fabs(b - c) <= tol.equalVector() * m;
}

double AcGeMatrix3d::det() const {
  // Cofactor expansion along the first row of the full 4x4 matrix.
  auto minor3 = [this](int skipCol) {
    int cols[3], n = 0;
    for (int c = 0; c < 4; ++c)
      if (c != skipCol) cols[n++] = c;
    const auto& e = entry;
    return e[1][cols[0]] * (e[2][cols[1]] * e[3][cols[2]] - e[2][cols[2]] * e[3][cols[1]]) -
           e[1][cols[1]] * (e[2][cols[0]] * e[3][cols[2]] - e[2][cols[2]] * e[3][cols[0]]) +
           e[1][cols[2]] * (e[2][cols[0]] * e[3][cols[1]] - e[2][cols[1]] * e[3][cols[0]]);
  };
  double d = 0.0;
  for (int c = 0; c < 4; ++c) d += (c % 2 == 0 ? 1.0 : -1.0) * entry[0][c] * minor3(c);
  return d;
}

AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& v) {
  entry[0][3] = v.x; entry[1][3] = v.y; entry[2][3] = v.z;
  return *this;
}

AcGeVector3d AcGeMatrix3d::translation() const { return column(*this, 3); }

AcGeMatrix3d& AcGeMatrix3d::setCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                                           const AcGeVector3d& yAxis, const AcGeVector3d& zAxis) {
  setToIdentity();
  for (unsigned r = 0; r < 3; ++r) {
    entry[r][0] = xAxis[r];
    entry[r][1] = yAxis[r];
    entry[r][2] = zAxis[r];
    entry[r][3] = origin[r];
  }
  return *this;
}

void AcGeMatrix3d::getCoordSystem(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis,
                                  AcGeVector3d& zAxis) const {
  xAxis = column(*this, 0);
  yAxis = column(*this, 1);
  zAxis = column(*this, 2);
  const AcGeVector3d t = column(*this, 3);
  origin.set(t.x, t.y, t.z);
}

AcGeMatrix3d& AcGeMatrix3d::setToTranslation(const AcGeVector3d& v) { setToIdentity(); return setTranslation(v); }

AcGeMatrix3d& AcGeMatrix3d::setToRotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  setToIdentity();
  // Columns are the rotated unit axes (Rodrigues' formula through AcGeVector3d::rotateBy).
  for (unsigned c = 0; c < 3; ++c) {
    AcGeVector3d e;
    e[c] = 1.0;
    e.rotateBy(angle, axis);
    for (unsigned r = 0; r < 3; ++r) entry[r][c] = e[r];
  }
  const AcGeVector3d cv = center.asVector();
  return setTranslation(cv - (*this * cv));
}

AcGeMatrix3d& AcGeMatrix3d::setToScaling(double s, const AcGePoint3d& center) {
  setToIdentity();
  entry[0][0] = entry[1][1] = entry[2][2] = s;
  return setTranslation(center.asVector() * (1.0 - s));
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePlane& pln) {
  // Householder reflection I - 2 n n^T about the plane through its origin.
  const AcGeVector3d n = pln.normal();
  double lin[3][3];
  for (unsigned r = 0; r < 3; ++r)
    for (unsigned c = 0; c < 3; ++c) lin[r][c] = (r == c ? 1.0 : 0.0) - 2.0 * n[r] * n[c];
  setAffine(*this, lin, n * (2.0 * n.dotProduct(pln.pointOnPlane().asVector())));
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGePoint3d& pnt) { return setToScaling(-1.0, pnt); }

AcGeMatrix3d& AcGeMatrix3d::setToMirroring(const AcGeLine3d& line) {
  // Half-turn about the line: p' = 2 foot(p) - p, linear part 2 u u^T - I.
  const AcGeVector3d u = line.direction();
  const AcGeVector3d p0 = line.pointOnLine().asVector();
  double lin[3][3];
  for (unsigned r = 0; r < 3; ++r)
    for (unsigned c = 0; c < 3; ++c) lin[r][c] = 2.0 * u[r] * u[c] - (r == c ? 1.0 : 0.0);
  setAffine(*this, lin, (p0 - u * u.dotProduct(p0)) * 2.0);
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToProjection(const AcGePlane& pln, const AcGeVector3d& projectDir) {
  // p' = p - d (n . (p - o)) / (n . d)
  const AcGeVector3d n = pln.normal();
  const double nd = n.dotProduct(projectDir);
  if (std::fabs(nd) <= AcGeContext::gTol.equalVector() * projectDir.length()) return setToIdentity();
  double lin[3][3];
  for (unsigned r = 0; r < 3; ++r)
    for (unsigned c = 0; c < 3; ++c) lin[r][c] = (r == c ? 1.0 : 0.0) - projectDir[r] * n[c] / nd;
  setAffine(*this, lin, projectDir * (n.dotProduct(pln.pointOnPlane().asVector()) / nd));
  return *this;
}

AcGeMatrix3d& AcGeMatrix3d::setToAlignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromXAxis,
                                               const AcGeVector3d& fromYAxis, const AcGeVector3d& fromZAxis,
                                               const AcGePoint3d& toOrigin, const AcGeVector3d& toXAxis,
                                               const AcGeVector3d& toYAxis, const AcGeVector3d& toZAxis) {
  AcGeMatrix3d from, to;
  from.setCoordSystem(fromOrigin, fromXAxis, fromYAxis, fromZAxis);
  to.setCoordSystem(toOrigin, toXAxis, toYAxis, toZAxis);
  return *this = to * from.inverse();
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGeVector3d& normal) {
  AcGeVector3d x, y;
  tdhost::ge::arbitraryAxes(normal, x, y);
  return setCoordSystem(AcGePoint3d::kOrigin, x, y, normal.normal());
}

AcGeMatrix3d& AcGeMatrix3d::setToPlaneToWorld(const AcGePlane& plane) {
  AcGePoint3d origin;
  AcGeVector3d u, v;
  plane.getCoordSystem(origin, u, v);
  const AcGeVector3d n = plane.normal();
  const AcGeVector3d x = u.normal();
  return setCoordSystem(origin, x, n.crossProduct(x), n);
}

AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGeVector3d& normal) { return setToPlaneToWorld(normal).invert(); }
AcGeMatrix3d& AcGeMatrix3d::setToWorldToPlane(const AcGePlane& plane) { return setToPlaneToWorld(plane).invert(); }

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& v) { AcGeMatrix3d m; return m.setToTranslation(v); }
AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  AcGeMatrix3d m;
  return m.setToRotation(angle, axis, center);
}
AcGeMatrix3d AcGeMatrix3d::scaling(double s, const AcGePoint3d& center) { AcGeMatrix3d m; return m.setToScaling(s, center); }
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePlane& pln) { AcGeMatrix3d m; return m.setToMirroring(pln); }
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& pnt) { AcGeMatrix3d m; return m.setToMirroring(pnt); }
AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGeLine3d& line) { AcGeMatrix3d m; return m.setToMirroring(line); }
AcGeMatrix3d AcGeMatrix3d::projection(const AcGePlane& pln, const AcGeVector3d& dir) {
  AcGeMatrix3d m;
  return m.setToProjection(pln, dir);
}
AcGeMatrix3d AcGeMatrix3d::alignCoordSys(const AcGePoint3d& fo, const AcGeVector3d& fx, const AcGeVector3d& fy,
                                         const AcGeVector3d& fz, const AcGePoint3d& to, const AcGeVector3d& tx,
                                         const AcGeVector3d& ty, const AcGeVector3d& tz) {
  AcGeMatrix3d m;
  return m.setToAlignCoordSys(fo, fx, fy, fz, to, tx, ty, tz);
}
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) { AcGeMatrix3d m; return m.setToWorldToPlane(normal); }
AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGePlane& plane) { AcGeMatrix3d m; return m.setToWorldToPlane(plane); }
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) { AcGeMatrix3d m; return m.setToPlaneToWorld(normal); }
AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGePlane& plane) { AcGeMatrix3d m; return m.setToPlaneToWorld(plane); }

double AcGeMatrix3d::scale() const {
  return std::max({column(*this, 0).length(), column(*this, 1).length(), column(*this, 2).length()});
}

double AcGeMatrix3d::norm() const {
  double best = 0.0;
  for (int r = 0; r < 4; ++r)
    best = std::max(best, std::fabs(entry[r][0]) + std::fabs(entry[r][1]) + std::fabs(entry[r][2]) + std::fabs(entry[r][3]));
  return best;
}
