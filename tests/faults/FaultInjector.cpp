// Preloaded into a process, makes some of its system calls fail. The environment says which:
//
//     UPGRADESRV_FAULTS=CALL:N:EFFECT[,…]     the N-th call of CALL; "N+" for it and every later one
//     UPGRADESRV_FAULT_REPORT=FILE            is created once a fault has happened
//
// EFFECT is the number of an errno, or
//     short    (write) only half is written, at least a byte
//     nothing  (write) nothing is written, without an error
//     kill     SIGKILL in place of the call
//     TERM     SIGTERM, or
//     INT      SIGINT before the call, which then succeeds

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

struct SFault {
  std::string call;
  int at = 0;
  bool onwards = false;
  std::string effect;
  // A run reads its two metamodels on two threads.
  std::unique_ptr<std::atomic<int>> seen = std::make_unique<std::atomic<int>>(0);
};

std::vector<SFault> ReadFaults() {
  std::vector<SFault> faults;
  const char* text = std::getenv("UPGRADESRV_FAULTS");
  std::istringstream list(text != nullptr ? text : "");
  for (std::string item; std::getline(list, item, ',');) {
    SFault fault;
    std::istringstream parts(item);
    std::string at;
    std::getline(parts, fault.call, ':');
    std::getline(parts, at, ':');
    std::getline(parts, fault.effect);
    fault.at = std::atoi(at.c_str());
    fault.onwards = at.back() == '+';
    faults.push_back(std::move(fault));
  }
  return faults;
}

/// Null until this library has been set up: allocators make system calls when they are first asked for memory, and must
/// not be asked for more of it meanwhile.
const std::vector<SFault>* theFaults = nullptr;

__attribute__((constructor)) void SetUp() {
  static const std::vector<SFault> faults = ReadFaults();
  theFaults = &faults;
}

template <typename Result, typename... Arguments>
class CCall {
 public:
  using Function = Result(Arguments...);

  explicit CCall(const char* name) : name_(name), real_(reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name))) {}

  Result Real(Arguments... arguments) const { return real_(arguments...); }

  /// Fails with an error, or kills the process, when it is this call's turn.
  Result operator()(Arguments... arguments) const {
    const std::string effect = Effect();
    return effect.empty() ? real_(arguments...) : Fail(effect);
  }

  Result Fail(const std::string& effect) const {
    errno = std::atoi(effect.c_str());
    return -1;
  }

  /// What happens to this call; empty for nothing.
  std::string Effect() const;

 private:
  const char* name_;
  Function* real_;
};

/// Whether an effect is a signal, which has been raised and has let this process live.
bool Raise(const std::string& effect) {
  struct SSignal {
    const char* effect;
    int number;
  };
  for (const SSignal& known : {SSignal{"kill", SIGKILL}, SSignal{"TERM", SIGTERM}, SSignal{"INT", SIGINT}}) {
    if (effect == known.effect) {
      static_cast<void>(raise(known.number));
      return true;
    }
  }
  return false;
}

void Report() {
  static const CCall<int, const char*, int, mode_t> realOpen("open");
  static const CCall<int, int> realClose("close");
  if (const char* path = std::getenv("UPGRADESRV_FAULT_REPORT"); path != nullptr) {
    realClose.Real(realOpen.Real(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
  }
}

template <typename Result, typename... Arguments>
std::string CCall<Result, Arguments...>::Effect() const {
  if (theFaults == nullptr) {
    return "";
  }
  for (const SFault& fault : *theFaults) {
    if (fault.call != name_) {
      continue;
    }
    const int seen = ++*fault.seen;
    if (seen == fault.at || (fault.onwards && seen > fault.at)) {
      Report();
      return Raise(fault.effect) ? "" : fault.effect;
    }
  }
  return "";
}

}  // namespace

// The functions take the place of the C library's.
#pragma GCC visibility push(default)
extern "C" {

int stat(const char* path, struct stat* status) noexcept {
  static const CCall<int, const char*, struct stat*> call("stat");
  return call(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
  static const CCall<int, const char*, struct stat*> call("lstat");
  return call(path, status);
}

int fstat(int descriptor, struct stat* status) noexcept {
  static const CCall<int, int, struct stat*> call("fstat");
  return call(descriptor, status);
}

ssize_t readlink(const char* path, char* target, std::size_t size) noexcept {
  static const CCall<ssize_t, const char*, char*, std::size_t> call("readlink");
  return call(path, target, size);
}

int open(const char* path, int flags, ...) {
  static const CCall<int, const char*, int, mode_t> call("open");
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  return call(path, flags, mode);
}

int flock(int descriptor, int operation) noexcept {
  static const CCall<int, int, int> call("flock");
  return call(descriptor, operation);
}

int fchmod(int descriptor, mode_t mode) noexcept {
  static const CCall<int, int, mode_t> call("fchmod");
  return call(descriptor, mode);
}

ssize_t read(int descriptor, void* data, std::size_t size) {
  static const CCall<ssize_t, int, void*, std::size_t> call("read");
  return call(descriptor, data, size);
}

ssize_t write(int descriptor, const void* data, std::size_t size) {
  static const CCall<ssize_t, int, const void*, std::size_t> call("write");
  const std::string effect = call.Effect();
  if (effect.empty() || effect == "short") {
    return call.Real(descriptor, data, effect.empty() || size < 2 ? size : size / 2);
  }
  return effect == "nothing" ? 0 : call.Fail(effect);
}

int fsync(int descriptor) {
  static const CCall<int, int> call("fsync");
  return call(descriptor);
}

int sync_file_range(int descriptor, off_t offset, off_t size, unsigned flags) {
  static const CCall<int, int, off_t, off_t, unsigned> call("sync_file_range");
  return call(descriptor, offset, size, flags);
}

int close(int descriptor) {
  static const CCall<int, int> call("close");
  const std::string effect = call.Effect();
  // The system closes a descriptor even when it answers with an error.
  const int result = call.Real(descriptor);
  return effect.empty() ? result : call.Fail(effect);
}

int rename(const char* from, const char* to) noexcept {
  static const CCall<int, const char*, const char*> call("rename");
  return call(from, to);
}

int unlink(const char* path) noexcept {
  static const CCall<int, const char*> call("unlink");
  return call(path);
}

}  // extern "C"
#pragma GCC visibility pop
