// Point-array simplification: vertex reduction, then Douglas-Peucker, on 3D points.
#include "TDUtilW.h"

#include <memory>
#include <utility>
#include <vector>

namespace {

double d2(const double* a, const double* b) {
  const double dx = a[0] - b[0], dy = a[1] - b[1], dz = a[2] - b[2];
  return dx * dx + dy * dy + dz * dz;
}

// The points surviving both stages: w holds the reduced points, pos their input positions and
// marker a 1 for each point Douglas-Peucker keeps.
struct Reduction {
  std::unique_ptr<double[][3]> w;
  std::unique_ptr<int[]> pos;
  std::unique_ptr<int[]> marker;
  int k = 0;
  int kept = 0;
};

void reduceVertices(double t2, double (*pts)[3], int n, Reduction& r) {
  double(*w)[3] = r.w.get();
  int* pos = r.pos.get();
  auto append = [&](int i) {
    w[r.k][0] = pts[i][0];
    w[r.k][1] = pts[i][1];
    w[r.k][2] = pts[i][2];
    pos[r.k++] = i;
  };
  append(0);
  int last = 0;
  for (int i = 1; i < n; ++i) {
    if (d2(pts[i], pts[last]) < t2) continue;
    append(i);
    last = i;
  }
  if (last < n - 1) append(n - 1);  // the last point is always kept
}

// Splits (j, e) at its farthest point while that is farther than the tolerance. An explicit stack
// keeps pathological inputs (spirals) from exhausting the call stack; the marks do not depend on
// the order in which ranges are visited.
void douglasPeucker(double t2, const double (*w)[3], int k, int* marker) {
  marker[0] = 1;
  marker[k - 1] = 1;
  std::vector<std::pair<int, int>> ranges{{0, k - 1}};
  while (!ranges.empty()) {
    const auto [j, e] = ranges.back();
    ranges.pop_back();
    if (e <= j + 1) continue;
    const double ux = w[e][0] - w[j][0], uy = w[e][1] - w[j][1], uz = w[e][2] - w[j][2];
    const double cu = ux * ux + uy * uy + uz * uz;
    double maxD2 = 0.0;
    int farthest = j;
    for (int i = j + 1; i < e; ++i) {
      const double vx = w[i][0] - w[j][0], vy = w[i][1] - w[j][1], vz = w[i][2] - w[j][2];
      const double cw = vx * ux + vy * uy + vz * uz;
      double dist;
      if (cw <= 0.0) {
        dist = d2(w[i], w[j]);
      } else if (cw >= cu) {
        dist = d2(w[i], w[e]);
      } else {
        const double b = cw / cu;
        const double foot[3] = {w[j][0] + b * ux, w[j][1] + b * uy, w[j][2] + b * uz};
        dist = d2(w[i], foot);
      }
      if (dist > maxD2) {
        maxD2 = dist;
        farthest = i;
      }
    }
    if (maxD2 > t2) {
      marker[farthest] = 1;
      ranges.emplace_back(farthest, e);
      ranges.emplace_back(j, farthest);
    }
  }
}

Reduction simplify(double tol, double (*pts)[3], int n) {
  Reduction r;
  r.w.reset(new double[n][3]);
  r.pos.reset(new int[n]);
  r.marker.reset(new int[n]());
  const double t2 = tol * tol;
  reduceVertices(t2, pts, n, r);
  douglasPeucker(t2, r.w.get(), r.k, r.marker.get());
  for (int i = 0; i < r.k; ++i) r.kept += r.marker[i];
  return r;
}

}  // namespace

int SiteUtil::simplifyPolyline(double tol, double (*pts)[3], int n, double (*out)[3]) {
  if (n < 1) return 0;
  const Reduction r = simplify(tol, pts, n);
  int m = 0;
  for (int i = 0; i < r.k; ++i) {
    if (!r.marker[i]) continue;
    out[m][0] = r.w[i][0];
    out[m][1] = r.w[i][1];
    out[m][2] = r.w[i][2];
    ++m;
  }
  return m;
}

int SiteUtil::simplifyPolyline(double tol, double (*pts)[3], int n, int* keep) {
  if (n < 1) return 0;
  const Reduction r = simplify(tol, pts, n);
  for (int i = 0; i < r.k; ++i)
    if (r.marker[i]) keep[r.pos[i]] = 1;
  return r.kept;
}
