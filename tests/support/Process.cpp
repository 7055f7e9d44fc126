#include "support/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "support/TemporaryDirectory.h"

namespace test {
namespace {

void Redirect(const std::string& path, int flags, int descriptor) {
  const int opened = open(path.c_str(), flags, 0600);
  if (opened < 0 || dup2(opened, descriptor) < 0) {
    _exit(127);
  }
}

}  // namespace

SProcessResult Run(const std::vector<std::string>& arguments, const std::string& workingDirectory) {
  // Files, not pipes: neither stream can block the process while the other is read.
  const CTemporaryDirectory streams;
  const std::string output = streams.File("output");
  const std::string errors = streams.File("errors");
  std::vector<std::string> copies = arguments;
  std::vector<char*> argumentValues;
  argumentValues.reserve(copies.size() + 1);
  for (std::string& argument : copies) {
    argumentValues.push_back(argument.data());
  }
  argumentValues.push_back(nullptr);

  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("fork failed");
  }
  if (child == 0) {
    Redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    Redirect(output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    Redirect(errors, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
    if (!workingDirectory.empty() && chdir(workingDirectory.c_str()) != 0) {
      _exit(127);
    }
    execv(argumentValues.front(), argumentValues.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), ReadFile(output), ReadFile(errors)};
}

}  // namespace test
