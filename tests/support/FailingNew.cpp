#include "support/FailingNew.h"

#include <cstdlib>
#include <new>

namespace {

/// How many calls are left until one fails; 0 when none is to.
std::size_t left = 0;

}  // namespace

// The operators for arrays, and those that do not throw, call these.
void* operator new(std::size_t size) {
  if (left > 0 && --left == 0) {
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

namespace test {

CFailingNew::CFailingNew(std::size_t number) {
  left = number;
}

CFailingNew::~CFailingNew() {
  left = 0;
}

bool CFailingNew::HasFailed() const {
  return left == 0;
}

}  // namespace test
