#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// The place in a JSON document at which a reader stands. The reader enters each member and item before it reads it and
/// leaves it afterwards; a reader that throws leaves the place where it failed.
class CJsonPlace {
 public:
  /// `key` must stay alive until the place is left.
  void Enter(std::string_view key) { Push(key.data(), key.size()); }
  void Enter(std::size_t index) { Push(nullptr, index); }
  void Leave() { --depth_; }

  /// As a JSON pointer (RFC 6901), control characters made visible; "/" for the root, so that a message always shows
  /// one.
  std::string ToPointer() const;

 private:
  // Reading enters and leaves a place for each member of each property; a step is two words that are stored where they
  // stay. Deeper places than any format's are cut off.
  struct SStep {
    const char* key;          // null for an item
    std::size_t sizeOrIndex;  // of the key, or of the item
  };
  static constexpr std::size_t kMaxDepth = 16;

  void Push(const char* key, std::size_t sizeOrIndex) {
    SStep& step = steps_[depth_ < kMaxDepth ? depth_ : kMaxDepth - 1];
    step.key = key;
    step.sizeOrIndex = sizeOrIndex;
    ++depth_;
  }

  std::array<SStep, kMaxDepth> steps_{};
  std::size_t depth_ = 0;
};
