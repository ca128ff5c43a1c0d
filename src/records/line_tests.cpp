// Line against a triangle's plane, and the foot of a point on a line.
#include "TDUtilW.h"

#include <cmath>

bool SiteUtil::LinePlaneIntersect(AcGePoint3d p0, AcGePoint3d p1, AcGePoint3d a, AcGePoint3d b, AcGePoint3d c,
                                  AcGePoint3d& hit, int& onSegment, int& inTriangle, double tol) {
  double nx = (b.y - a.y) * (c.z - a.z) - (c.y - a.y) * (b.z - a.z);
  double ny = (c.x - a.x) * (b.z - a.z) - (b.x - a.x) * (c.z - a.z);
  double nz = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
  const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
  if (len != 0.0) {
    nx /= len;
    ny /= len;
    nz /= len;
  }
  const double dx = p1.x - p0.x, dy = p1.y - p0.y, dz = p1.z - p0.z;
  const double den = dx * nx + dy * ny + dz * nz;
  if (std::fabs(den) < tol) return false;  // parallel to the plane

  const double t = ((nx * a.x + ny * a.y + nz * a.z) - (nx * p0.x + ny * p0.y + nz * p0.z)) / den;
  hit.set(p0.x + t * dx, p0.y + t * dy, p0.z + t * dz);
  onSegment = (t >= -tol && t <= 1.0 + tol) ? 1 : 0;

  // In plan, with exact turn signs: on an edge or vertex counts as inside.
  const int outsideSign = CCW(a.x, a.y, b.x, b.y, c.x, c.y) == 1 ? -1 : 1;
  inTriangle = (CCW(a.x, a.y, b.x, b.y, hit.x, hit.y) == outsideSign ||
                CCW(b.x, b.y, c.x, c.y, hit.x, hit.y) == outsideSign ||
                CCW(c.x, c.y, a.x, a.y, hit.x, hit.y) == outsideSign)
                   ? 0
                   : 1;
  return true;
}

int SiteUtil::PtToLine(double ax, double ay, double az, double bx, double by, double bz, double px, double py,
                       double pz, double& fx, double& fy, double& fz, double& dist, double& along) {
  const double length = dist3(ax, ay, az, bx, by, bz);
  const double theta = Angle3D(bx, by, bz, ax, ay, az, px, py, pz);
  along = std::cos(theta) * dist3(ax, ay, az, px, py, pz);
  const double s = along / length;
  fx = ax + s * (bx - ax);
  fy = ay + s * (by - ay);
  fz = az + s * (bz - az);
  dist = dist3(px, py, pz, fx, fy, fz);
  return 0;
}
