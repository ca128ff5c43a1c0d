#!/usr/bin/env bash
# Builds everything (installing what is missing) and runs the whole test suite.
# Usage: scripts/test.sh [BUILD_DIR] [extra cmake arguments...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
shift || true
"$top/scripts/setup.sh" "$build" "$@"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
