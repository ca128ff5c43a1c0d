// 1M triangle pairs through SiteUtil::TriTriItersect3d (no comparable GEOS operation).
#include "bench_support.h"

#include "TDUtilW.h"

#include <random>
#include <vector>

namespace {

// Half-width of the range of centroid offsets; corners spread +-1 about the centroid. Pairs with
// a common centroid always intersect, and 0.5 leaves about half of them intersecting, so both
// outcomes of the test are exercised in an unpredictable order.
constexpr double kOffset = 0.5;

struct TriPair {
  double v[3][3];
  double u[3][3];
};

// Moves the triangle so that its centroid lies at c.
void centre(double t[3][3], const double c[3]) {
  for (int k = 0; k < 3; ++k) {
    const double shift = c[k] - (t[0][k] + t[1][k] + t[2][k]) / 3.0;
    for (int i = 0; i < 3; ++i) t[i][k] += shift;
  }
}

const std::vector<TriPair>& trianglePairs() {
  static const std::vector<TriPair> pairs = [] {
    std::vector<TriPair> p(bench::kItems);
    std::mt19937_64 rng(bench::kSeed);
    std::uniform_real_distribution<double> place(0.0, 100.0);
    std::uniform_real_distribution<double> corner(-1.0, 1.0);
    std::uniform_real_distribution<double> offset(-kOffset, kOffset);
    for (TriPair& t : p) {
      double c[3], d[3];
      for (int k = 0; k < 3; ++k) {
        c[k] = place(rng);
        d[k] = c[k] + offset(rng);
      }
      for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 3; ++k) {
          t.v[i][k] = corner(rng);
          t.u[i][k] = corner(rng);
        }
      }
      centre(t.v, c);
      centre(t.u, d);
    }
    return p;
  }();
  return pairs;
}

int countIntersecting(std::vector<TriPair>& pairs) {
  int hits = 0;
  int coplanar = 0;
  double isect1[3], isect2[3];
  for (TriPair& t : pairs)
    hits += SiteUtil::TriTriItersect3d(t.v[0], t.v[1], t.v[2], t.u[0], t.u[1], t.u[2], &coplanar, isect1, isect2);
  return hits;
}

void triTriOurs(benchmark::State& state) {
  // The test takes mutable pointers; give it its own copy of the shared input.
  std::vector<TriPair> pairs = trianglePairs();
  const int hits = countIntersecting(pairs);
  for (auto _ : state) {
    const int count = countIntersecting(pairs);
    benchmark::DoNotOptimize(count);
    if (count != hits) return bench::fail(state, "TriTriItersect3d gave a different result on a rerun");
  }
  state.counters["time_per_pair"] = bench::timePerItem(bench::kItems);
  state.counters["intersect_fraction"] = static_cast<double>(hits) / bench::kItems;
}

BENCHMARK(triTriOurs)->Name("tri_tri_1M/ours")->Iterations(3)->Apply(bench::medianOfFive);

}  // namespace
