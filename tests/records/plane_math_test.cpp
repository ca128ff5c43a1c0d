// Distances, turn tests, azimuths, angles and rounding, against analytic values and the
// standard library's own trigonometry.
#include "TDUtilW.h"
#include "geometry_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <numbers>
#include <random>

namespace {

using std::numbers::pi;

TEST(PlaneMath, DistancesAreaAndTurnSign) {
  EXPECT_EQ(SiteUtil::dist2(1, 1, 4, 5), 5.0);
  EXPECT_EQ(SiteUtil::dist3(1, 1, 1, 3, 4, 7), 7.0);
  EXPECT_EQ(SiteUtil::triArea(10, 10, 14, 10, 10, 13), 12.0);  // twice the area, not halved
  EXPECT_EQ(SiteUtil::triArea(0, 0, 0, 1, 1, 0), -1.0);
  EXPECT_EQ(SiteUtil::CCW(0, 0, 1, 0, 0, 1), 1);
  EXPECT_EQ(SiteUtil::CCW(0, 0, 0, 1, 1, 0), -1);
  EXPECT_EQ(SiteUtil::CCW(0, 0, 1, 1, 2, 2), 0);
  EXPECT_EQ(SiteUtil::CCW(0, 0, 1, 0, 2, 1e-300), 1);  // no tolerance
}

struct AzimuthCase {
  double dx, dy, azimuth;
};

TEST(PlaneMath, AzimuthRunsClockwiseFromNorth) {
  static const AzimuthCase kCases[] = {
      {0, 1, 0},           {1, 0, pi / 2},      {0, -1, pi},          {-1, 0, 3 * pi / 2}, {1, 1, pi / 4},
      {-1, 1, 7 * pi / 4}, {1, -1, 3 * pi / 4}, {-1, -1, 5 * pi / 4}, {0, 0, 0},           {1, std::sqrt(3.0), pi / 6},
  };
  static_assert(std::size(kCases) == 10);
  for (const AzimuthCase& c : kCases) {
    // Offset the start so the differences, not the coordinates, decide.
    EXPECT_NEAR(SiteUtil::getAZM(5, -7, 5 + c.dx, -7 + c.dy), c.azimuth, 1e-15) << c.dx << "," << c.dy;
  }
}

TEST(PlaneMath, AzimuthAgreesWithAtan2AndStaysInRange) {
  std::mt19937 rng(5);
  std::uniform_real_distribution<double> c(-1000, 1000);
  for (int i = 0; i < 500; ++i) {
    const double x1 = c(rng), y1 = c(rng), x2 = c(rng), y2 = c(rng);
    const double azm = SiteUtil::getAZM(x1, y1, x2, y2);
    ASSERT_GE(azm, 0.0);
    ASSERT_LT(azm, 2 * pi);
    double expected = std::atan2(x2 - x1, y2 - y1);
    if (expected < 0) expected += 2 * pi;
    EXPECT_NEAR(azm, expected, 1e-12);
    // The mathematical direction of the same bearing points the same way.
    const double md = SiteUtil::AZMToMD(azm);
    const double len = SiteUtil::dist2(x1, y1, x2, y2);
    EXPECT_NEAR(std::cos(md) * len, x2 - x1, 1e-9 * len);
    EXPECT_NEAR(std::sin(md) * len, y2 - y1, 1e-9 * len);
  }
}

TEST(PlaneMath, AzimuthToDirectionFoldsAtMostOnceEachWay) {
  static const double kCases[][2] = {
      {0, pi / 2},
      {pi / 2, 0},
      {pi, 3 * pi / 2},
      {-2 * pi, pi / 2},
      {-3 * pi / 2, 2 * pi},               // 2pi is kept, not folded to 0
      {4 * pi, pi / 2 - 4 * pi + 2 * pi},  // far outside: no loop
  };
  static_assert(std::size(kCases) == 6);
  for (const auto& c : kCases) EXPECT_NEAR(SiteUtil::AZMToMD(c[0]), c[1], 1e-14) << c[0];
  EXPECT_EQ(SiteUtil::AZMToMD(-4.71238898038469), 6.283185307179586);
}

TEST(PlaneMath, Angle3DIsTheAngleAtTheMiddlePoint) {
  EXPECT_EQ(SiteUtil::Angle3D(4, 5, 6, 4, 5, 6, 1, 2, 3), 0.0);  // A = B: no ray
  EXPECT_EQ(SiteUtil::Angle3D(1, 2, 3, 4, 5, 6, 4, 5, 6), 0.0);  // C = B
  EXPECT_DOUBLE_EQ(SiteUtil::Angle3D(1, 0, 0, 0, 0, 0, -3, 0, 0), pi);

  std::mt19937 rng(8);
  std::uniform_real_distribution<double> c(-10, 10);
  for (int i = 0; i < 300; ++i) {
    const tdtest::Vec3 a{c(rng), c(rng), c(rng)}, b{c(rng), c(rng), c(rng)}, d{c(rng), c(rng), c(rng)};
    const tdtest::Vec3 u = tdtest::sub(a, b), v = tdtest::sub(d, b);
    const double expected = std::atan2(tdtest::norm(tdtest::cross(u, v)), tdtest::dot(u, v));
    const double angle = SiteUtil::Angle3D(a[0], a[1], a[2], b[0], b[1], b[2], d[0], d[1], d[2]);
    EXPECT_NEAR(angle, expected, 1e-7);  // acos loses digits near 0 and pi
  }
}

TEST(PlaneMath, Angle3DOfNearlyParallelRaysStaysFinite) {
  // Rounding can push the cosine past 1; the result must still be a small angle, not NaN.
  std::mt19937 rng(21);
  std::uniform_real_distribution<double> c(-1e3, 1e3), factor(1e-3, 1e3);
  for (int i = 0; i < 1000; ++i) {
    const double x = c(rng), y = c(rng), z = c(rng), k = factor(rng);
    const double same = SiteUtil::Angle3D(x, y, z, 0, 0, 0, x * k, y * k, z * k);
    const double opposite = SiteUtil::Angle3D(x, y, z, 0, 0, 0, -x * k, -y * k, -z * k);
    ASSERT_TRUE(std::isfinite(same) && std::isfinite(opposite));
    EXPECT_LT(same, 1e-7);
    EXPECT_GT(opposite, pi - 1e-7);
  }
}

struct RoundCase {
  double value;
  int decimals;
  double expected;
};

TEST(PlaneMath, RoundTakesHalvesAwayFromZero) {
  static const RoundCase kCases[] = {
      {2.5, 0, 3},
      {-2.5, 0, -3},
      {2.4999, 0, 2},
      {-2.4999, 0, -2},
      {1234.5, -2, 1200},
      {1250, -2, 1300},
      {-1250, -2, -1300},
      {3.14159, 2, 3.14},
      {-3.14159, 3, -3.142},
      {0.125, 2, 0.13},
      {0.0, 3, 0.0},
      {123456789.25, 1, 123456789.3},
      // The half is added before truncating: just below one half the sum rounds up to 1.
      {0.49999999999999994, 0, 1},
      {-0.49999999999999994, 0, -1},
  };
  static_assert(std::size(kCases) == 14);
  for (const RoundCase& c : kCases)
    EXPECT_DOUBLE_EQ(SiteUtil::round(c.value, c.decimals), c.expected) << c.value << " to " << c.decimals;
}

TEST(PlaneMath, RoundOfSmallNegativeGivesNegativeZero) {
  const double r = SiteUtil::round(-0.004, 2);
  EXPECT_EQ(r, 0.0);
  EXPECT_TRUE(std::signbit(r));
}

}  // namespace
