#pragma once

#include <cstdint>
#include <vector>

namespace bench {

/// Marks a fixed number of items in each block of consecutive items, at random places within the block. So the shares
/// are exact at every size, and the marks of an item do not depend on what comes after it.
class CStratifiedPick {
 public:
  /// Mark i + 1 goes to `counts[i]` items of each block; the rest gets mark 0.
  CStratifiedPick(std::uint32_t seed, std::uint32_t stream, std::uint32_t blockSize,
                  const std::vector<std::uint32_t>& counts);

  /// The mark of an item. Cheap for indices that ascend.
  std::uint32_t At(std::uint64_t index);

 private:
  void Shuffle(std::uint32_t block);

  std::uint32_t seed_;
  std::uint32_t stream_;
  std::uint32_t current_ = 0;
  std::vector<std::uint32_t> sorted_;
  std::vector<std::uint32_t> marks_;
};

}  // namespace bench
