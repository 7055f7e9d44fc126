#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "upgradesrv/CommandLine.h"
#include "upgradesrv/EndBySignal.h"
#include "upgradesrv/LastResort.h"

namespace {

/// A standard stream that the caller has closed gives its number to the next file opened, which would then receive the
/// report. A number that is taken, but cannot be written to, makes the write fail instead.
bool OccupyClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) == -1 && open("/dev/null", O_RDONLY) != stream) {
      return false;
    }
  }
  return true;
}

/// Called before the libraries are set up, of which some throw where memory is short.
[[gnu::section(".preinit_array"), gnu::used]] void (*const beforeLibraries)() = &upgradesrv::ExitOnTerminate;

}  // namespace

/// Read by jemalloc, where the tool allocates with it: what has been freed goes back to the system within a second
/// instead of ten. A run in which everything differs would hold a tenth more.
extern "C" {
[[gnu::visibility("default")]] extern const char* const malloc_conf;
const char* const malloc_conf = "dirty_decay_ms:1000";
}

int main(int argumentCount, char** arguments) {
  if (!OccupyClosedStreams()) {
    return upgradesrv::kTrouble;
  }
  upgradesrv::EndBySignals();
  // A full disk or a closed pipe is then an error of the write, which is reported, and not the end of the process.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  return upgradesrv::RunCommandLine(argumentCount, arguments);
}
