// TriTriItersect3d: hand-worked crossings, coplanar and touching cases, and random pairs checked
// against brute-force edge-against-triangle piercing.
#include "TDUtilW.h"
#include "geometry_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <vector>

namespace {

using tdtest::Vec3;

struct TriTri {
  int result = -1;
  int coplanar = -1;
  Vec3 p{99, 99, 99}, q{99, 99, 99};
};

TriTri intersect(Vec3 va, Vec3 vb, Vec3 vc, Vec3 ua, Vec3 ub, Vec3 uc) {
  TriTri r;
  r.result = SiteUtil::TriTriItersect3d(va.data(), vb.data(), vc.data(), ua.data(), ub.data(), uc.data(), &r.coplanar,
                                        r.p.data(), r.q.data());
  return r;
}

// The segment's ends in either order.
::testing::AssertionResult sameSegment(const TriTri& r, const Vec3& a, const Vec3& b, double rel) {
  if ((tdtest::nearRel(r.p, a, rel) && tdtest::nearRel(r.q, b, rel)) ||
      (tdtest::nearRel(r.p, b, rel) && tdtest::nearRel(r.q, a, rel)))
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "segment (" << r.p[0] << "," << r.p[1] << "," << r.p[2] << ")-(" << r.q[0]
                                       << "," << r.q[1] << "," << r.q[2] << ")";
}

// V lies in z = 0; the U triangles stand in the plane y = 1.
const Vec3 kV0{0, 0, 0}, kV1{4, 0, 0}, kV2{0, 4, 0};

TEST(TriTriIntersect, CrossingTrianglesGiveTheirSegment) {
  // U cuts z = 0 in x = [4/3, 8/3], inside V's chord x = [0, 3].
  TriTri r = intersect(kV0, kV1, kV2, {1, 1, -1}, {3, 1, -1}, {2, 1, 2});
  EXPECT_EQ(r.result, 1);
  EXPECT_EQ(r.coplanar, 0);
  EXPECT_TRUE(sameSegment(r, {4.0 / 3, 1, 0}, {8.0 / 3, 1, 0}, 1e-12));
  // U cuts x = [8/3, 16/3]: one end from each triangle.
  r = intersect(kV0, kV1, kV2, {2, 1, -1}, {6, 1, -1}, {4, 1, 2});
  EXPECT_EQ(r.result, 1);
  EXPECT_TRUE(sameSegment(r, {8.0 / 3, 1, 0}, {3, 1, 0}, 1e-12));
  // U cuts x = [3, 5]: the triangles touch in the one point (3, 1, 0).
  r = intersect(kV0, kV1, kV2, {2, 1, -1}, {6, 1, -1}, {4, 1, 1});
  EXPECT_EQ(r.result, 1);
  EXPECT_TRUE(sameSegment(r, {3, 1, 0}, {3, 1, 0}, 1e-12));
}

TEST(TriTriIntersect, CoplanarTrianglesUseTheAreaTest) {
  struct Case {
    Vec3 a, b, c;
    int result;
  };
  // Given in z = 0 against V; each is also run turned into the planes x = 0 and y = 0, so every
  // choice of projection plane is used, and with the triangles' roles swapped.
  const Case kCases[] = {
      {{1, 1, 0}, {5, 1, 0}, {1, 5, 0}, 1},        // edges cross
      {{1, 1, 0}, {2, 1, 0}, {1, 2, 0}, 1},        // U inside V
      {{-1, -1, 0}, {9, -1, 0}, {-1, 9, 0}, 1},    // V inside U
      {{4, 0, 0}, {6, 0, 0}, {5, 2, 0}, 1},        // shared vertex
      {{2, 0, 0}, {3, -2, 0}, {1, -2, 0}, 1},      // a vertex of U on an edge of V
      {{10, 10, 0}, {11, 10, 0}, {10, 11, 0}, 0},  // apart
  };
  static_assert(std::size(kCases) == 6);
  const auto toX0 = [](const Vec3& p) { return Vec3{0, p[0], p[1]}; };
  const auto toY0 = [](const Vec3& p) { return Vec3{p[0], 0, p[1]}; };
  const auto same = [](const Vec3& p) { return p; };
  for (const Case& c : kCases)
    for (Vec3 (*const turn)(const Vec3&) : {+same, +toX0, +toY0}) {
      const Vec3 v[3] = {turn(kV0), turn(kV1), turn(kV2)}, u[3] = {turn(c.a), turn(c.b), turn(c.c)};
      for (const TriTri& r :
           {intersect(v[0], v[1], v[2], u[0], u[1], u[2]), intersect(u[0], u[1], u[2], v[0], v[1], v[2])}) {
        EXPECT_EQ(r.result, c.result) << u[0][0] << "," << u[0][1] << "," << u[0][2];
        EXPECT_EQ(r.coplanar, 1);
        EXPECT_EQ(r.p, (Vec3{99, 99, 99}));  // no segment is written
        EXPECT_EQ(r.q, (Vec3{99, 99, 99}));
      }
    }
}

TEST(TriTriIntersect, VertexWithin1em6OfThePlaneTouches) {
  // V's normal has unit length here, so the snapping distance is a true distance.
  const Vec3 v0{0, 0, 0}, v1{1, 0, 0}, v2{0, 1, 0};
  auto lowVertexAt = [&](double h) { return intersect(v0, v1, v2, {0.25, 0.25, h}, {0.5, 0.25, 1}, {0.25, 0.5, 1}); };
  const TriTri touching = lowVertexAt(5e-7);
  EXPECT_EQ(touching.result, 1);
  EXPECT_EQ(touching.coplanar, 0);
  EXPECT_TRUE(sameSegment(touching, {0.25, 0.25, 5e-7}, {0.25, 0.25, 5e-7}, 1e-9));
  EXPECT_EQ(lowVertexAt(2e-6).result, 0);
  EXPECT_EQ(lowVertexAt(-2e-6).result, 1);
}

TEST(TriTriIntersect, TriangleWithinSnappingDistanceOfTheOtherPlaneCountsAsCoplanarEitherWay) {
  // V is tiny, so the distances of U's vertices to its plane (scaled by |nV| ~ 2e-6) all snap to
  // 0, while V still crosses U's plane z = 0. Both orders must take the coplanar test.
  const Vec3 v0{0, 0, -1e-3}, v1{1e-3, 0, 1e-3}, v2{0, 1e-3, 0};
  const Vec3 u0{-0.1, -0.1, 0}, u1{0.1, -0.1, 0}, u2{0, 0.1, 0};
  for (const TriTri& r : {intersect(v0, v1, v2, u0, u1, u2), intersect(u0, u1, u2, v0, v1, v2)}) {
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.coplanar, 1);
    EXPECT_EQ(r.p, (Vec3{99, 99, 99}));
  }
}

// Segment p-q against triangle abc (Moller-Trumbore). Sets `ambiguous` when the answer lies
// within rounding of a boundary, so callers can skip the case.
bool segmentPierces(const Vec3& p, const Vec3& q, const Vec3& a, const Vec3& b, const Vec3& c, Vec3& hit,
                    bool& ambiguous) {
  const Vec3 d = tdtest::sub(q, p), e1 = tdtest::sub(b, a), e2 = tdtest::sub(c, a);
  const Vec3 h = tdtest::cross(d, e2);
  const double det = tdtest::dot(e1, h);
  if (std::fabs(det) < 1e-6) {
    ambiguous = true;
    return false;
  }
  const Vec3 s = tdtest::sub(p, a), qv = tdtest::cross(s, e1);
  const double u = tdtest::dot(s, h) / det, v = tdtest::dot(d, qv) / det, t = tdtest::dot(e2, qv) / det;
  for (double m : {u, v, 1 - u - v, t, 1 - t})
    if (std::fabs(m) < 1e-7) ambiguous = true;
  hit = tdtest::add(p, tdtest::scale(d, t));
  return u >= 0 && v >= 0 && u + v <= 1 && t >= 0 && t <= 1;
}

double planeDistance(const Vec3& p, const Vec3& a, const Vec3& b, const Vec3& c) {
  const Vec3 n = tdtest::cross(tdtest::sub(b, a), tdtest::sub(c, a));
  return std::fabs(tdtest::dot(n, tdtest::sub(p, a))) / tdtest::norm(n);
}

TEST(TriTriIntersect, RandomPairsAgreeWithEdgePiercing) {
  int crossing = 0, apart = 0;
  for (unsigned seed : {1u, 2u, 3u}) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> coord(-1, 1);
    for (int i = 0; i < 2000; ++i) {
      Vec3 t[6];
      for (Vec3& p : t) p = {coord(rng), coord(rng), coord(rng)};
      const Vec3* tri[2] = {&t[0], &t[3]};
      // Skip slivers and vertices near the other plane: there the 1e-6 snapping decides.
      bool skip = false;
      for (int k = 0; k < 2 && !skip; ++k) {
        const Vec3* me = tri[k];
        const Vec3* other = tri[1 - k];
        skip = tdtest::norm(tdtest::cross(tdtest::sub(me[1], me[0]), tdtest::sub(me[2], me[0]))) < 0.05;
        for (int j = 0; j < 3 && !skip; ++j) skip = planeDistance(me[j], other[0], other[1], other[2]) < 1e-4;
      }
      if (skip) continue;
      std::vector<Vec3> hits;
      bool ambiguous = false;
      for (int k = 0; k < 2; ++k)
        for (int j = 0; j < 3; ++j) {
          const Vec3* edgeOf = tri[k];
          const Vec3* other = tri[1 - k];
          Vec3 hit;
          if (segmentPierces(edgeOf[j], edgeOf[(j + 1) % 3], other[0], other[1], other[2], hit, ambiguous))
            hits.push_back(hit);
        }
      if (ambiguous) continue;

      const TriTri r = intersect(t[0], t[1], t[2], t[3], t[4], t[5]);
      ASSERT_EQ(r.result, hits.empty() ? 0 : 1) << "seed " << seed << " case " << i;
      if (hits.empty()) {
        ++apart;
        continue;
      }
      ++crossing;
      EXPECT_EQ(r.coplanar, 0);
      // Every piercing point lies on the segment, and each end is one of them.
      for (const Vec3& h : hits) EXPECT_LE(tdtest::pointSegmentDistance(h, r.p, r.q), 1e-9);
      for (const Vec3& end : {r.p, r.q}) {
        double nearest = 1e300;
        for (const Vec3& h : hits) nearest = std::min(nearest, tdtest::distance(end, h));
        EXPECT_LE(nearest, 1e-9);
        EXPECT_LE(planeDistance(end, t[0], t[1], t[2]), 1e-9);
        EXPECT_LE(planeDistance(end, t[3], t[4], t[5]), 1e-9);
      }
    }
  }
  EXPECT_GT(crossing, 300);
  EXPECT_GT(apart, 300);
}

}  // namespace
