#include "upgradesrv/EndBySignal.h"

#include <pthread.h>

#include <csignal>
#include <initializer_list>

#include "kvxsptfile/DelayedEnd.h"
#include "kvxsptfile/UnfinishedFile.h"
#include "upgradesrv/ProgressLine.h"

namespace upgradesrv {
namespace {

pthread_t commandThread;

void End(int number) {
  // Files are made by the thread of the command, and must not be made while they are removed.
  if (pthread_equal(pthread_self(), commandThread) == 0) {
    pthread_kill(commandThread, number);
    return;
  }
  if (kvx::CDelayedEnd::Delay(number)) {
    return;
  }
  kvx::CUnfinishedFile::RemoveAll();
  CProgressLine::Erase();
  static_cast<void>(std::signal(number, SIG_DFL));
  // Comes about as this returns.
  static_cast<void>(std::raise(number));
}

}  // namespace

void EndBySignals() noexcept {
  commandThread = pthread_self();
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) {
      continue;
    }
    action = {};
    action.sa_handler = End;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask);
    sigaction(number, &action, nullptr);
  }
}

}  // namespace upgradesrv
