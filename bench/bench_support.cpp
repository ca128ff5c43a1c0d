// Failure tracking and the GEOS context for the records benchmarks.
#include "bench_support.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

namespace bench {

namespace {

std::atomic<bool> gFailed{false};

void geosMessage(const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  std::fputs("GEOS: ", stderr);
  std::vfprintf(stderr, format, args);
  std::fputc('\n', stderr);
  va_end(args);
}

}  // namespace

void fail(benchmark::State& state, const char* why) {
  gFailed = true;
  state.SkipWithError(why);
}

bool anyFailed() { return gFailed; }

GeosContext::GeosContext() : handle_(GEOS_init_r()) {
  GEOSContext_setErrorHandler_r(handle_, geosMessage);
}

GeosContext::~GeosContext() { GEOS_finish_r(handle_); }

}  // namespace bench
