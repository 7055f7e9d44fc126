#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The place in a JSON document at which a reader stands. The reader enters each member and item before it reads it and
/// leaves it afterwards; a reader that throws leaves the place where it failed.
class CJsonPlace {
 public:
  /// `key` must stay alive until the place is left.
  void Enter(std::string_view key) { steps_.push_back({key, 0, true}); }
  void Enter(std::size_t index) { steps_.push_back({{}, index, false}); }
  void Leave() { steps_.pop_back(); }

  /// As a JSON pointer (RFC 6901), control characters made visible; "/" for the root, so that a message always shows
  /// one.
  std::string ToPointer() const;

 private:
  struct SStep {
    std::string_view key;
    std::size_t index;
    bool isKey;
  };
  std::vector<SStep> steps_;
};
