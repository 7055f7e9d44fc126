// Preloaded into a process, denies it memory or threads. The environment says when:
//
//     UPGRADESRV_SHORTAGE=CALL:N:SIZE         the N-th call of CALL for at least SIZE bytes; "N+" for it and every
//                                             later one
//     UPGRADESRV_SHORTAGE_REPORT=FILE         is created once a call has failed
//
// CALL is
//     allocate  malloc and its kin, operator new
//     map       mmap of memory
//     thread    pthread_create, of any SIZE

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

/// Read in place: what is asked for memory cannot ask for some itself.
struct SShortage {
  const char* call = nullptr;
  unsigned long at = 0;
  bool onwards = false;
  std::size_t size = 0;
};

SShortage ReadShortage() {
  SShortage shortage;
  const char* text = std::getenv("UPGRADESRV_SHORTAGE");
  const char* colon = text != nullptr ? std::strchr(text, ':') : nullptr;
  if (colon == nullptr) {
    return shortage;
  }
  char* end = nullptr;
  shortage.at = std::strtoul(colon + 1, &end, 10);
  shortage.onwards = *end == '+';
  end = std::strchr(end, ':');
  shortage.size = end != nullptr ? std::strtoul(end + 1, nullptr, 10) : 0;
  shortage.call = text;
  return shortage;
}

bool IsSetUp() {
  // The loader asks for memory before there is an environment.
  return environ != nullptr;
}

std::atomic<unsigned long> seen{0};

/// Whether it is this call's turn to fail.
bool Fails(const char* call, std::size_t size) {
  if (!IsSetUp()) {
    return false;
  }
  static const SShortage shortage = ReadShortage();
  if (shortage.call == nullptr || size < shortage.size || std::strncmp(shortage.call, call, std::strlen(call)) != 0) {
    return false;
  }
  const unsigned long number = ++seen;
  if (number != shortage.at && (!shortage.onwards || number < shortage.at)) {
    return false;
  }
  if (const char* path = std::getenv("UPGRADESRV_SHORTAGE_REPORT"); path != nullptr) {
    const int error = errno;
    close(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    errno = error;
  }
  return true;
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
  if (Fails("allocate", size)) {
    throw std::bad_alloc();
  }
  return real(size, arguments...);
}

}  // namespace

// The functions stand in place of the C library's, the allocator's and the C++ library's.
#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) noexcept {
  static CReal<void*, std::size_t> real("malloc");
  return Fails("allocate", size) ? Denied() : real(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  static CReal<void*, std::size_t, std::size_t> real("calloc");
  return Fails("allocate", count * size) ? Denied() : real(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  static CReal<void*, void*, std::size_t> real("realloc");
  return Fails("allocate", size) ? Denied() : real(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  static CReal<void*, std::size_t, std::size_t> real("aligned_alloc");
  return Fails("allocate", size) ? Denied() : real(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
  static CReal<int, void**, std::size_t, std::size_t> real("posix_memalign");
  return Fails("allocate", size) ? ENOMEM : real(memory, alignment, size);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int descriptor, off_t offset) noexcept {
  static CReal<void*, void*, std::size_t, int, int, int, off_t> real("mmap");
  if ((flags & MAP_ANONYMOUS) != 0 && Fails("map", size)) {
    errno = ENOMEM;
    return MAP_FAILED;
  }
  return real(address, size, protection, flags, descriptor, offset);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*), void* argument) {
  static CReal<int, pthread_t*, const pthread_attr_t*, void* (*)(void*), void*> real("pthread_create");
  return Fails("thread", 0) ? EAGAIN : real(thread, attributes, start, argument);
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
