#include "generator/StratifiedPick.h"

#include <utility>

#include "generator/Random.h"

namespace bench {

CStratifiedPick::CStratifiedPick(std::uint32_t seed, std::uint32_t stream, std::uint32_t blockSize,
                                 const std::vector<std::uint32_t>& counts)
    : seed_(seed), stream_(stream) {
  std::uint32_t mark = 0;
  for (const std::uint32_t count : counts) {
    sorted_.insert(sorted_.end(), count, ++mark);
  }
  sorted_.resize(blockSize, 0);
  Shuffle(0);
}

std::uint32_t CStratifiedPick::At(std::uint64_t index) {
  if (const auto block = static_cast<std::uint32_t>(index / marks_.size()); block != current_) {
    Shuffle(block);
  }
  return marks_[index % marks_.size()];
}

void CStratifiedPick::Shuffle(std::uint32_t block) {
  current_ = block;
  marks_ = sorted_;
  CRandom random(seed_, stream_, block);
  for (auto left = static_cast<std::uint32_t>(marks_.size()); left > 1; --left) {
    std::swap(marks_[left - 1], marks_[random.Below(left)]);
  }
}

}  // namespace bench
