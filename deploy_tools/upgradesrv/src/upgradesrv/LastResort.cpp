#include "upgradesrv/LastResort.h"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>

#include "kvxsptfile/UnfinishedFile.h"
#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/chain/RunningStrategy.h"

namespace upgradesrv {
namespace {

std::atomic<bool> memoryRanOut{false};

void OnNoMemory() {
  memoryRanOut = true;
  throw std::bad_alloc();
}

void WriteCurrentException() {
  // Where a function that must not throw does, the exception cannot always be asked for.
  if (memoryRanOut) {
    WriteOutOfMemory();
    return;
  }
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

void ExitOnTerminate() {
  std::set_new_handler(&OnNoMemory);
  std::set_terminate([] {
    try {
      WriteCurrentException();
    } catch (const std::exception&) {
      WriteOutOfMemory();
    }
    kvx::CUnfinishedFile::RemoveAll();
    std::_Exit(kTrouble);
  });
}

}  // namespace upgradesrv
