// SegmentIndex: nearest and overlap queries agree with brute force on random segments.
#include "ge/segment_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ge/bulge_segment.h"
#include "ge_test_support.h"

namespace {

using tdhost::ge::Box2d;
using tdhost::ge::BulgeSegment;
using tdhost::ge::SegmentIndex;

// A random walk of mixed lines and arcs, like a long alignment.
std::vector<BulgeSegment> randomPolyline(getest::Random& rnd, int n) {
  std::vector<BulgeSegment> segs;
  AcGePoint2d p = rnd.point2d(100);
  for (int i = 0; i < n; ++i) {
    const AcGePoint2d q = p + AcGeVector2d(rnd.uniform(-30, 30), rnd.uniform(-30, 30));
    segs.emplace_back(p, q, rnd.integer(0, 2) == 0 ? 0.0 : rnd.uniform(-1.5, 1.5));
    p = q;
  }
  return segs;
}

TEST(SegmentIndex, NearestSegmentAgreesWithBruteForce) {
  getest::Random rnd(5);
  const std::vector<BulgeSegment> segs = randomPolyline(rnd, 600);
  const SegmentIndex index(SegmentIndex::boxesOf(segs));
  ASSERT_EQ(index.size(), 600u);
  for (int i = 0; i < 300; ++i) {
    const AcGePoint2d q = rnd.point2d(400);
    size_t bruteIndex = 0;
    double bruteDist = HUGE_VAL;
    for (size_t s = 0; s < segs.size(); ++s) {
      const double d = segs[s].closestPoint(q).distance;
      if (d < bruteDist) { bruteDist = d; bruteIndex = s; }
    }
    double best = 0;
    int evaluated = 0;
    const size_t found = index.nearestSegment(q, [&](size_t s) { ++evaluated; return segs[s].closestPoint(q).distance; }, &best);
    EXPECT_EQ(found, bruteIndex);
    EXPECT_DOUBLE_EQ(best, bruteDist);
    EXPECT_LT(evaluated, 600);  // the box bound prunes
  }
}

TEST(SegmentIndex, NearestCursorVisitsEverySegmentOnceInBoxDistanceOrder) {
  getest::Random rnd(9);
  const std::vector<BulgeSegment> segs = randomPolyline(rnd, 200);
  const std::vector<Box2d> boxes = SegmentIndex::boxesOf(segs);
  const SegmentIndex index(boxes);
  const AcGePoint2d q(12.5, -40);
  SegmentIndex::NearestCursor cursor = index.nearest(q);
  std::vector<int> seen(segs.size(), 0);
  size_t i = 0;
  double d = 0, last = -1;
  int count = 0;
  while (cursor.next(i, d)) {
    EXPECT_GE(d, last);
    const Box2d& b = boxes[i];
    const double dx = std::max({b.minX - q.x, 0.0, q.x - b.maxX}), dy = std::max({b.minY - q.y, 0.0, q.y - b.maxY});
    EXPECT_NEAR(d, std::hypot(dx, dy), 1e-9);
    EXPECT_LE(d, segs[i].closestPoint(q).distance + 1e-9);  // a box never lies beyond its segment
    ++seen[i];
    last = d;
    ++count;
  }
  EXPECT_EQ(count, 200);
  EXPECT_TRUE(std::all_of(seen.begin(), seen.end(), [](int n) { return n == 1; }));
}

TEST(SegmentIndex, IntersectingMatchesBruteForceBoxOverlap) {
  getest::Random rnd(13);
  const std::vector<BulgeSegment> segs = randomPolyline(rnd, 400);
  const std::vector<Box2d> boxes = SegmentIndex::boxesOf(segs);
  const SegmentIndex index(boxes);
  int nonEmpty = 0;
  for (int k = 0; k < 200; ++k) {
    const AcGePoint2d c = rnd.point2d(300);
    const double w = rnd.uniform(0, 60), h = rnd.uniform(0, 60);
    const Box2d query{c.x, c.y, c.x + w, c.y + h};
    std::vector<size_t> expected;
    for (size_t s = 0; s < boxes.size(); ++s)
      if (boxes[s].minX <= query.maxX && boxes[s].maxX >= query.minX && boxes[s].minY <= query.maxY &&
          boxes[s].maxY >= query.minY)
        expected.push_back(s);
    EXPECT_EQ(index.intersecting(query), expected);
    nonEmpty += !expected.empty();
  }
  EXPECT_GT(nonEmpty, 20);
}

TEST(SegmentIndex, EmptyIndexAnswersNothing) {
  const SegmentIndex index(std::vector<Box2d>{});
  EXPECT_EQ(index.size(), 0u);
  EXPECT_EQ(index.nearestSegment({0, 0}, [](size_t) { return 0.0; }), 0u);
  EXPECT_TRUE(index.intersecting({-1, -1, 1, 1}).empty());
  SegmentIndex::NearestCursor cursor = index.nearest({0, 0});
  size_t i = 0;
  double d = 0;
  EXPECT_FALSE(cursor.next(i, d));
}

}  // namespace
