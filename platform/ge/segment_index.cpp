// SegmentIndex over Boost.Geometry's R-tree (packed on construction, incremental nearest queries).
#include "ge/segment_index.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

namespace tdhost::ge {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {

using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Value = std::pair<Box, std::size_t>;
using RTree = bgi::rtree<Value, bgi::rstar<16>>;

Box toBox(const Box2d& b) { return Box(Point(b.minX, b.minY), Point(b.maxX, b.maxY)); }

}  // namespace

struct SegmentIndex::Tree {
  RTree rtree;
};

struct SegmentIndex::NearestCursor::State {
  Point origin;
  RTree::const_query_iterator it;
  RTree::const_query_iterator end;
};

SegmentIndex::SegmentIndex(const std::vector<Box2d>& boxes) : mTree(std::make_unique<Tree>()) {
  std::vector<Value> values;
  values.reserve(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i) values.emplace_back(toBox(boxes[i]), i);
  // The range constructor packs the tree, which beats one-by-one insertion for static data.
  mTree->rtree = RTree(values.begin(), values.end());
}

SegmentIndex::~SegmentIndex() = default;
SegmentIndex::SegmentIndex(SegmentIndex&&) noexcept = default;
SegmentIndex& SegmentIndex::operator=(SegmentIndex&&) noexcept = default;

std::vector<Box2d> SegmentIndex::boxesOf(const std::vector<BulgeSegment>& segments) {
  std::vector<Box2d> boxes;
  boxes.reserve(segments.size());
  for (const BulgeSegment& s : segments) boxes.push_back(s.boundingBox());
  return boxes;
}

std::size_t SegmentIndex::size() const { return mTree->rtree.size(); }

std::vector<std::size_t> SegmentIndex::intersecting(const Box2d& box) const {
  std::vector<Value> hits;
  mTree->rtree.query(bgi::intersects(toBox(box)), std::back_inserter(hits));
  std::vector<std::size_t> out;
  out.reserve(hits.size());
  for (const Value& v : hits) out.push_back(v.second);
  std::sort(out.begin(), out.end());
  return out;
}

SegmentIndex::NearestCursor::NearestCursor(std::unique_ptr<State> state) : mState(std::move(state)) {}
SegmentIndex::NearestCursor::~NearestCursor() = default;
SegmentIndex::NearestCursor::NearestCursor(NearestCursor&&) noexcept = default;
SegmentIndex::NearestCursor& SegmentIndex::NearestCursor::operator=(NearestCursor&&) noexcept = default;

bool SegmentIndex::NearestCursor::next(std::size_t& index, double& boxDistance) {
  if (!mState || mState->it == mState->end) return false;
  index = mState->it->second;
  boxDistance = bg::distance(mState->origin, mState->it->first);
  ++mState->it;
  return true;
}

SegmentIndex::NearestCursor SegmentIndex::nearest(const AcGePoint2d& p) const {
  auto state = std::make_unique<NearestCursor::State>();
  state->origin = Point(p.x, p.y);
  // Asking for every value makes the query incremental: nodes are opened only as the caller reads on.
  const std::size_t k = std::max<std::size_t>(mTree->rtree.size(), 1);
  state->it = mTree->rtree.qbegin(bgi::nearest(state->origin, static_cast<unsigned>(k)));
  state->end = mTree->rtree.qend();
  return NearestCursor(std::move(state));
}

std::size_t SegmentIndex::nearestSegment(const AcGePoint2d& p, const std::function<double(std::size_t)>& exactDistance,
                                         double* best) const {
  // Rounds of k nearest boxes, k growing until the farthest box read lies beyond the best exact
  // distance. An incremental query asked for every value cannot prune and reads the whole tree
  // before its first answer; a bounded k keeps a query near O(log n).
  std::size_t bestIndex = size();
  double bestDist = HUGE_VAL;
  const Point origin(p.x, p.y);
  thread_local std::vector<Value> hits;  // reused: one allocation per thread, not per query
  for (std::size_t k = 4;; k *= 4) {
    hits.clear();
    mTree->rtree.query(bgi::nearest(origin, static_cast<unsigned>(k)), std::back_inserter(hits));
    double farthest = 0.0;
    for (const Value& v : hits) {
      const double boxDist = bg::distance(origin, v.first);
      farthest = std::max(farthest, boxDist);
      // A little slack: box and exact distances round differently, and a shared vertex ties exactly.
      if (boxDist > bestDist * (1.0 + 1e-12)) continue;
      const double d = exactDistance(v.second);
      if (d < bestDist || (d == bestDist && v.second < bestIndex)) {
        bestDist = d;
        bestIndex = v.second;
      }
    }
    if (hits.size() < k || farthest > bestDist * (1.0 + 1e-12)) break;
  }
  if (best) *best = bestDist;
  return bestIndex;
}

}  // namespace tdhost::ge
