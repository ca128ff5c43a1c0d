// Simplification of a 1M-point random walk: SiteUtil::simplifyPolyline against GEOSSimplify_r.
#include "bench_support.h"

#include "TDUtilW.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

namespace {

// Unit steps; the tolerance is a few of them, so most points go.
constexpr double kTolerance = 3.0;

struct Walk {
  std::unique_ptr<double[][3]> pts;
};

// Plan walk with unit steps in uniform directions; with3d adds an elevation walk on top (the 2D
// comparison keeps z = 0 because GEOS measures plan distances and ours space distances).
Walk randomWalk(bool with3d) {
  Walk w{std::unique_ptr<double[][3]>(new double[bench::kItems][3])};
  std::mt19937_64 rng(bench::kSeed);
  std::uniform_real_distribution<double> angle(0.0, 2.0 * std::numbers::pi);
  std::normal_distribution<double> rise(0.0, 0.5);
  double x = 0.0, y = 0.0, z = 0.0;
  for (int i = 0; i < bench::kItems; ++i) {
    w.pts[i][0] = x;
    w.pts[i][1] = y;
    w.pts[i][2] = z;
    const double a = angle(rng);
    x += std::cos(a);
    y += std::sin(a);
    if (with3d) z += rise(rng);
  }
  return w;
}

const Walk& planWalk() {
  static const Walk w = randomWalk(false);
  return w;
}

const Walk& spaceWalk() {
  static const Walk w = randomWalk(true);
  return w;
}

void simplifyOurs(benchmark::State& state, const Walk& walk) {
  std::unique_ptr<double[][3]> out(new double[bench::kItems][3]);
  const int kept = SiteUtil::simplifyPolyline(kTolerance, walk.pts.get(), bench::kItems, out.get());
  if (kept < 2) return bench::fail(state, "simplifyPolyline kept fewer than two points");
  for (auto _ : state) {
    const int count = SiteUtil::simplifyPolyline(kTolerance, walk.pts.get(), bench::kItems, out.get());
    benchmark::DoNotOptimize(out.get());
    benchmark::ClobberMemory();
    if (count != kept) return bench::fail(state, "simplifyPolyline gave a different result on a rerun");
  }
  state.counters["time_per_point"] = bench::timePerItem(bench::kItems);
  state.counters["kept"] = kept;
}

void simplifyOurs2d(benchmark::State& state) { simplifyOurs(state, planWalk()); }
void simplifyOurs3d(benchmark::State& state) { simplifyOurs(state, spaceWalk()); }

// GEOS runs Douglas-Peucker alone over every point; ours first drops points within tol of the last
// kept one, so its Douglas-Peucker sees far fewer points and the kept counts differ.
void simplifyGeos(benchmark::State& state) {
  const Walk& walk = planWalk();
  bench::GeosContext ctx;
  GEOSContextHandle_t h = ctx.get();
  std::vector<double> xy(2 * static_cast<size_t>(bench::kItems));
  for (int i = 0; i < bench::kItems; ++i) {
    xy[2 * i] = walk.pts[i][0];
    xy[2 * i + 1] = walk.pts[i][1];
  }
  GEOSCoordSequence* seq = GEOSCoordSeq_copyFromBuffer_r(h, xy.data(), bench::kItems, 0, 0);
  if (!seq) return bench::fail(state, "GEOS coordinate sequence construction failed");
  // The line string takes ownership of the sequence.
  const bench::GeosGeometry line(h, GEOSGeom_createLineString_r(h, seq));
  if (!line) return bench::fail(state, "GEOS LineString construction failed");

  int kept = 0;
  {
    const bench::GeosGeometry first(h, GEOSSimplify_r(h, line.get(), kTolerance));
    if (!first) return bench::fail(state, "GEOSSimplify_r failed");
    kept = GEOSGetNumCoordinates_r(h, first.get());
  }
  for (auto _ : state) {
    const bench::GeosGeometry result(h, GEOSSimplify_r(h, line.get(), kTolerance));
    benchmark::DoNotOptimize(result.get());
    if (!result) return bench::fail(state, "GEOSSimplify_r failed");
  }
  state.counters["time_per_point"] = bench::timePerItem(bench::kItems);
  state.counters["kept"] = kept;
}

BENCHMARK(simplifyOurs2d)->Name("simplify_1M_z0/ours")->Iterations(3)->Apply(bench::medianOfFive);
BENCHMARK(simplifyGeos)->Name("simplify_1M_z0/geos")->Iterations(3)->Apply(bench::medianOfFive);
BENCHMARK(simplifyOurs3d)->Name("simplify_1M_3d/ours")->Iterations(3)->Apply(bench::medianOfFive);

}  // namespace
