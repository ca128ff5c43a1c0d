// Plan and space distances, turn tests, azimuths, angles and decimal rounding.
#include "TDUtilW.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double kHalfPi = 1.5707963267948966;
constexpr double kPi = 3.141592653589793;
constexpr double kThreeHalfPi = 4.71238898038469;
constexpr double kTwoPi = 6.283185307179586;

// Truncation to a signed 64-bit integer as the processor does it: out-of-range values and NaN
// give the "integer indefinite" INT64_MIN instead of undefined behaviour.
std::int64_t truncToInt64(double v) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  if (!(v > -kLimit && v < kLimit)) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(v);
}

}  // namespace

double SiteUtil::dist2(double x1, double y1, double x2, double y2) {
  return std::sqrt((y2 - y1) * (y2 - y1) + (x2 - x1) * (x2 - x1));
}

double SiteUtil::dist3(double x1, double y1, double z1, double x2, double y2, double z2) {
  return std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1) + (z2 - z1) * (z2 - z1));
}

double SiteUtil::triArea(double x1, double y1, double x2, double y2, double x3, double y3) {
  return x2 * y3 - y2 * x3 - x1 * y3 + y1 * x3 + x1 * y2 - y1 * x2;
}

int SiteUtil::CCW(double x1, double y1, double x2, double y2, double x3, double y3) {
  const double t = triArea(x1, y1, x2, y2, x3, y3);
  if (t > 0.0) return 1;
  return t < 0.0 ? -1 : 0;
}

double SiteUtil::getAZM(double x1, double y1, double x2, double y2) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  if (dy == 0.0) {
    if (dx > 0.0) return kHalfPi;
    if (dx < 0.0) return kThreeHalfPi;
    return 0.0;
  }
  const double a = std::atan(std::fabs(dx) / std::fabs(dy));
  if (dy > 0.0) {
    if (dx > 0.0) return a;
    if (dx < 0.0) return kTwoPi - a;
    return 0.0;
  }
  if (dy < 0.0) {
    if (dx > 0.0) return kPi - a;
    if (dx < 0.0) return kPi + a;
    return kPi;
  }
  return 0.0;  // NaN
}

double SiteUtil::AZMToMD(double azm) {
  double m = kHalfPi - azm;
  if (m < 0.0) m += kTwoPi;
  if (m > kTwoPi) m -= kTwoPi;
  return m;
}

double SiteUtil::Angle3D(double ax, double ay, double az, double bx, double by, double bz, double cx, double cy,
                         double cz) {
  const double ux = ax - bx, uy = ay - by, uz = az - bz;
  const double vx = cx - bx, vy = cy - by, vz = cz - bz;
  const double p = std::sqrt(vx * vx + vy * vy + vz * vz) * std::sqrt(ux * ux + uy * uy + uz * uz);
  if (p == 0.0) return 0.0;
  const double c = (vy * uy + vx * ux + vz * uz) / p;
  if (c >= -1.0 && c <= 1.0) return std::acos(c);
  // Rounding pushed c just outside [-1, 1]: its reciprocal lies just inside.
  return std::acos(1.0 / c);
}

double SiteUtil::round(double value, int decimals) {
  const double f = std::pow(10.0, decimals);
  if (value >= 0.0) return static_cast<double>(truncToInt64(value * f + 0.5)) / f;
  return -(static_cast<double>(truncToInt64(0.5 - f * value)) / f);
}

void SiteUtil::setAdsPoint(double pt[3], double x, double y, double z) {
  pt[0] = x;
  pt[1] = y;
  pt[2] = z;
}
