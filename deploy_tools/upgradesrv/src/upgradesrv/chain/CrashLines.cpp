#include "upgradesrv/chain/CrashLines.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>

#include "upgradesrv/Output.h"

namespace upgradesrv {
namespace {

struct SCrash {
  int number;
  const char* name;
};

constexpr std::array<SCrash, 7> kCrashes = {{{SIGABRT, "SIGABRT"},
                                             {SIGBUS, "SIGBUS"},
                                             {SIGFPE, "SIGFPE"},
                                             {SIGILL, "SIGILL"},
                                             {SIGSEGV, "SIGSEGV"},
                                             {SIGSYS, "SIGSYS"},
                                             {SIGTRAP, "SIGTRAP"}}};

/// What each signal has to do and to say, made beforehand: a handler may ask for no memory.
std::array<struct sigaction, kCrashes.size()> earlierActions;
std::array<std::string, kCrashes.size()> lines;

/// Room for the handler when the stack is used up.
constexpr std::size_t kStackSize = 65536;
std::array<char, kStackSize> handlerStack;

void NameCrash(int number) {
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    if (kCrashes[i].number == number) {
      static_cast<void>(write(STDERR_FILENO, lines[i].data(), lines[i].size()) < 0);
      sigaction(number, &earlierActions[i], nullptr);
    }
  }
  // Comes about as this returns, and finds the process where it crashed.
  static_cast<void>(std::raise(number));
}

void UseOwnStack() {
  stack_t stack{};
  // A sanitizer has brought its own.
  if (sigaltstack(nullptr, &stack) == 0 && (static_cast<unsigned>(stack.ss_flags) & SS_DISABLE) != 0) {
    stack = {};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    sigaltstack(&stack, nullptr);
  }
}

}  // namespace

CCrashLines::CCrashLines(const std::string& name) {
  UseOwnStack();
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    lines[i] = ErrorLine(std::string("it crashed with ") + kCrashes[i].name + " (" + name + ")");
    struct sigaction action {};
    action.sa_handler = NameCrash;
    action.sa_flags = SA_ONSTACK;
    sigaction(kCrashes[i].number, &action, &earlierActions[i]);
  }
}

CCrashLines::~CCrashLines() {
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    sigaction(kCrashes[i].number, &earlierActions[i], nullptr);
  }
}

}  // namespace upgradesrv
