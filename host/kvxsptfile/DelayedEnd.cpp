#include "kvxsptfile/DelayedEnd.h"

#include <atomic>
#include <csignal>

namespace kvx {
namespace {

std::atomic<int> works{0};
/// 0 for none.
std::atomic<int> waitingSignal{0};

}  // namespace

CDelayedEnd::CDelayedEnd() noexcept {
  ++works;
}

CDelayedEnd::~CDelayedEnd() {
  if (--works == 0) {
    if (const int number = waitingSignal.exchange(0); number != 0) {
      static_cast<void>(std::raise(number));
    }
  }
}

bool CDelayedEnd::IsWaitedFor() noexcept {
  return waitingSignal != 0;
}

bool CDelayedEnd::Delay(int number) noexcept {
  if (works == 0) {
    return false;
  }
  waitingSignal = number;
  return true;
}

}  // namespace kvx
