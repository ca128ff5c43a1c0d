// Memory for the objects a drawing load makes: carved in order from large blocks that the
// kernel can back with huge pages, and given back all at once when the database is cleared
// or dies. A large drawing is hundreds of thousands of small objects; from the general heap
// each costs an allocation, and every 4 KB of them a page fault on first touch.
#pragma once

#include <cstddef>
#include <vector>

namespace tdhost {

class ObjectArena {
 public:
  ObjectArena() = default;
  ~ObjectArena() { release(); }
  ObjectArena(const ObjectArena&) = delete;
  ObjectArena& operator=(const ObjectArena&) = delete;

  // 16-byte aligned room for `bytes`; throws std::bad_alloc when the system has no memory.
  void* allocate(std::size_t bytes) {
    bytes = (bytes + 15) & ~std::size_t{15};
    if (static_cast<std::size_t>(mEnd - mNext) < bytes) newBlock(bytes);
    void* p = mNext;
    mNext += bytes;
    return p;
  }
  // Unmaps every block: nothing allocated from the arena may still be in use.
  void release();

 private:
  void newBlock(std::size_t atLeast);

  struct Block {
    void* base;
    std::size_t size;
  };
  std::vector<Block> mBlocks;
  char* mNext = nullptr;
  char* mEnd = nullptr;
};

// While one is alive, objects made on this thread come from `arena`.
class ArenaScope {
 public:
  explicit ArenaScope(ObjectArena& arena);
  ~ArenaScope();
  ArenaScope(const ArenaScope&) = delete;
  ArenaScope& operator=(const ArenaScope&) = delete;

 private:
  ObjectArena* mPrevious;
};

// For classes whose objects may come from an arena (database objects, their extended data,
// the stub table's nodes): a header before each object says whether it did, so that freeing
// one from the heap and one from an arena look the same to the caller.
void* allocateObject(std::size_t bytes);
void freeObject(void* p) noexcept;

// The same for standard containers.
template <class T>
struct ArenaAllocator {
  using value_type = T;
  ArenaAllocator() = default;
  template <class U>
  ArenaAllocator(const ArenaAllocator<U>&) {}
  T* allocate(std::size_t n) { return static_cast<T*>(allocateObject(n * sizeof(T))); }
  void deallocate(T* p, std::size_t) noexcept { freeObject(p); }
  template <class U>
  bool operator==(const ArenaAllocator<U>&) const { return true; }
};

}  // namespace tdhost
