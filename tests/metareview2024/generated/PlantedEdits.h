#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "support/MetaMaker.h"

namespace test {

/// Two metamodels that differ in nothing but what was planted, and what a review must find of it.
struct SPlanted {
  SModel client;
  SModel original;
  /// "PATH CHANGE RULE", in no order; without a base.
  std::vector<std::string> findings;
};

/// Plants edits into two metamodels that are the same: each in an element of its own.
class CPlanter {
 public:
  explicit CPlanter(SPlanted& planted) : planted_(planted) {}

  /// One of all edits, on any kind of element that can have it.
  void PlantAny();

 private:
  SPlanted& planted_;
  std::size_t count_ = 0;
};

}  // namespace test
