// Database object costs: creating 1M xrecords (heap bytes per object) and open/close pairs.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <vector>

#include "arxHeaders.h"
#include "tdhost/undo.h"

namespace {

constexpr int kObjects = 1'000'000;

// Heap bytes in use (glibc); unlike RSS it also sees memory reused from an earlier iteration.
long heapBytes() { return static_cast<long>(mallinfo2().uordblks); }

std::vector<AcDbObjectId> fill(AcDbDatabase& db, int n) {
  std::vector<AcDbObjectId> ids;
  ids.reserve(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) {
    AcDbObjectId id;
    auto* rec = new AcDbXrecord;
    db.addAcDbObject(id, rec);
    rec->close();
    ids.push_back(id);
  }
  return ids;
}

void BM_Create1MXrecords(benchmark::State& state) {
  const bool undo = state.range(0) != 0;
  double bytesPerObject = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto db = std::make_unique<AcDbDatabase>(true, true);
    tdhost::undoController(*db).setRecording(undo);
    long before = heapBytes();
    state.ResumeTiming();
    auto ids = fill(*db, kObjects);
    state.PauseTiming();
    bytesPerObject = static_cast<double>(heapBytes() - before) / kObjects;
    benchmark::DoNotOptimize(ids.data());
    db.reset();
    state.ResumeTiming();
  }
  state.counters["bytes_per_object"] = bytesPerObject;
  state.counters["ns_per_object"] =
      benchmark::Counter(static_cast<double>(kObjects), benchmark::Counter::kIsIterationInvariantRate |
                                                            benchmark::Counter::kInvert);
}
BENCHMARK(BM_Create1MXrecords)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_OpenClosePair(benchmark::State& state) {
  const AcDb::OpenMode mode = state.range(0) ? AcDb::kForWrite : AcDb::kForRead;
  AcDbDatabase db(true, true);
  tdhost::undoController(db).setRecording(false);
  auto ids = fill(db, kObjects);
  size_t i = 0;
  for (auto _ : state) {
    AcDbObject* obj = nullptr;
    acdbOpenObject(obj, ids[i], mode);
    obj->close();
    if (++i == ids.size()) i = 0;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_OpenClosePair)->Arg(0)->Arg(1);

}  // namespace

BENCHMARK_MAIN();
