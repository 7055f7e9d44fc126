#pragma once

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Work that undoes itself when a signal asks the process to end, and must not be cut off before it has. While one
/// exists, such a signal waits; the work looks at IsWaitedFor() and gives up. To be made and ended by the thread that
/// the signals come to.
class KVXSPTFILE_EXPORT CDelayedEnd {
 public:
  CDelayedEnd() noexcept;
  /// Raises a signal that has waited.
  ~CDelayedEnd();
  CDelayedEnd(const CDelayedEnd&) = delete;
  CDelayedEnd& operator=(const CDelayedEnd&) = delete;

  static bool IsWaitedFor() noexcept;

  /// For the handler of a signal: whether the signal waits now.
  static bool Delay(int number) noexcept;
};

}  // namespace kvx
