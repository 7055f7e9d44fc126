#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace kvx {

/// Where RapidJSON gets its memory from. Throws std::bad_alloc where there is none: RapidJSON's own allocator hands on
/// a null pointer, which is used without a look.
class CJsonAllocator {
 public:
  // What RapidJSON asks of an allocator.
  static constexpr bool kNeedFree = true;

  static void* Malloc(std::size_t size) { return size == 0 ? nullptr : Given(std::malloc(size)); }
  static void* Realloc(void* memory, std::size_t /*oldSize*/, std::size_t newSize) {
    if (newSize == 0) {
      Free(memory);
      return nullptr;
    }
    return Given(std::realloc(memory, newSize));
  }
  static void Free(void* memory) { std::free(memory); }

 private:
  static void* Given(void* memory) {
    if (memory == nullptr) {
      throw std::bad_alloc();
    }
    return memory;
  }
};

}  // namespace kvx
