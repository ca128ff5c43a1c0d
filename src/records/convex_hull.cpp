// ConvexHull: Graham's scan over a shared point table, result as input indices.
#include "TDUtilW.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>

tPointStructure* ConvexHull::P = nullptr;
int ConvexHull::PN = 0;

namespace {

// The pivot of the current sort (P[0]); the table is shared and single-threaded anyway.
tPointStructure* gPivot = nullptr;

// Angular order around the pivot; of two points on one ray from the pivot the nearer sorts first
// and is marked omitted. Coincident points compare equal and stay unmarked.
inline int compareAroundPivot(tPointStructure* a, tPointStructure* b) {
  const int s = ConvexHull::AreaSign(gPivot->xy, a->xy, b->xy);
  if (s > 0) return -1;
  if (s < 0) return 1;
  const double dx = std::fabs(a->xy[0] - gPivot->xy[0]) - std::fabs(b->xy[0] - gPivot->xy[0]);
  const double dy = std::fabs(a->xy[1] - gPivot->xy[1]) - std::fabs(b->xy[1] - gPivot->xy[1]);
  if (dx < 0 || dy < 0) {
    a->omitted = true;
    return -1;
  }
  if (dx > 0 || dy > 0) {
    b->omitted = true;
    return 1;
  }
  return 0;
}

// Merges the sorted runs [b1, b1 + left) and [b2, b2 + right) into out, taking from the first run
// on ties (stable).
void merge(tPointStructure* b1, size_t left, tPointStructure* b2, size_t right, tPointStructure* out) {
  while (left > 0 && right > 0) {
    // Branch-free on the usual, non-collinear case: the merge decision is unpredictable.
    const double area = ConvexHull::Area2(gPivot->xy, b1->xy, b2->xy);
    const bool takeFirst = area != 0.0 ? area > 0.0 : compareAroundPivot(b1, b2) <= 0;
    const tPointStructure* from = takeFirst ? b1 : b2;
    *out++ = *from;
    b1 += takeFirst;
    left -= takeFirst;
    b2 += !takeFirst;
    right -= !takeFirst;
  }
  out = std::copy(b1, b1 + left, out);
  std::copy(b2, b2 + right, out);
}

// Top-down merge sort with the C library's split (first half n/2) and merge order -- glibc's qsort
// is this merge sort for tables like ours -- so the comparisons, and with them the omission marks,
// are the same, while the comparison is inlined and the two buffers swap roles level by level
// instead of copying back. Sorts src[0, n) into dst; both hold the same elements on entry.
void mergeSortInto(tPointStructure* src, tPointStructure* dst, size_t n) {
  if (n <= 1) return;
  const size_t n1 = n / 2;
  mergeSortInto(dst, src, n1);
  mergeSortInto(dst + n1, src + n1, n - n1);
  merge(src, n1, src + n1, n - n1, dst);
}

void sortAroundPivot(tPointStructure* table, int count) {
  const size_t n = static_cast<size_t>(count);
  std::unique_ptr<tPointStructure[]> scratch(new tPointStructure[n]);
  std::copy(table, table + n, scratch.get());
  mergeSortInto(scratch.get(), table, n);
}

}  // namespace

ConvexHull::~ConvexHull() {
  delete[] P;
  P = nullptr;
}

double ConvexHull::Area2(double* a, double* b, double* c) {
  return (c[1] - a[1]) * (b[0] - a[0]) - (b[1] - a[1]) * (c[0] - a[0]);
}

int ConvexHull::AreaSign(double* a, double* b, double* c) {
  const double area = Area2(a, b, c);
  if (area > 0.0) return 1;
  return area < 0.0 ? -1 : 0;
}

bool ConvexHull::Left(double* a, double* b, double* c) { return Area2(a, b, c) > 0.0; }

int ConvexHull::Hull(std::vector<SurvPoint>& pts, std::vector<int>& hull) {
  const int n = static_cast<int>(pts.size());
  if (n < 1) return -1;
  try {
    delete[] P;
    P = new (std::nothrow) tPointStructure[static_cast<size_t>(n)];
    if (!P) return -1;
    PN = n;
    for (int i = 0; i < n; ++i) P[i] = {i, {pts[static_cast<size_t>(i)].x, pts[static_cast<size_t>(i)].y}, false};
    return run(hull);
  } catch (...) {
    return -1;
  }
}

int ConvexHull::Hull(double* x, double* y, int n, std::vector<int>& hull) {
  if (n < 1) return -1;
  try {
    delete[] P;
    P = new (std::nothrow) tPointStructure[static_cast<size_t>(n)];
    if (!P) return -1;
    PN = n;
    for (int i = 0; i < n; ++i) P[i] = {i, {x[i], y[i]}, false};
    return run(hull);
  } catch (...) {
    return -1;
  }
}

int ConvexHull::run(std::vector<int>& hull) {
  hull.clear();
  if (PN <= 2) {
    for (int i = 0; i < PN; ++i) hull.push_back(i);
    return PN;
  }
  FindLowest();
  gPivot = &P[0];
  sortAroundPivot(&P[1], PN - 1);

  tStackCell* top = Graham();
  if (!top) return -1;
  // The stack holds the hull from its last vertex down to the pivot.
  std::vector<const tPointStructure*> vertices;
  for (; top; top = Pop(top))
    if (!top->point->omitted) vertices.push_back(top->point);
  std::reverse(vertices.begin(), vertices.end());
  // The second point is pushed without a turn test and may lie on the first edge.
  if (vertices.size() >= 3 &&
      SiteUtil::CCW(vertices[0]->xy[0], vertices[0]->xy[1], vertices[1]->xy[0], vertices[1]->xy[1],
                    vertices[2]->xy[0], vertices[2]->xy[1]) != 1)
    vertices.erase(vertices.begin() + 1);
  for (const tPointStructure* v : vertices) hull.push_back(v->index);
  return static_cast<int>(hull.size());
}

void ConvexHull::FindLowest() {
  int m = 0;
  for (int i = 1; i < PN; ++i)
    if (P[i].xy[1] < P[m].xy[1] || (P[i].xy[1] == P[m].xy[1] && P[i].xy[0] > P[m].xy[0])) m = i;
  Swap(0, m);
}

tStackCell* ConvexHull::Graham() {
  tStackCell* top = Push(&P[0], nullptr);
  if (!top) return nullptr;
  int count = 1;
  int i = 1;
  while (i < PN) {
    if (count > 2 && !Left(top->below->point->xy, top->point->xy, P[i].xy)) {
      top = Pop(top);
      --count;
      continue;
    }
    tStackCell* next = Push(&P[i], top);
    if (!next) {
      while (top) top = Pop(top);
      return nullptr;
    }
    top = next;
    ++count;
    ++i;
  }
  return top;
}

tStackCell* ConvexHull::Push(tPointStructure* p, tStackCell* top) {
  auto* cell = static_cast<tStackCell*>(std::malloc(sizeof(tStackCell)));
  if (!cell) return nullptr;
  cell->point = p;
  cell->below = top;
  return cell;
}

tStackCell* ConvexHull::Pop(tStackCell* top) {
  tStackCell* below = top->below;
  std::free(top);
  return below;
}

void ConvexHull::Swap(int i, int j) {
  if (i == j) return;
  const tPointStructure t = P[i];
  P[i] = P[j];
  P[j] = t;
}

void ConvexHull::Copy(int from, int to) { P[to] = P[from]; }
