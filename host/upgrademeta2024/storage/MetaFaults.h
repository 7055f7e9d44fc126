#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"

/// What is wrong with a metamodel.
struct SMetaFaults {
  /// The words for that many are kept.
  static constexpr std::size_t kMaxWords = 100;

  /// What is wrong, each with its location and place, in the order in which they were found.
  std::vector<std::string> words;
  std::size_t count = 0;
  /// False when the last fault has ended the reading: what comes after it was not looked at.
  bool isWhole = true;
};

/// Takes the faults that the readers of storages find in a metamodel's content. Loading ends with the first one; a
/// check keeps them, and its reader goes on with whatever comes next.
class CFaultTaker {
 public:
  /// Ends the reading with the first fault.
  CFaultTaker() = default;
  /// Keeps the faults.
  explicit CFaultTaker(SMetaFaults& kept) : kept_(&kept) {}

  /// `words()` is called when somebody wants to read them. Throws CKVXException (kvx::kMalformedDocument) where the
  /// fault ends the reading.
  template <typename Words>
  void Take(const Words& words) {
    if (kept_ == nullptr) {
      throw CKVXException(kvx::kMalformedDocument, words());
    }
    if (kept_->words.size() < SMetaFaults::kMaxWords) {
      kept_->words.push_back(words());
    }
    ++kept_->count;
  }

 private:
  SMetaFaults* kept_ = nullptr;
};
