// Shared helpers for the records benchmarks: failure tracking, per-item counters, GEOS handles.
#pragma once

#include <benchmark/benchmark.h>
#include <geos_c.h>

namespace bench {

// Problem size of every benchmark: points for hull and simplification, pairs for tri-tri.
constexpr int kItems = 1'000'000;
// One seed for all inputs, so ours and the peer see identical data and runs repeat.
constexpr unsigned kSeed = 20240607u;

// Reports the error on the benchmark and makes the program exit non-zero.
void fail(benchmark::State& state, const char* why);
bool anyFailed();

// Time per item in seconds: the rate machinery divides items by elapsed time and the inversion
// turns that into time per item, which the console prints with an SI prefix (e.g. "214ns").
inline benchmark::Counter timePerItem(int items) {
  return benchmark::Counter(items, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Five repetitions reported as aggregates (median among them), in milliseconds; the caller fixes
// the iterations per repetition so that the whole program stays well under a minute.
inline void medianOfFive(benchmark::internal::Benchmark* b) {
  b->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
}

// A GEOS context for one benchmark run; the reentrant API takes it in every call.
class GeosContext {
 public:
  GeosContext();
  ~GeosContext();
  GeosContext(const GeosContext&) = delete;
  GeosContext& operator=(const GeosContext&) = delete;
  GEOSContextHandle_t get() const { return handle_; }

 private:
  GEOSContextHandle_t handle_;
};

// Owns one GEOS geometry (the C API hands ownership to the caller).
class GeosGeometry {
 public:
  GeosGeometry(GEOSContextHandle_t handle, GEOSGeometry* geometry) : handle_(handle), geometry_(geometry) {}
  ~GeosGeometry() {
    if (geometry_) GEOSGeom_destroy_r(handle_, geometry_);
  }
  GeosGeometry(const GeosGeometry&) = delete;
  GeosGeometry& operator=(const GeosGeometry&) = delete;
  const GEOSGeometry* get() const { return geometry_; }
  explicit operator bool() const { return geometry_ != nullptr; }

 private:
  GEOSContextHandle_t handle_;
  GEOSGeometry* geometry_;
};

}  // namespace bench
