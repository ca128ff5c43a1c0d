// ConvexHull: the pivot and order of the result, points on edges and duplicates, and random sets
// checked against Andrew's monotone chain.
#include "TDUtilW.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

namespace {

using Point = std::pair<double, double>;

std::vector<int> hullOf(const std::vector<Point>& pts, int* count = nullptr) {
  std::vector<double> x, y;
  for (const Point& p : pts) {
    x.push_back(p.first);
    y.push_back(p.second);
  }
  ConvexHull h;
  std::vector<int> hull;
  const int n = h.Hull(x.data(), y.data(), static_cast<int>(pts.size()), hull);
  if (count) *count = n;
  EXPECT_EQ(n, static_cast<int>(hull.size()));
  return hull;
}

std::vector<Point> positions(const std::vector<Point>& pts, const std::vector<int>& hull) {
  std::vector<Point> out;
  for (int i : hull) out.push_back(pts.at(static_cast<size_t>(i)));
  return out;
}

double cross(const Point& o, const Point& a, const Point& b) {
  return (a.first - o.first) * (b.second - o.second) - (a.second - o.second) * (b.first - o.first);
}

// Andrew's monotone chain: strictly convex vertices, counter-clockwise, then rotated to start at
// the lowest point (the rightmost of equally low ones).
std::vector<Point> referenceHull(std::vector<Point> pts) {
  std::sort(pts.begin(), pts.end());
  pts.erase(std::unique(pts.begin(), pts.end()), pts.end());
  if (pts.size() < 3) return pts;
  std::vector<Point> h(2 * pts.size());
  size_t k = 0;
  for (size_t i = 0; i < pts.size(); ++i) {
    while (k >= 2 && cross(h[k - 2], h[k - 1], pts[i]) <= 0) --k;
    h[k++] = pts[i];
  }
  for (size_t i = pts.size() - 1, lower = k + 1; i-- > 0;) {
    while (k >= lower && cross(h[k - 2], h[k - 1], pts[i]) <= 0) --k;
    h[k++] = pts[i];
  }
  h.resize(k - 1);
  const auto pivot = std::min_element(h.begin(), h.end(), [](const Point& a, const Point& b) {
    return a.second < b.second || (a.second == b.second && a.first > b.first);
  });
  std::rotate(h.begin(), pivot, h.end());
  return h;
}

const std::vector<Point> kSquare = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};

TEST(ConvexHull, SquareStartsAtLowestRightmostPoint) {
  int count = 0;
  EXPECT_EQ(hullOf(kSquare, &count), (std::vector<int>{1, 2, 3, 0}));
  EXPECT_EQ(count, 4);
}

TEST(ConvexHull, DropsPointsOnEdgesAndInside) {
  const Point kExtra[] = {
      {1, 0.5},    // on the first edge, on the pivot's ray to (1,1)
      {0.5, 0},    // on the closing edge, on the pivot's ray to (0,0)
      {0.5, 1},    // on the top edge: popped by the scan
      {0, 0.5},    // on the left edge
      {0.5, 0.5},  // inside
  };
  static_assert(std::size(kExtra) == 5);
  for (const Point& extra : kExtra) {
    std::vector<Point> pts = kSquare;
    pts.push_back(extra);
    EXPECT_EQ(hullOf(pts), (std::vector<int>{1, 2, 3, 0})) << extra.first << "," << extra.second;
  }
  std::vector<Point> all = kSquare;
  all.insert(all.end(), std::begin(kExtra), std::end(kExtra));
  EXPECT_EQ(hullOf(all), (std::vector<int>{1, 2, 3, 0}));
}

TEST(ConvexHull, CollinearPointsGiveTheTwoEnds) {
  EXPECT_EQ(hullOf({{0, 0}, {1, 0}, {2, 0}, {3, 0}}), (std::vector<int>{3, 0}));
  EXPECT_EQ(hullOf({{0, 0}, {0, 2}, {0, 1}}), (std::vector<int>{0, 1}));
  EXPECT_EQ(hullOf({{2, 2}, {0, 0}, {1, 1}, {3, 3}, {1, 1}}), (std::vector<int>{1, 3}));  // with a repeat
}

TEST(ConvexHull, FewerThanThreePointsComeBackAsGivenAndNoneIsAnError) {
  double x[2] = {5, 1}, y[2] = {5, 1};
  ConvexHull h;
  std::vector<int> hull(50, 9);
  const auto capacity = hull.capacity();
  EXPECT_EQ(h.Hull(x, y, 1, hull), 1);
  EXPECT_EQ(hull, (std::vector<int>{0}));
  EXPECT_EQ(h.Hull(x, y, 2, hull), 2);
  EXPECT_EQ(hull, (std::vector<int>{0, 1}));
  EXPECT_EQ(hull.capacity(), capacity);  // emptied, not reallocated
  std::vector<SurvPoint> none;
  EXPECT_EQ(h.Hull(none, hull), -1);
  EXPECT_EQ(h.Hull(x, y, 0, hull), -1);
  EXPECT_EQ(h.Hull(x, y, -5, hull), -1);
  EXPECT_EQ(hull, (std::vector<int>{0, 1}));  // left alone
}

TEST(ConvexHull, SurvPointOverloadUsesPlanCoordinates) {
  std::mt19937 rng(4);
  std::uniform_real_distribution<double> c(-500, 500);
  std::vector<SurvPoint> survey(60);
  std::vector<Point> plan;
  for (SurvPoint& p : survey) {
    const double pt[3] = {c(rng), c(rng), c(rng)};
    p.set(pt, L"", L"", 0, L"");
    plan.push_back({pt[0], pt[1]});
  }
  ConvexHull h;
  std::vector<int> hull;
  const int count = h.Hull(survey, hull);
  EXPECT_EQ(count, static_cast<int>(hull.size()));
  EXPECT_EQ(hull, hullOf(plan));
}

// Random sets of three kinds: real coordinates, small integer grids at survey-sized offsets
// (duplicates and collinear runs everywhere), and points on a circle (all on the hull).
std::vector<Point> randomSet(std::mt19937& rng, int kind, int n) {
  std::vector<Point> pts;
  std::uniform_real_distribution<double> real(0, 1000), angle(0, 6.283185307179586);
  std::uniform_int_distribution<int> grid(0, 2 + n / 20);
  for (int i = 0; i < n; ++i) {
    if (kind == 0) pts.push_back({real(rng), real(rng)});
    if (kind == 1) pts.push_back({1e6 + grid(rng), 2e6 + grid(rng)});
    if (kind == 2) {
      const double a = angle(rng);
      pts.push_back({500 + 400 * std::cos(a), 500 + 400 * std::sin(a)});
    }
  }
  return pts;
}

TEST(ConvexHull, MatchesMonotoneChainOnRandomSets) {
  int cases = 0;
  for (unsigned seed : {1u, 2u, 3u, 4u, 5u}) {
    std::mt19937 rng(seed);
    for (int kind = 0; kind < 3; ++kind)
      for (int n : {3, 4, 7, 20, 100, 1000}) {
        const std::vector<Point> pts = randomSet(rng, kind, n);
        const std::vector<Point> expected = referenceHull(pts);
        if (expected.size() < 2) continue;  // all points coincide
        ASSERT_EQ(positions(pts, hullOf(pts)), expected) << "seed " << seed << " kind " << kind << " n " << n;
        ++cases;
      }
  }
  EXPECT_GT(cases, 80);
}

TEST(ConvexHull, Area2IsTwiceTheSignedArea) {
  double a[2] = {1, 1}, b[2] = {5, 1}, c[2] = {1, 4};
  EXPECT_EQ(ConvexHull::Area2(a, b, c), 12.0);
  EXPECT_EQ(ConvexHull::Area2(a, c, b), -12.0);
  EXPECT_EQ(ConvexHull::AreaSign(a, b, c), 1);
  EXPECT_EQ(ConvexHull::AreaSign(a, c, b), -1);
  double onLine[2] = {9, 1};
  EXPECT_EQ(ConvexHull::AreaSign(a, b, onLine), 0);
  double barelyLeft[2] = {9, 1 + 1e-15};
  EXPECT_EQ(ConvexHull::AreaSign(a, b, barelyLeft), 1);  // exact sign, no tolerance
}

}  // namespace
