#include "kvxsptlog/detail/Log4cplusLibrary.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <exception>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/OwnLibrary.h"
#include "kvxsptlog/LogDestination.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

using Opener = CLogDestination*(const std::string&);

constexpr const char* kLibrary = "libkvxsptlog4cplus.so";
constexpr const char* kOpener = "OpenLog4cplusDestination";
/// Loading takes some milliseconds.
constexpr std::chrono::seconds kPatience{5};

[[noreturn]] void Fail(const std::string& propertiesFile, const std::string& problem) {
  throw CKVXException(kFileError, CStringHelper::ToVisible(propertiesFile + ": " + problem) +
                                      ", or remove the file to log on standard error");
}

/// Whether a child process ends with status 0 before patience does. It cannot time itself: log4cplus blocks all signals
/// while it starts a thread.
bool EndsWell(pid_t child) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  int status = -1;
  for (pid_t ended = 0; ended != child; ended = waitpid(child, &status, WNOHANG)) {
    if (ended < 0 && errno != EINTR) {
      return false;
    }
    if (std::chrono::steady_clock::now() > deadline) {
      kill(child, SIGKILL);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return status == 0;
}

/// Whether a process of its own can load the library.
bool CanBeLoaded() {
  const pid_t child = fork();
  if (child == 0) {
    std::set_terminate([] { _exit(1); });
    try {
      static_cast<void>(FindInOwnLibrary(kLibrary, kOpener));
    } catch (const CKVXException&) {
      // Why it was refused is found out by the process that needs it.
      _exit(0);
    } catch (...) {
      _exit(1);
    }
    _exit(0);
  }
  return child > 0 && EndsWell(child);
}

Opener* LoadLibrary(const std::string& propertiesFile) {
  if (!CanBeLoaded()) {
    Fail(propertiesFile,
         "log4cplus, which the file configures, cannot be started; it needs 4 threads and some memory: allow more");
  }
  try {
    // POSIX wants a pointer to a function to be readable from what dlsym returns.
    return reinterpret_cast<Opener*>(FindInOwnLibrary(kLibrary, kOpener));
  } catch (const CKVXException& failure) {
    Fail(propertiesFile, std::string("log4cplus, which the file configures: ") + failure.what());
  }
}

}  // namespace

std::unique_ptr<CLogDestination> OpenLog4cplus(const std::string& propertiesFile) {
  static Opener* const opener = LoadLibrary(propertiesFile);
  return std::unique_ptr<CLogDestination>(opener(propertiesFile));
}

}  // namespace kvx
