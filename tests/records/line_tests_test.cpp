// LinePlaneIntersect and PtToLine, against hand-worked cases and a Cramer's-rule solution.
#include "TDUtilW.h"
#include "geometry_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <tuple>

namespace {

struct PlaneHit {
  bool found = false;
  AcGePoint3d hit{99, 99, 99};
  int onSegment = -7;
  int inTriangle = -7;
};

PlaneHit intersect(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& a, const AcGePoint3d& b,
                   const AcGePoint3d& c, double tol) {
  PlaneHit r;
  r.found = SiteUtil::LinePlaneIntersect(p0, p1, a, b, c, r.hit, r.onSegment, r.inTriangle, tol);
  return r;
}

// A horizontal triangle at height 5, counter-clockwise in plan.
const AcGePoint3d kA{0, 0, 5}, kB{6, 0, 5}, kC{0, 6, 5};

TEST(LinePlaneIntersect, OnSegmentAllowsTolInLineParameter) {
  static const double kCases[][2] = {{-0.002, 0}, {-0.0005, 1}, {0, 1},     {0.5, 1},
                                     {1, 1},      {1.0005, 1},  {1.002, 0}, {5, 0}};
  static_assert(std::size(kCases) == 8);
  for (const auto& c : kCases) {
    // The plane lies at parameter c[0] along a unit-long line.
    const PlaneHit r = intersect({2, 2, 5 - c[0]}, {2, 2, 6 - c[0]}, kA, kB, kC, 1e-3);
    ASSERT_TRUE(r.found);
    EXPECT_NEAR(r.hit.z, 5.0, 1e-12);
    EXPECT_EQ(r.onSegment, static_cast<int>(c[1])) << "t = " << c[0];
  }
}

TEST(LinePlaneIntersect, ParallelLineReturnsFalseAndLeavesOutputsUntouched) {
  for (const AcGePoint3d& p1 : {AcGePoint3d{10, 3, 6}, AcGePoint3d{10, 3, 6 + 1e-4}}) {
    const PlaneHit r = intersect({0, 0, 6}, p1, kA, kB, kC, 1e-3);
    EXPECT_FALSE(r.found);
    EXPECT_EQ(r.hit.x, 99.0);
    EXPECT_EQ(r.hit.z, 99.0);
    EXPECT_EQ(r.onSegment, -7);
    EXPECT_EQ(r.inTriangle, -7);
  }
}

TEST(LinePlaneIntersect, EdgesAndVerticesCountInsideForEitherOrientation) {
  static const double kCases[][3] = {{3, 0, 1}, {0, 3, 1}, {3, 3, 1},      {6, 0, 1},      {0, 0, 1},
                                     {0, 6, 1}, {1, 1, 1}, {-0.001, 3, 0}, {3, -0.001, 0}, {3.001, 3, 0}};
  static_assert(std::size(kCases) == 10);
  for (const auto& c : kCases) {
    const AcGePoint3d p0{c[0], c[1], 0}, p1{c[0], c[1], 1};
    EXPECT_EQ(intersect(p0, p1, kA, kB, kC, 1e-9).inTriangle, static_cast<int>(c[2])) << c[0] << "," << c[1];
    EXPECT_EQ(intersect(p0, p1, kA, kC, kB, 1e-9).inTriangle, static_cast<int>(c[2])) << "clockwise";
  }
}

TEST(LinePlaneIntersect, TriangleDegenerateInPlanTakesEveryHitAsInside) {
  // A vertical triangle: every hit on its plane is collinear with it in plan.
  const PlaneHit r = intersect({10, -1, 10}, {10, 1, 10}, {0, 0, 0}, {4, 0, 0}, {0, 0, 4}, 1e-9);
  ASSERT_TRUE(r.found);
  EXPECT_NEAR(r.hit.y, 0.0, 1e-15);
  EXPECT_EQ(r.inTriangle, 1);
}

double det3(const tdtest::Vec3& c0, const tdtest::Vec3& c1, const tdtest::Vec3& c2) {
  return tdtest::dot(c0, tdtest::cross(c1, c2));
}

TEST(LinePlaneIntersect, AgreesWithCramersRuleOnRandomTriangles) {
  std::mt19937 rng(17);
  std::uniform_real_distribution<double> coord(-10, 10);
  int inside = 0, onSegment = 0, checked = 0;
  for (int i = 0; i < 2000; ++i) {
    tdtest::Vec3 v[5];
    for (tdtest::Vec3& p : v) p = {coord(rng), coord(rng), coord(rng)};
    const tdtest::Vec3 &p0 = v[0], &p1 = v[1], &a = v[2], &b = v[3], &c = v[4];
    // p0 + t (p1 - p0) = a + s (b - a) + w (c - a)
    const tdtest::Vec3 d = tdtest::sub(p1, p0), e1 = tdtest::sub(b, a), e2 = tdtest::sub(c, a);
    const tdtest::Vec3 rhs = tdtest::sub(p0, a), minusD = tdtest::scale(d, -1);
    const double det = det3(minusD, e1, e2);
    if (std::fabs(det) < 1e-2) continue;  // nearly parallel
    const double t = det3(rhs, e1, e2) / det, s = det3(minusD, rhs, e2) / det, w = det3(minusD, e1, rhs) / det;
    // Skip hits within rounding of a decision boundary.
    const double planArea = e1[0] * e2[1] - e1[1] * e2[0];
    if (std::fabs(planArea) < 1.0 || std::fabs(t) > 100 || std::fabs(t) < 1e-9 || std::fabs(t - 1) < 1e-9 ||
        std::fabs(s) < 1e-9 || std::fabs(w) < 1e-9 || std::fabs(1 - s - w) < 1e-9)
      continue;
    const PlaneHit r = intersect({p0[0], p0[1], p0[2]}, {p1[0], p1[1], p1[2]}, {a[0], a[1], a[2]}, {b[0], b[1], b[2]},
                                 {c[0], c[1], c[2]}, 1e-12);
    ASSERT_TRUE(r.found);
    EXPECT_TRUE(tdtest::nearRel({r.hit.x, r.hit.y, r.hit.z}, tdtest::add(p0, tdtest::scale(d, t)), 1e-8));
    const int expectOn = t >= 0 && t <= 1, expectIn = s >= 0 && w >= 0 && s + w <= 1;
    EXPECT_EQ(r.onSegment, expectOn) << "case " << i;
    EXPECT_EQ(r.inTriangle, expectIn) << "case " << i;
    inside += expectIn;
    onSegment += expectOn;
    ++checked;
  }
  // Both answers must have been exercised.
  EXPECT_GT(checked, 1500);
  EXPECT_GT(inside, 100);
  EXPECT_GT(onSegment, 100);
}

struct Foot {
  tdtest::Vec3 f;
  double dist, along;
};

Foot foot(const tdtest::Vec3& a, const tdtest::Vec3& b, const tdtest::Vec3& p) {
  Foot r{};
  EXPECT_EQ(
      SiteUtil::PtToLine(a[0], a[1], a[2], b[0], b[1], b[2], p[0], p[1], p[2], r.f[0], r.f[1], r.f[2], r.dist, r.along),
      0);
  return r;
}

TEST(PtToLine, HandWorkedFeet) {
  struct Case {
    const char* what;
    tdtest::Vec3 a, b, p, foot;
    double dist, along;
  };
  const Case kCases[] = {
      {"perpendicular", {0, 0, 0}, {10, 0, 0}, {3, 4, 0}, {3, 0, 0}, 4, 3},
      {"on the line past B", {0, 0, 0}, {2, 0, 0}, {5, 0, 0}, {5, 0, 0}, 0, 5},
      {"on a diagonal line", {1, 1, 1}, {3, 3, 3}, {5, 5, 5}, {5, 5, 5}, 0, std::sqrt(48.0)},
      {"behind A", {0, 0, 0}, {1, 0, 0}, {-2, 3, 0}, {-2, 0, 0}, 3, -2},
      {"at A", {1, 2, 3}, {4, 6, 3}, {1, 2, 3}, {1, 2, 3}, 0, 0},
  };
  static_assert(std::size(kCases) == 5);
  for (const Case& c : kCases) {
    const Foot r = foot(c.a, c.b, c.p);
    EXPECT_TRUE(tdtest::nearRel(r.f, c.foot, 1e-12)) << c.what;
    EXPECT_NEAR(r.dist, c.dist, 1e-12) << c.what;
    EXPECT_NEAR(r.along, c.along, 1e-12) << c.what;
  }
}

TEST(PtToLine, AgreesWithVectorProjection) {
  std::mt19937 rng(23);
  std::uniform_real_distribution<double> coord(-50, 50);
  for (int i = 0; i < 500; ++i) {
    const tdtest::Vec3 a{coord(rng), coord(rng), coord(rng)}, b{coord(rng), coord(rng), coord(rng)},
        p{coord(rng), coord(rng), coord(rng)};
    const tdtest::Vec3 ab = tdtest::sub(b, a);
    const double t = tdtest::dot(tdtest::sub(p, a), ab) / tdtest::dot(ab, ab);
    const tdtest::Vec3 f = tdtest::add(a, tdtest::scale(ab, t));
    const Foot r = foot(a, b, p);
    EXPECT_TRUE(tdtest::nearRel(r.f, f, 5e-8));
    EXPECT_TRUE(tdtest::nearRel(r.along, t * tdtest::norm(ab), 5e-8));
    EXPECT_TRUE(tdtest::nearRel(r.dist, tdtest::distance(p, f), 5e-8));
  }
}

}  // namespace
