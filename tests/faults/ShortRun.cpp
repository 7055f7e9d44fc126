#include "faults/ShortRun.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;

/// The pipe's end for reading, then that for writing. Neither is one of the first numbers.
std::array<int, 2> MakePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("pipe failed");
  }
  for (int& end : ends) {
    constexpr int kFirst = 10;
    const int low = end;
    end = fcntl(low, F_DUPFD_CLOEXEC, kFirst);
    close(low);
  }
  return ends;
}

void Append(const std::string& path, int descriptor) {
  if (dup2(open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC), descriptor) < 0) {
    _exit(127);
  }
}

std::string Describe(const SShortage& shortage) {
  if (shortage.addresses != 0) {
    return std::to_string(shortage.addresses) + " bytes of addresses";
  }
  return "call " + std::to_string(shortage.at) + (shortage.onwards ? " and later ones" : "") + " of " +
         std::to_string(shortage.size) + " bytes at least";
}

}  // namespace

CShortRun::CShortRun(std::string directory, const std::vector<std::string>& arguments)
    : directory_(std::move(directory)), output_(streams_.File("output")), errors_(streams_.File("errors")) {
  std::vector<std::string> copies = arguments;
  copies.insert(copies.begin(), UPGRADESRV_EXECUTABLE);
  std::vector<char*> values;
  for (std::string& argument : copies) {
    values.push_back(argument.data());
  }
  values.push_back(nullptr);
  streams_.Write("output", "");
  streams_.Write("errors", "");
  const std::array<int, 2> requests = MakePipe();
  const std::array<int, 2> answers = MakePipe();
  server_ = fork();
  if (server_ < 0) {
    throw std::runtime_error("fork failed");
  }
  if (server_ == 0) {
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    Append(output_, STDOUT_FILENO);
    Append(errors_, STDERR_FILENO);
    dup2(requests[0], kShortageRequests);
    dup2(answers[1], kShortageAnswers);
    setenv("LD_PRELOAD", UPGRADESRV_SHORTAGE_PRELOAD, 1);
    setenv("UPGRADESRV_SHORTAGE_SERVER", "1", 1);
    execv(values.front(), values.data());
    _exit(127);
  }
  close(requests[0]);
  close(answers[1]);
  requests_ = requests[1];
  answers_ = answers[0];

  before_ = ReadFiles();
  const SShortAnswer whole = Ask({});
  wholeStatus_ = whole.status;
  const SProcessResult result = Result(whole);
  EXPECT_LT(result.status, 2) << result.errors;
  report_ = result.output;
  after_ = ReadFiles();
  Reset(after_);
}

CShortRun::~CShortRun() {
  close(requests_);
  close(answers_);
  waitpid(server_, nullptr, 0);
}

SShortAnswer CShortRun::Run(const SShortage& shortage) {
  SCOPED_TRACE(Describe(shortage));
  const SShortAnswer answer = Ask(shortage);
  const SProcessResult result = Result(answer);
  const Files files = ReadFiles();
  Reset(files);
  if (IsWhole(answer)) {
    EXPECT_TRUE(result.output == report_) << result.output;
    EXPECT_TRUE(files == after_);
    return answer;
  }
  // The loader of modules takes some failed allocations for a file that is not there.
  EXPECT_THAT(ErrorOf(result),
              AnyOf(HasSubstr("out of memory"), HasSubstr("Cannot allocate memory"), HasSubstr("cannot be loaded")));
  EXPECT_TRUE(result.output.empty() || result.output == report_) << result.output;
  for (const auto& [name, content] : files) {
    const auto before = before_.find(name);
    const auto after = after_.find(name);
    EXPECT_TRUE((before != before_.end() && content == before->second) ||
                (after != after_.end() && content == after->second))
        << name << " is torn or stray: " << content.substr(0, 100);
  }
  for (const auto& [name, content] : before_) {
    EXPECT_EQ(files.count(name), 1U) << name << " is gone";
  }
  return answer;
}

unsigned long CShortRun::CountCalls(EShortCall call, std::size_t size) {
  const SShortAnswer answer = Ask({call, 0, false, size, 0});
  EXPECT_TRUE(IsWhole(answer));
  Reset(ReadFiles());
  return answer.calls;
}

std::size_t CShortRun::CountAddresses() const {
  std::size_t pages = 0;
  std::ifstream("/proc/" + std::to_string(server_) + "/statm") >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

SShortAnswer CShortRun::Ask(const SShortage& shortage) {
  fs::resize_file(output_, 0);
  fs::resize_file(errors_, 0);
  SShortAnswer answer;
  if (write(requests_, &shortage, sizeof shortage) != sizeof shortage ||
      read(answers_, &answer, sizeof answer) != sizeof answer) {
    throw std::runtime_error("the executable cannot be started: " + ReadFile(errors_));
  }
  return answer;
}

CShortRun::Files CShortRun::ReadFiles() const {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(directory_)) {
    if (!entry.is_directory()) {
      files[entry.path().string().substr(directory_.size() + 1)] = ReadFile(entry.path());
    }
  }
  return files;
}

void CShortRun::Reset(const Files& files) const {
  for (const auto& [name, content] : files) {
    if (before_.count(name) == 0) {
      fs::remove(directory_ + "/" + name);
    }
  }
  for (const auto& [name, content] : before_) {
    if (const auto file = files.find(name); file == files.end() || file->second != content) {
      std::ofstream(directory_ + "/" + name, std::ios::binary) << content;
    }
  }
}

SProcessResult CShortRun::Result(const SShortAnswer& answer) const {
  constexpr int kSignaled = 128;
  const int status = WIFEXITED(answer.status) ? WEXITSTATUS(answer.status) : kSignaled + WTERMSIG(answer.status);
  return {status, ReadFile(output_), ReadFile(errors_)};
}

}  // namespace test
