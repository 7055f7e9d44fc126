#include "kvxsptfile/UnfinishedFile.h"

#include <unistd.h>

#include <array>
#include <atomic>

namespace kvx {
namespace {

/// More than are ever written at once. What finds no slot is left to the next CTemporaryFile of its target.
constexpr std::size_t kSlots = 64;

std::array<std::atomic<const char*>, kSlots> slots{};

}  // namespace

CUnfinishedFile::CUnfinishedFile(const std::string& path) noexcept {
  const auto isTaken = [&path](std::atomic<const char*>& slot) {
    const char* none = nullptr;
    return !slot.compare_exchange_strong(none, path.c_str());
  };
  while (slot_ < kSlots && isTaken(slots[slot_])) {
    ++slot_;
  }
}

CUnfinishedFile::~CUnfinishedFile() {
  if (slot_ < kSlots) {
    slots[slot_] = nullptr;
  }
}

void CUnfinishedFile::RemoveAll() noexcept {
  for (const std::atomic<const char*>& slot : slots) {
    if (const char* path = slot; path != nullptr) {
      unlink(path);
    }
  }
}

}  // namespace kvx
