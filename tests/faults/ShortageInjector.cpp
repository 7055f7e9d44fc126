// Preloaded into a process, denies it memory or threads. SShortage says what, when.
//
//     UPGRADESRV_SHORTAGE=CALL:N:SIZE         the N-th call of CALL for at least SIZE bytes; "N+" for it and every
//                                             later one
//     UPGRADESRV_SHORTAGE_REPORT=FILE         is created once a call has failed
//     UPGRADESRV_SHORTAGE_SERVER=1            the process stops before main, and is copied for each run asked for
//
// CALL is
//     allocate  malloc and its kin, operator new
//     thread    pthread_create, of any SIZE

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "faults/Shortage.h"

namespace {

using test::EShortCall;
using test::SShortage;

constexpr std::array<const char*, 3> kCallNames = {"none", "allocate", "thread"};

/// Read in place: what is asked for memory cannot ask for some itself.
SShortage ReadShortage() {
  SShortage shortage;
  const char* text = std::getenv("UPGRADESRV_SHORTAGE");
  const char* colon = text != nullptr ? std::strchr(text, ':') : nullptr;
  if (colon == nullptr) {
    return shortage;
  }
  for (std::size_t i = 0; i < kCallNames.size(); ++i) {
    if (std::strncmp(text, kCallNames[i], std::strlen(kCallNames[i])) == 0) {
      shortage.call = static_cast<EShortCall>(i);
    }
  }
  char* end = nullptr;
  shortage.at = std::strtoul(colon + 1, &end, 10);
  shortage.onwards = *end == '+';
  end = std::strchr(end, ':');
  shortage.size = end != nullptr ? std::strtoul(end + 1, nullptr, 10) : 0;
  return shortage;
}

bool IsSetUp() {
  // The loader asks for memory before there is an environment.
  return environ != nullptr;
}

SShortage& Current() {
  static SShortage shortage = ReadShortage();
  return shortage;
}

struct SSeen {
  std::atomic<unsigned long> calls{0};
  std::atomic<bool> failed{false};
};

SSeen ownSeen;
/// Shared with the parent of a copied process.
SSeen* seen = &ownSeen;

/// Whether it is this call's turn to fail.
bool Fails(EShortCall call, std::size_t size) {
  if (!IsSetUp()) {
    return false;
  }
  const SShortage& shortage = Current();
  if (shortage.call != call || size < shortage.size) {
    return false;
  }
  const unsigned long number = ++seen->calls;
  if (number != shortage.at && (!shortage.onwards || number < shortage.at)) {
    return false;
  }
  seen->failed = true;
  if (const char* path = std::getenv("UPGRADESRV_SHORTAGE_REPORT"); path != nullptr) {
    const int error = errno;
    close(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    errno = error;
  }
  return true;
}

/// The process that is to run goes on from here, with what it is denied in place.
void BeginRun(const SShortage& shortage) {
  close(test::kShortageRequests);
  close(test::kShortageAnswers);
  // A run that waits for ever is ended by a signal.
  alarm(60);
  Current() = shortage;
  if (shortage.addresses != 0) {
    const rlimit limit = {shortage.addresses, shortage.addresses};
    if (setrlimit(RLIMIT_AS, &limit) != 0) {
      _exit(99);
    }
  }
}

[[gnu::constructor]] void Serve() {
  if (std::getenv("UPGRADESRV_SHORTAGE_SERVER") == nullptr) {
    return;
  }
  void* const shared = mmap(nullptr, sizeof(SSeen), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) {
    _exit(98);
  }
  SShortage shortage;
  while (read(test::kShortageRequests, &shortage, sizeof shortage) == sizeof shortage) {
    seen = new (shared) SSeen;
    const pid_t run = fork();
    if (run == 0) {
      BeginRun(shortage);
      return;
    }
    test::SShortAnswer answer;
    if (run < 0 || waitpid(run, &answer.status, 0) != run) {
      _exit(97);
    }
    answer.calls = seen->calls;
    answer.failed = seen->failed;
    static_cast<void>(write(test::kShortageAnswers, &answer, sizeof answer) < 0);
  }
  _exit(0);
}

template <typename Result, typename... Arguments>
class CReal {
 public:
  explicit constexpr CReal(const char* name) : name_(name) {}

  Result operator()(Arguments... arguments) {
    if (function_ == nullptr) {
      function_ = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name_));
    }
    return function_(arguments...);
  }

 private:
  using Function = Result(Arguments...);

  const char* name_;
  Function* function_ = nullptr;
};

void* Denied() {
  errno = ENOMEM;
  return nullptr;
}

template <typename... Arguments>
void* New(CReal<void*, std::size_t, Arguments...>& real, std::size_t size, Arguments... arguments) {
  if (Fails(EShortCall::kAllocate, size)) {
    if (const std::new_handler handler = std::get_new_handler(); handler != nullptr) {
      handler();
    }
    throw std::bad_alloc();
  }
  return real(size, arguments...);
}

}  // namespace

// The functions take the place of the C library's, the allocator's and the C++ library's.
#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) noexcept {
  static CReal<void*, std::size_t> real("malloc");
  return Fails(EShortCall::kAllocate, size) ? Denied() : real(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  static CReal<void*, std::size_t, std::size_t> real("calloc");
  return Fails(EShortCall::kAllocate, count * size) ? Denied() : real(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  static CReal<void*, void*, std::size_t> real("realloc");
  return Fails(EShortCall::kAllocate, size) ? Denied() : real(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  static CReal<void*, std::size_t, std::size_t> real("aligned_alloc");
  return Fails(EShortCall::kAllocate, size) ? Denied() : real(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
  static CReal<int, void**, std::size_t, std::size_t> real("posix_memalign");
  return Fails(EShortCall::kAllocate, size) ? ENOMEM : real(memory, alignment, size);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
  static CReal<int, pthread_t*, const pthread_attr_t*, void* (*)(void*), void*> real("pthread_create");
  return Fails(EShortCall::kThread, 0) ? EAGAIN : real(thread, attributes, start, argument);
}

}  // extern "C"

void* operator new(std::size_t size) {
  static CReal<void*, std::size_t> real("_Znwm");
  return New(real, size);
}

void* operator new[](std::size_t size) {
  static CReal<void*, std::size_t> real("_Znam");
  return New(real, size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
  return malloc(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
  return malloc(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  static CReal<void*, std::size_t, std::align_val_t> real("_ZnwmSt11align_val_t");
  return New(real, size, alignment);
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
  static CReal<void*, std::size_t, std::align_val_t> real("_ZnamSt11align_val_t");
  return New(real, size, alignment);
}
#pragma GCC visibility pop
