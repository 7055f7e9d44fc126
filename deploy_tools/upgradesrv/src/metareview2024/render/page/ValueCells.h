#pragma once

#include <string>
#include <vector>

#include "metareview2024/Finding.h"
#include "metareview2024/words/Words.h"

namespace metareview::page {

/// What one side has: the text before, in and after what is marked as changed.
struct SValueCell {
  /// "base", "original" or "client".
  std::string side;
  std::string before;
  std::string marked;
  std::string after;
  /// Whether it is a word, like "absent", and not a value.
  bool isWord = false;
};

/// For base (only if there is one), original and client, in this order. With a base, what a side changed is marked;
/// without one, what differs.
std::vector<SValueCell> ValueCells(const CWords& words, const SFinding& finding, bool hasBase);

}  // namespace metareview::page
