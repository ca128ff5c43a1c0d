// Entity curve queries: stationing points against a long bulged lightweight polyline (closest
// point + distance at point), the same on straight segments against GEOS linear referencing
// (GEOSProject_r), and one cut line intersected with many short curves.
#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "arxHeaders.h"

namespace {

constexpr int kVertices = 10'000;
constexpr int kQueries = 100'000;
constexpr int kGeosQueries = 1'000;  // GEOS walks the whole line per query
constexpr int kCurves = 100'000;
constexpr unsigned kSeed = 20240607u;

struct Track {
  std::vector<AcGePoint2d> pts;
  std::vector<double> bulges;
};

// A meandering alignment: steps of 5..15 units, gentle turns; every other segment an arc.
Track makeTrack(bool bulged) {
  std::mt19937 rng(kSeed);
  std::uniform_real_distribution<double> step(5.0, 15.0), turn(-0.3, 0.3), bulge(-0.3, 0.3);
  Track t;
  AcGePoint2d p(500000.0, 6000000.0);
  double heading = 0.0;
  for (int i = 0; i < kVertices; ++i) {
    t.pts.push_back(p);
    t.bulges.push_back(bulged && i % 2 == 1 && i + 1 < kVertices ? bulge(rng) : 0.0);
    heading += turn(rng);
    p += AcGeVector2d(std::cos(heading), std::sin(heading)) * step(rng);
  }
  return t;
}

std::unique_ptr<AcDbPolyline> makePolyline(const Track& t) {
  auto pl = std::make_unique<AcDbPolyline>(kVertices);
  for (int i = 0; i < kVertices; ++i) pl->addVertexAt(static_cast<unsigned>(i), t.pts[i], t.bulges[i]);
  return pl;
}

// Query points near random vertices, up to 30 units off the line.
std::vector<AcGePoint3d> makeQueries(const Track& t, int n) {
  std::mt19937 rng(kSeed + 1);
  std::uniform_int_distribution<int> pick(0, kVertices - 1);
  std::uniform_real_distribution<double> off(-30.0, 30.0);
  std::vector<AcGePoint3d> q;
  for (int i = 0; i < n; ++i) {
    const AcGePoint2d& v = t.pts[pick(rng)];
    q.emplace_back(v.x + off(rng), v.y + off(rng), 0.0);
  }
  return q;
}

void station(benchmark::State& state, bool bulged) {
  const Track track = makeTrack(bulged);
  auto pl = makePolyline(track);
  const std::vector<AcGePoint3d> queries = makeQueries(track, kQueries);
  AcGePoint3d c;
  double d = 0;
  pl->getClosestPointTo(queries[0], c);  // builds the segment index once
  for (auto _ : state) {
    double sum = 0.0;
    for (const AcGePoint3d& q : queries) {
      if (pl->getClosestPointTo(q, c) != Acad::eOk || pl->getDistAtPoint(c, d) != Acad::eOk) {
        state.SkipWithError("station query failed");
        return;
      }
      sum += d;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["ns_per_query"] = benchmark::Counter(
      static_cast<double>(kQueries), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_StationBulgedPolyline(benchmark::State& state) { station(state, true); }
void BM_StationStraightPolyline(benchmark::State& state) { station(state, false); }

void BM_GeosProjectStraight(benchmark::State& state) {
  const Track track = makeTrack(false);
  const std::vector<AcGePoint3d> queries = makeQueries(track, kGeosQueries);
  GEOSContextHandle_t h = GEOS_init_r();
  GEOSCoordSequence* seq = GEOSCoordSeq_create_r(h, kVertices, 2);
  for (int i = 0; i < kVertices; ++i) GEOSCoordSeq_setXY_r(h, seq, static_cast<unsigned>(i), track.pts[i].x, track.pts[i].y);
  GEOSGeometry* line = GEOSGeom_createLineString_r(h, seq);
  std::vector<GEOSGeometry*> points;
  for (const AcGePoint3d& q : queries) points.push_back(GEOSGeom_createPointFromXY_r(h, q.x, q.y));
  for (auto _ : state) {
    double sum = 0.0;
    for (GEOSGeometry* p : points) sum += GEOSProject_r(h, line, p);
    benchmark::DoNotOptimize(sum);
  }
  state.counters["ns_per_query"] = benchmark::Counter(
      static_cast<double>(kGeosQueries), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  for (GEOSGeometry* p : points) GEOSGeom_destroy_r(h, p);
  GEOSGeom_destroy_r(h, line);
  GEOS_finish_r(h);
}

void BM_CutLineIntersectWith(benchmark::State& state) {
  std::mt19937 rng(kSeed + 2);
  std::uniform_real_distribution<double> where(0.0, 10000.0), angle(0.0, 6.283185307179586), len(1.0, 20.0);
  std::vector<std::unique_ptr<AcDbCurve>> curves;
  for (int i = 0; i < kCurves; ++i) {
    const AcGePoint3d p(where(rng), where(rng), 0.0);
    if (i % 2 == 0) {
      const double a = angle(rng), l = len(rng);
      curves.push_back(std::make_unique<AcDbLine>(p, p + AcGeVector3d(std::cos(a), std::sin(a), 0.0) * l));
    } else {
      const double a = angle(rng);
      curves.push_back(std::make_unique<AcDbArc>(p, len(rng) / 2, a, a + 1.5));
    }
  }
  AcDbLine cut(AcGePoint3d(0, 0, 0), AcGePoint3d(10000, 10000, 0));
  int hits = 0;
  for (auto _ : state) {
    AcGePoint3dArray pts;
    for (const auto& c : curves) cut.intersectWith(c.get(), AcDb::kOnBothOperands, pts);
    hits = pts.length();
    benchmark::DoNotOptimize(hits);
  }
  state.counters["hits"] = hits;
  state.counters["ns_per_query"] = benchmark::Counter(
      static_cast<double>(kCurves), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(BM_StationBulgedPolyline)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StationStraightPolyline)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_GeosProjectStraight)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_CutLineIntersectWith)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
