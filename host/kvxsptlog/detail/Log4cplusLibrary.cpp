#include "kvxsptlog/detail/Log4cplusLibrary.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <exception>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
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

/// Throws what the library throws while it is loaded. dlopen is declared to throw nothing, and compilers that see it
/// called look for nobody who catches.
void* Load(const std::string& path) {
  void* (*const volatile load)(const char*, int) = &dlopen;
  return load(path.c_str(), RTLD_NOW | RTLD_LOCAL);
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
bool CanBeLoaded(const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    std::set_terminate([] { _exit(1); });
    try {
      // Why it was refused, if it was, is found out by the process that needs it.
      static_cast<void>(Load(path));
    } catch (...) {
      _exit(1);
    }
    _exit(0);
  }
  return child > 0 && EndsWell(child);
}

/// Of the directory in which this library is.
std::string LibraryPath() {
  Dl_info self{};
  static_cast<void>(dladdr(reinterpret_cast<const void*>(&LibraryPath), &self));
  const std::string path = self.dli_fname != nullptr ? self.dli_fname : "";
  return path.substr(0, path.rfind('/') + 1) + kLibrary;
}

Opener* LoadLibrary(const std::string& propertiesFile) {
  const std::string path = LibraryPath();
  if (!CanBeLoaded(path)) {
    Fail(propertiesFile,
         "log4cplus, which the file configures, cannot be started; it needs 4 threads and some memory: allow more");
  }
  // Never unloaded: its threads, and what it does at the end of the process, need it.
  void* library = Load(path);
  void* opener = library != nullptr ? dlsym(library, kOpener) : nullptr;
  if (opener == nullptr) {
    const char* error = dlerror();
    Fail(propertiesFile, "log4cplus, which the file configures, cannot be loaded: " +
                             std::string(error != nullptr ? error : "unknown error of the loader") +
                             "; install the host's libraries as a whole");
  }
  // POSIX wants a pointer to a function to be readable from what dlsym returns.
  return reinterpret_cast<Opener*>(opener);
}

}  // namespace

std::unique_ptr<CLogDestination> OpenLog4cplus(const std::string& propertiesFile) {
  static Opener* const opener = LoadLibrary(propertiesFile);
  return std::unique_ptr<CLogDestination>(opener(propertiesFile));
}

}  // namespace kvx
