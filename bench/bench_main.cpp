// Entry point of records_bench: like BENCHMARK_MAIN, but exits non-zero when a benchmark failed.
#include "bench_support.h"

#include <geos_c.h>

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::AddCustomContext("geos_version", GEOSversion());
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return bench::anyFailed() ? 1 : 0;
}
