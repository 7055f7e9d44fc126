#pragma once

#include <chrono>
#include <optional>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// By when all loading of this process has to be done. There is no such time unless one is set. ReadFile() holds to it;
/// whoever else waits for data of others is to do so, too. Any thread may ask.
class KVXSPTFILE_EXPORT CLoadDeadline {
 public:
  using Clock = std::chrono::steady_clock;

  /// What is said when it is over.
  static constexpr const char* kOver = "the time allowed for loading is over";

  CLoadDeadline() = delete;

  /// The deadline is `limit` from now. Without one there is none any more.
  static void Set(std::optional<std::chrono::milliseconds> limit);
  static std::optional<Clock::time_point> Get();
  /// Whether the deadline is over.
  static bool IsOver();
};

}  // namespace kvx
