#!/usr/bin/env bash
# The main job: builds tdutil and runs it on the bundled demonstration data and on a real
# survey drawing from ../shared/samples when it is there.
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

# The same library on a real drawing: the survey points of a topographic plan from another
# program, bounded and drawn back into the drawing through the embedded host.
sample="$top/../shared/samples/topo_survey_autocad_map_AC1024.dxf"
if [ -f "$sample" ]; then
  echo
  echo "== Boundary of the survey points of $(basename "$sample")"
  mkdir -p "$top/build/demo"
  "$tdutil" boundary "$sample" -o "$top/build/demo/topo_boundary.dxf"
fi
