#include <csignal>

#include "upgradesrv/CommandLine.h"

int main(int argumentCount, char** arguments) {
  // A full disk or a closed pipe is then an error of the write, which is reported, and not the end of the process.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  return upgradesrv::RunCommandLine(argumentCount, arguments);
}
