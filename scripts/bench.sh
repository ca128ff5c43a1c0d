#!/usr/bin/env bash
# Configures a Release build with the benchmarks in build-bench, builds them and runs them.
# Extra arguments go to the benchmark program (e.g. --benchmark_filter=hull).
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-bench"

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTDUTILW_BENCH=ON -DTDUTILW_TESTS=OFF
# Only the benchmark and what it links: the rest of the tree need not build for a measurement.
cmake --build "$build" --target records_bench
"$build/bench/records_bench" "$@"
