// Triangle-triangle intersection with the intersection segment.
// T. Moller, "A Fast Triangle-Triangle Intersection Test", Journal of Graphics Tools 2(2), 1997.
#include "TDUtilW.h"

#include <cmath>
#include <utility>

namespace {

constexpr double kEpsilon = 1e-6;

struct Vec {
  double x, y, z;
  double operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }
};

Vec load(const double* v) { return {v[0], v[1], v[2]}; }
Vec sub(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec add(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec mul(const Vec& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
double dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec cross(const Vec& a, const Vec& b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
void store(double* out, const Vec& v) {
  out[0] = v.x;
  out[1] = v.y;
  out[2] = v.z;
}

double snap(double d) { return std::fabs(d) < kEpsilon ? 0.0 : d; }

// An interval of one triangle on the intersection line, with the 3D points of its ends.
struct Interval {
  double t0, t1;
  Vec p0, p1;
};

// Vertex 0 lies alone on one side of the other plane; its two edges cross it.
Interval crossing(const Vec& v0, const Vec& v1, const Vec& v2, double vv0, double vv1, double vv2, double d0,
                  double d1, double d2) {
  Interval r;
  double tmp = d0 / (d0 - d1);
  r.t0 = vv0 + (vv1 - vv0) * tmp;
  r.p0 = add(mul(sub(v1, v0), tmp), v0);
  tmp = d0 / (d0 - d2);
  r.t1 = vv0 + (vv2 - vv0) * tmp;
  r.p1 = add(v0, mul(sub(v2, v0), tmp));
  return r;
}

// Returns false when the triangle lies in the other's plane (all distances zero).
bool intervalOf(const Vec v[3], const double vv[3], const double d[3], double d0d1, double d0d2, Interval& out) {
  if (d0d1 > 0.0) {
    out = crossing(v[2], v[0], v[1], vv[2], vv[0], vv[1], d[2], d[0], d[1]);
  } else if (d0d2 > 0.0) {
    out = crossing(v[1], v[0], v[2], vv[1], vv[0], vv[2], d[1], d[0], d[2]);
  } else if (d[1] * d[2] > 0.0 || d[0] != 0.0) {
    out = crossing(v[0], v[1], v[2], vv[0], vv[1], vv[2], d[0], d[1], d[2]);
  } else if (d[1] != 0.0) {
    out = crossing(v[1], v[0], v[2], vv[1], vv[0], vv[2], d[1], d[0], d[2]);
  } else if (d[2] != 0.0) {
    out = crossing(v[2], v[0], v[1], vv[2], vv[0], vv[1], d[2], d[0], d[1]);
  } else {
    return false;
  }
  return true;
}

// Inclusive 2D test of edge v0-v1 (direction ax, ay) against edge u0-u1.
bool edgeEdge(double ax, double ay, const Vec& v0, const Vec& u0, const Vec& u1, int i0, int i1) {
  const double bx = u0[i0] - u1[i0], by = u0[i1] - u1[i1];
  const double cx = v0[i0] - u0[i0], cy = v0[i1] - u0[i1];
  const double f = ay * bx - ax * by;
  const double d = by * cx - bx * cy;
  if ((f > 0 && d >= 0 && d <= f) || (f < 0 && d <= 0 && d >= f)) {
    const double e = ax * cy - ay * cx;
    if (f > 0) return e >= 0 && e <= f;
    return e <= 0 && e >= f;
  }
  return false;
}

bool edgeAgainstTriangle(const Vec& v0, const Vec& v1, const Vec u[3], int i0, int i1) {
  const double ax = v1[i0] - v0[i0], ay = v1[i1] - v0[i1];
  return edgeEdge(ax, ay, v0, u[0], u[1], i0, i1) || edgeEdge(ax, ay, v0, u[1], u[2], i0, i1) ||
         edgeEdge(ax, ay, v0, u[2], u[0], i0, i1);
}

bool pointInTriangle(const Vec& p, const Vec u[3], int i0, int i1) {
  double d[3];
  for (int k = 0; k < 3; ++k) {
    const Vec& from = u[k];
    const Vec& to = u[(k + 1) % 3];
    const double a = to[i1] - from[i1];
    const double b = -(to[i0] - from[i0]);
    const double c = -a * from[i0] - b * from[i1];
    d[k] = a * p[i0] + b * p[i1] + c;
  }
  return d[0] * d[1] > 0.0 && d[0] * d[2] > 0.0;
}

int coplanar(const Vec& n, const Vec v[3], const Vec u[3]) {
  // Project onto the axis plane in which the triangles have the largest area.
  const double ax = std::fabs(n.x), ay = std::fabs(n.y), az = std::fabs(n.z);
  int i0, i1;
  if (ax > ay) {
    if (ax > az) i0 = 1, i1 = 2;
    else i0 = 0, i1 = 1;
  } else {
    if (az > ay) i0 = 0, i1 = 1;
    else i0 = 0, i1 = 2;
  }
  for (int k = 0; k < 3; ++k)
    if (edgeAgainstTriangle(v[k], v[(k + 1) % 3], u, i0, i1)) return 1;
  // No edges cross: one triangle contains the other or they are apart.
  return pointInTriangle(v[0], u, i0, i1) || pointInTriangle(u[0], v, i0, i1) ? 1 : 0;
}

}  // namespace

int SiteUtil::TriTriItersect3d(double* va, double* vb, double* vc, double* ua, double* ub, double* uc,
                               int* coplanarOut, double* isect1, double* isect2) {
  const Vec v[3] = {load(va), load(vb), load(vc)};
  const Vec u[3] = {load(ua), load(ub), load(uc)};

  const Vec nv = cross(sub(v[1], v[0]), sub(v[2], v[0]));
  const double dvPlane = -dot(nv, v[0]);
  const double du[3] = {snap(dot(nv, u[0]) + dvPlane), snap(dot(nv, u[1]) + dvPlane), snap(dot(nv, u[2]) + dvPlane)};
  const double du0du1 = du[0] * du[1], du0du2 = du[0] * du[2];
  if (du0du1 > 0.0 && du0du2 > 0.0) return 0;

  const Vec nu = cross(sub(u[1], u[0]), sub(u[2], u[0]));
  const double duPlane = -dot(nu, u[0]);
  const double dv[3] = {snap(dot(nu, v[0]) + duPlane), snap(dot(nu, v[1]) + duPlane), snap(dot(nu, v[2]) + duPlane)};
  const double dv0dv1 = dv[0] * dv[1], dv0dv2 = dv[0] * dv[2];
  if (dv0dv1 > 0.0 && dv0dv2 > 0.0) return 0;

  // Project onto the axis closest to the intersection line's direction.
  const Vec dir = cross(nv, nu);
  int axis = 0;
  double largest = std::fabs(dir.x);
  if (std::fabs(dir.y) > largest) largest = std::fabs(dir.y), axis = 1;
  if (std::fabs(dir.z) > largest) axis = 2;
  const double vp[3] = {v[0][axis], v[1][axis], v[2][axis]};
  const double up[3] = {u[0][axis], u[1][axis], u[2][axis]};

  Interval a, b;
  if (!intervalOf(v, vp, dv, dv0dv1, dv0dv2, a)) {
    *coplanarOut = 1;
    return coplanar(nv, v, u);
  }
  // The distances are not normalised, so U can lie within EPSILON of V's plane while V still
  // crosses U's: U then has no interval, and the pair is coplanar as seen from V.
  if (!intervalOf(u, up, du, du0du1, du0du2, b)) {
    *coplanarOut = 1;
    return coplanar(nv, v, u);
  }
  *coplanarOut = 0;

  const bool aSwapped = a.t0 > a.t1;
  if (aSwapped) std::swap(a.t0, a.t1);
  const bool bSwapped = b.t0 > b.t1;
  if (bSwapped) std::swap(b.t0, b.t1);
  if (a.t1 < b.t0 || b.t1 < a.t0) return 0;

  const Vec& aLow = aSwapped ? a.p1 : a.p0;
  const Vec& aHigh = aSwapped ? a.p0 : a.p1;
  const Vec& bLow = bSwapped ? b.p1 : b.p0;
  const Vec& bHigh = bSwapped ? b.p0 : b.p1;
  if (b.t0 < a.t0) {
    store(isect1, aLow);
    store(isect2, b.t1 < a.t1 ? bHigh : aHigh);
  } else {
    store(isect1, bLow);
    store(isect2, b.t1 > a.t1 ? aHigh : bHigh);
  }
  return 1;
}
