#pragma once

#include <cstddef>

namespace test {

enum class EShortCall { kNone, kAllocate, kThread };

/// What a run is denied.
struct SShortage {
  EShortCall call = EShortCall::kNone;
  /// Which of the calls fails, counted from 1.
  unsigned long at = 0;
  /// Every later one fails, too.
  bool onwards = false;
  /// Calls for fewer bytes are neither counted nor failed.
  std::size_t size = 0;
  /// The limit of the bytes of addresses; 0 for none.
  std::size_t addresses = 0;
};

/// How a run has ended.
struct SShortAnswer {
  /// As waitpid gives it.
  int status = 0;
  /// How many calls of the kind and size it has made.
  unsigned long calls = 0;
  /// Whether any of them was failed.
  bool failed = false;
};

/// Descriptors of a process that ShortageInjector.cpp has stopped before main: it reads an SShortage for each run, and
/// writes an SShortAnswer.
constexpr int kShortageRequests = 3;
constexpr int kShortageAnswers = 4;

}  // namespace test
