// The object arena and the allocation functions of arena-aware classes.
#include "object_arena.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <new>

namespace tdhost {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLargestBlock = std::size_t{64} << 20;
constexpr std::size_t kHeader = 16;  // keeps the object 16-byte aligned

thread_local ObjectArena* tCurrent = nullptr;

// Under AddressSanitizer every object comes from the heap, so that a use after free is caught.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kArenas = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kArenas = false;
#else
constexpr bool kArenas = true;
#endif
#else
constexpr bool kArenas = true;
#endif

}  // namespace

void ObjectArena::newBlock(std::size_t atLeast) {
  // Each block twice the last, so that a large drawing takes a few dozen at most.
  const std::size_t previous = mBlocks.empty() ? kHugePage / 2 : mBlocks.back().size;
  const std::size_t size = std::max(std::min(2 * previous, kLargestBlock), (atLeast + kHugePage - 1) & ~(kHugePage - 1));
  // Mapped with room to start on a huge-page boundary; the unused rest is never touched.
  void* base = ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base == MAP_FAILED) throw std::bad_alloc();
  mBlocks.push_back({base, size + kHugePage});
  const auto aligned = (reinterpret_cast<std::uintptr_t>(base) + kHugePage - 1) & ~(kHugePage - 1);
  ::madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);  // a hint only
  mNext = reinterpret_cast<char*>(aligned);
  mEnd = mNext + size;
}

void ObjectArena::release() {
  for (const Block& b : mBlocks) ::munmap(b.base, b.size);
  mBlocks.clear();
  mNext = mEnd = nullptr;
}

ArenaScope::ArenaScope(ObjectArena& arena) : mPrevious(tCurrent) { tCurrent = &arena; }

ArenaScope::~ArenaScope() { tCurrent = mPrevious; }

void* allocateObject(std::size_t bytes) {
  ObjectArena* arena = kArenas ? tCurrent : nullptr;
  char* p = static_cast<char*>(arena != nullptr ? arena->allocate(bytes + kHeader) : ::operator new(bytes + kHeader));
  *reinterpret_cast<ObjectArena**>(p) = arena;
  return p + kHeader;
}

void freeObject(void* p) noexcept {
  if (p == nullptr) return;
  char* start = static_cast<char*>(p) - kHeader;
  // Arena memory goes back with its arena.
  if (*reinterpret_cast<ObjectArena**>(start) == nullptr) ::operator delete(start);
}

}  // namespace tdhost
