#include "upgradesrv/LastResort.h"

#include <cstdlib>
#include <exception>
#include <new>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/chain/RunningStrategy.h"

namespace upgradesrv {
namespace {

void WriteCurrentException() {
  const std::exception_ptr current = std::current_exception();
  if (current == nullptr) {
    WriteError(CRunningStrategy::Named("unexpected failure"));
    return;
  }
  try {
    std::rethrow_exception(current);
  } catch (const std::bad_alloc&) {
    WriteOutOfMemory();
  } catch (const std::exception& error) {
    WriteError(CRunningStrategy::Named(error.what()));
  } catch (...) {
    WriteError(CRunningStrategy::Named("unexpected failure"));
  }
}

}  // namespace

void ExitOnTerminate() noexcept {
  std::set_terminate([] {
    try {
      WriteCurrentException();
    } catch (const std::exception&) {
      WriteOutOfMemory();
    }
    std::_Exit(kTrouble);
  });
}

}  // namespace upgradesrv
