#include "kvxsptfile/LoadDeadline.h"

#include <atomic>

namespace kvx {
namespace {

using Clock = CLoadDeadline::Clock;

constexpr Clock::duration kNone = Clock::duration::max();

/// Since the clock's beginning.
std::atomic<Clock::duration> theDeadline{kNone};

}  // namespace

void CLoadDeadline::Set(std::optional<std::chrono::milliseconds> limit) {
  theDeadline = limit ? Clock::now().time_since_epoch() + *limit : kNone;
}

std::optional<Clock::time_point> CLoadDeadline::Get() {
  const Clock::duration deadline = theDeadline;
  return deadline == kNone ? std::nullopt : std::make_optional(Clock::time_point(deadline));
}

bool CLoadDeadline::IsOver() {
  return Clock::now().time_since_epoch() >= theDeadline.load();
}

}  // namespace kvx
