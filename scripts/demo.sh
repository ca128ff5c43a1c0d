#!/usr/bin/env bash
# The main job: builds tdutil and runs it on the bundled demonstration data.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/setup.sh" "$top/build" >/dev/null
tdutil="$top/build/cli/tdutil"
data="$top/examples/data"

echo "== Boundary of a topographic pick-up (convex hull of $(grep -c '^[0-9]' "$data/site_points.csv") survey points)"
"$tdutil" hull --points "$data/site_points.csv"

rows=$(grep -c '^[0-9]' "$data/road_centreline.csv")
echo
echo "== Road centreline thinned to 5 cm ($rows GNSS vertices)"
kept=$("$tdutil" simplify --tolerance 0.05 "$data/road_centreline.csv")
echo "$kept"
echo "kept $(echo "$kept" | wc -l) of $rows vertices"
