#pragma once

#include <cstdint>
#include <random>

namespace bench {

/// A sequence that depends on the three numbers only, the same with every standard library; std::shuffle and the
/// distributions are not.
class CRandom {
 public:
  CRandom(std::uint32_t seed, std::uint32_t stream, std::uint32_t index) {
    std::seed_seq sequence{seed, stream, index};
    engine_.seed(sequence);
  }

  /// From 0 to below `end`, which is not 0.
  std::uint32_t Below(std::uint32_t end) { return static_cast<std::uint32_t>(engine_() % end); }

 private:
  std::mt19937_64 engine_;
};

}  // namespace bench
