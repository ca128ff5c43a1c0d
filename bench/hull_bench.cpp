// Convex hull of 1M points uniform in a square: ConvexHull::Hull against GEOSConvexHull_r.
#include "bench_support.h"

#include "TDUtilW.h"

#include <random>
#include <vector>

namespace {

struct PointCloud {
  std::vector<double> x, y;
};

const PointCloud& uniformSquare() {
  static const PointCloud cloud = [] {
    PointCloud c;
    std::mt19937_64 rng(bench::kSeed);
    std::uniform_real_distribution<double> coord(0.0, 1000.0);
    c.x.resize(bench::kItems);
    c.y.resize(bench::kItems);
    for (int i = 0; i < bench::kItems; ++i) {
      c.x[i] = coord(rng);
      c.y[i] = coord(rng);
    }
    return c;
  }();
  return cloud;
}

// Our hull's vertex count, computed once, so the GEOS run can check that both find the same hull.
int ourHullVertices() {
  static const int count = [] {
    PointCloud c = uniformSquare();
    ConvexHull hull;
    std::vector<int> indices;
    return hull.Hull(c.x.data(), c.y.data(), bench::kItems, indices);
  }();
  return count;
}

void hullOurs(benchmark::State& state) {
  // Hull takes mutable pointers; give it its own copy of the shared input.
  PointCloud c = uniformSquare();
  ConvexHull hull;
  std::vector<int> indices;
  const int expected = ourHullVertices();
  if (expected < 3) return bench::fail(state, "ConvexHull::Hull failed");
  for (auto _ : state) {
    const int count = hull.Hull(c.x.data(), c.y.data(), bench::kItems, indices);
    benchmark::DoNotOptimize(indices.data());
    benchmark::ClobberMemory();
    if (count != expected) return bench::fail(state, "ConvexHull::Hull gave a different hull on a rerun");
  }
  state.counters["time_per_point"] = bench::timePerItem(bench::kItems);
  state.counters["hull_vertices"] = expected;
}

void hullGeos(benchmark::State& state) {
  const PointCloud& c = uniformSquare();
  bench::GeosContext ctx;
  GEOSContextHandle_t h = ctx.get();
  std::vector<GEOSGeometry*> points(bench::kItems);
  for (int i = 0; i < bench::kItems; ++i) points[i] = GEOSGeom_createPointFromXY_r(h, c.x[i], c.y[i]);
  // The collection takes ownership of the points.
  const bench::GeosGeometry multiPoint(
      h, GEOSGeom_createCollection_r(h, GEOS_MULTIPOINT, points.data(), static_cast<unsigned>(points.size())));
  if (!multiPoint) return bench::fail(state, "GEOS MultiPoint construction failed");

  int vertices = 0;
  {
    const bench::GeosGeometry first(h, GEOSConvexHull_r(h, multiPoint.get()));
    if (!first) return bench::fail(state, "GEOSConvexHull_r failed");
    vertices = GEOSGetNumCoordinates_r(h, first.get()) - 1;  // the ring repeats its first vertex
  }
  if (vertices != ourHullVertices()) return bench::fail(state, "GEOS and ConvexHull disagree on the hull size");

  for (auto _ : state) {
    const bench::GeosGeometry result(h, GEOSConvexHull_r(h, multiPoint.get()));
    benchmark::DoNotOptimize(result.get());
    if (!result) return bench::fail(state, "GEOSConvexHull_r failed");
  }
  state.counters["time_per_point"] = bench::timePerItem(bench::kItems);
  state.counters["hull_vertices"] = vertices;
}

// GEOS needs well over a second per hull, so it gets one iteration per repetition.
BENCHMARK(hullOurs)->Name("hull_1M/ours")->Iterations(3)->Apply(bench::medianOfFive);
BENCHMARK(hullGeos)->Name("hull_1M/geos")->Iterations(1)->Apply(bench::medianOfFive);

}  // namespace
