#include "kvxsptjson/JsonAllocator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace {

using kvx::CJsonAllocator;

// More than any process can have. Not a constant: compilers warn of it.
const std::size_t tooMuch = std::numeric_limits<std::ptrdiff_t>::max();

TEST(JsonAllocatorTest, GivesMemoryThatKeepsItsContentWhenItGrows) {
  void* memory = CJsonAllocator::Malloc(6);
  ASSERT_NE(memory, nullptr);
  std::memcpy(memory, "hello", 6);
  memory = CJsonAllocator::Realloc(memory, 6, 100000);
  EXPECT_STREQ(static_cast<char*>(memory), "hello");
  CJsonAllocator::Free(memory);
}

TEST(JsonAllocatorTest, NothingIsANullPointer) {
  EXPECT_EQ(CJsonAllocator::Malloc(0), nullptr);
  EXPECT_EQ(CJsonAllocator::Realloc(CJsonAllocator::Malloc(1), 1, 0), nullptr);
  CJsonAllocator::Free(nullptr);
}

TEST(JsonAllocatorTest, ThrowsWhereThereIsNoMemory) {
  EXPECT_THROW(CJsonAllocator::Malloc(tooMuch), std::bad_alloc);
}

TEST(JsonAllocatorTest, MemoryThatCannotGrowStaysAsItIs) {
  void* const memory = CJsonAllocator::Malloc(6);
  std::memcpy(memory, "hello", 6);
  EXPECT_THROW(CJsonAllocator::Realloc(memory, 6, tooMuch), std::bad_alloc);
  EXPECT_STREQ(static_cast<char*>(memory), "hello");
  CJsonAllocator::Free(memory);
}

}  // namespace
