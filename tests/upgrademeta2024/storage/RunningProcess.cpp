#include "upgrademeta2024/storage/RunningProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace test {

CRunningProcess::CRunningProcess(std::vector<std::string> arguments) : child_(-1) {
  std::vector<char*> values;
  for (std::string& argument : arguments) {
    values.push_back(argument.data());
  }
  values.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
  }
  const int error = posix_spawn(&child_, values.front(), &actions, nullptr, values.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    throw std::runtime_error("cannot run " + arguments.front());
  }
}

CRunningProcess::~CRunningProcess() {
  Kill();
}

bool CRunningProcess::Kill() {
  if (child_ < 0) {
    return false;
  }
  kill(child_, SIGKILL);
  int status = 0;
  waitpid(child_, &status, 0);
  child_ = -1;
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

int CRunningProcess::Terminate() {
  kill(child_, SIGTERM);
  int status = 0;
  waitpid(child_, &status, 0);
  child_ = -1;
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

void CRunningProcess::Halt() const {
  kill(child_, SIGSTOP);
  int status = 0;
  waitpid(child_, &status, WUNTRACED);
}

void CRunningProcess::Resume() const {
  kill(child_, SIGCONT);
}

int CRunningProcess::Wait() {
  int status = 0;
  waitpid(child_, &status, 0);
  child_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace test
