// simplifyPolyline on point arrays: the boundary cases of both stages, and a brute-force check
// that every dropped point stays near the simplified line.
#include "TDUtilW.h"
#include "geometry_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <memory>
#include <random>
#include <vector>

namespace {

using Points = std::unique_ptr<double[][3]>;

Points makePoints(const std::vector<tdtest::Vec3>& list) {
  Points pts = std::make_unique<double[][3]>(list.size());
  int i = 0;
  for (const tdtest::Vec3& p : list) {
    pts[i][0] = p[0];
    pts[i][1] = p[1];
    pts[i][2] = p[2];
    ++i;
  }
  return pts;
}

tdtest::Vec3 at(const Points& pts, int i) { return {pts[i][0], pts[i][1], pts[i][2]}; }

// Kept input positions through the keep[] overload, checked against the out[] overload.
std::vector<int> keptPositions(double tol, const Points& pts, int n) {
  std::vector<int> keep(static_cast<size_t>(n), 0);
  const int count = SiteUtil::simplifyPolyline(tol, pts.get(), n, keep.data());
  Points out = std::make_unique<double[][3]>(static_cast<size_t>(n));
  EXPECT_EQ(SiteUtil::simplifyPolyline(tol, pts.get(), n, out.get()), count);
  std::vector<int> kept;
  for (int i = 0; i < n; ++i)
    if (keep[static_cast<size_t>(i)]) kept.push_back(i);
  EXPECT_EQ(static_cast<int>(kept.size()), count);
  for (int k = 0; k < count && k < static_cast<int>(kept.size()); ++k)
    EXPECT_EQ(at(out, k), at(pts, kept[static_cast<size_t>(k)])) << "output point " << k;
  return kept;
}

TEST(SimplifyPolyline, BoundaryCasesKeepTheExpectedPoints) {
  struct Case {
    const char* what;
    double tol;
    std::vector<tdtest::Vec3> pts;
    std::vector<int> kept;
  };
  const Case kCases[] = {
      {"single point", 1.0, {{1, 2, 3}}, {0}},
      {"two far points", 1.0, {{0, 0, 0}, {5, 0, 0}}, {0, 1}},
      {"two near points", 1.0, {{0, 0, 0}, {0.1, 0, 0}}, {0, 1}},
      {"collinear", 0.01, {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {2.5, 2.5, 2.5}, {7, 7, 7}}, {0, 4}},
      {"last point near the previous one", 0.1, {{0, 0, 0}, {10, 0, 0}, {10, 0.05, 0}}, {0, 2}},
      // Exact repeats pass the first stage but lie on their segment, as do collinear points; of
      // the two equally far repeats 3 and 4, the first found is kept.
      {"zero tolerance", 0.0, {{0, 0, 0}, {0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {2, 0, 0}, {3, 0, 1}}, {0, 2, 3, 5}},
      // The offset is in z: distances are measured in space, not in plan.
      {"exactly tol off the segment", 3.0, {{0, 0, 0}, {5, 0, 3}, {10, 0, 0}}, {0, 2}},
      {"just over tol off the segment", 2.999, {{0, 0, 0}, {5, 0, 3}, {10, 0, 0}}, {0, 1, 2}},
      // 1 lies exactly tol from 0 and is kept by the first stage, which then drops 2 as near 1;
      // the second stage drops 1 too. Were 1 dropped first, 2 (1.6 off the line) would be kept.
      {"exactly tol from the last kept", 1.0, {{0, 0, 0}, {0, 1, 0}, {0.3, 1.6, 0}, {5, 0, 0}}, {0, 3}},
      {"past the segment end", 1.0, {{0, 0, 0}, {10.5, 0, 0}, {10, 0, 0}}, {0, 2}},
  };
  static_assert(std::size(kCases) == 10);
  for (const Case& c : kCases) {
    EXPECT_EQ(keptPositions(c.tol, makePoints(c.pts), static_cast<int>(c.pts.size())), c.kept) << c.what;
  }
}

TEST(SimplifyPolyline, CallerArraysAreOnlyEverSet) {
  const Points pts = makePoints({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
  int keep[4] = {0, 1, 0, 0};
  EXPECT_EQ(SiteUtil::simplifyPolyline(0.5, pts.get(), 4, keep), 2);
  EXPECT_EQ(std::vector<int>(keep, keep + 4), (std::vector<int>{1, 1, 0, 1}));  // a set flag is never cleared
  // No points: zero, and nothing written.
  double out[1][3] = {{9, 9, 9}};
  EXPECT_EQ(SiteUtil::simplifyPolyline(1.0, pts.get(), 0, keep), 0);
  EXPECT_EQ(SiteUtil::simplifyPolyline(1.0, pts.get(), -3, out), 0);
  EXPECT_EQ(keep[2], 0);
  EXPECT_EQ(out[0][0], 9.0);
}

// Random 3D walks with a wandering heading, so that runs of points are nearly straight. Steps
// shorter than tol (and exact repeats) appear only when `clustered`.
Points randomWalk(std::mt19937& rng, int n, double tol, bool clustered) {
  std::normal_distribution<double> noise(0.0, 0.4);
  std::uniform_real_distribution<double> len(clustered ? 0.0 : 1.01 * tol, 6 * tol);
  std::bernoulli_distribution repeat(clustered ? 0.1 : 0.0);
  Points pts = std::make_unique<double[][3]>(static_cast<size_t>(n));
  tdtest::Vec3 p{0, 0, 0}, heading{1, 0, 0};
  for (int i = 0; i < n; ++i) {
    if (i > 0 && !repeat(rng)) {
      heading = tdtest::add(heading, {noise(rng), noise(rng), 0.3 * noise(rng)});
      heading = tdtest::scale(heading, 1.0 / tdtest::norm(heading));
      p = tdtest::add(p, tdtest::scale(heading, len(rng)));
    }
    pts[i][0] = p[0];
    pts[i][1] = p[1];
    pts[i][2] = p[2];
  }
  return pts;
}

// Every dropped point must lie within `reach` of the segment between the kept points around it.
void expectDroppedPointsWithin(const Points& pts, int n, const std::vector<int>& kept, double reach) {
  ASSERT_GE(kept.size(), 2u);
  ASSERT_EQ(kept.front(), 0);
  ASSERT_EQ(kept.back(), n - 1);
  for (size_t k = 0; k + 1 < kept.size(); ++k) {
    const tdtest::Vec3 a = at(pts, kept[k]), b = at(pts, kept[k + 1]);
    for (int i = kept[k] + 1; i < kept[k + 1]; ++i)
      EXPECT_LE(tdtest::pointSegmentDistance(at(pts, i), a, b), reach * (1 + 1e-9)) << "point " << i;
  }
}

TEST(SimplifyPolyline, DroppedPointsOfRandomWalksStayNearTheLine) {
  // With every step at least tol long the first stage keeps all, so the Douglas-Peucker bound
  // holds exactly. In clustered walks a point dropped for being near a kept point can lose that
  // point to the second stage, which leaves it at most tol + tol from the final line.
  for (bool clustered : {false, true})
    for (unsigned seed : {1u, 2u, 3u}) {
      std::mt19937 rng(seed);
      for (double tol : {0.05, 0.5, 2.0}) {
        const int n = 300;
        const Points pts = randomWalk(rng, n, tol, clustered);
        const std::vector<int> kept = keptPositions(tol, pts, n);
        EXPECT_LT(kept.size(), static_cast<size_t>(n));
        expectDroppedPointsWithin(pts, n, kept, clustered ? 2 * tol : tol);
      }
    }
}

}  // namespace
