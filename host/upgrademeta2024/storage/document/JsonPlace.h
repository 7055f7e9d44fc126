#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// The place in a JSON document at which a reader is. The reader enters each member and item before it reads it and
/// leaves it afterwards; a reader that throws leaves the place where it failed.
class CJsonPlace {
 public:
  /// `key` must stay alive until the place is left. `where` is the member's or item's first character in the text.
  void Enter(std::string_view key, const char* where) { Push(key.data(), key.size(), where); }
  void Enter(std::size_t index, const char* where) { Push(nullptr, index, where); }
  void Leave() { --depth_; }

  /// As a JSON pointer (RFC 6901), control characters made visible; "/" for the root, so that a message always shows
  /// one.
  std::string ToPointer() const;

  /// The first character of what was entered last; null for the root.
  const char* Where() const { return depth_ == 0 ? nullptr : steps_[std::min(depth_, kMaxDepth) - 1].where; }

 private:
  // Reading enters and leaves a place for each member of each property; a step is three words that are stored where
  // they stay. Deeper places than any format's are cut off.
  struct SStep {
    const char* key;          // null for an item
    std::size_t sizeOrIndex;  // of the key, or of the item
    const char* where;
  };
  static constexpr std::size_t kMaxDepth = 16;

  void Push(const char* key, std::size_t sizeOrIndex, const char* where) {
    SStep& step = steps_[depth_ < kMaxDepth ? depth_ : kMaxDepth - 1];
    step.key = key;
    step.sizeOrIndex = sizeOrIndex;
    step.where = where;
    ++depth_;
  }

  std::array<SStep, kMaxDepth> steps_{};
  std::size_t depth_ = 0;
};
