#include "kvxsptfile/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/LoadDeadline.h"
#include "kvxsptfile/OpeningProblem.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

const char* KindOf(mode_t mode) {
  switch (mode & S_IFMT) {
    case S_IFDIR:
      return "a directory";
    case S_IFIFO:
      return "a pipe";
    case S_IFSOCK:
      return "a socket";
    default:
      return "a device";
  }
}

/// In milliseconds.
constexpr int kLongestPoll = std::numeric_limits<int>::max();

std::string Seconds(std::chrono::milliseconds time) {
  const auto milliseconds = time.count();
  if (milliseconds % 1000 != 0) {
    return std::to_string(milliseconds) + " milliseconds";
  }
  return std::to_string(milliseconds / 1000) + (milliseconds == 1000 ? " second" : " seconds");
}

}  // namespace

CInputFile::CInputFile(const std::string& path, bool mayBePipe, const SPipeWait& wait)
    : path_(path),
      // Opening a pipe would wait for a writer, opening a terminal might make it this process's.
      file_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)),
      wait_(wait) {
  struct stat status {};
  if (!file_.IsOpen() || fstat(file_.Get(), &status) != 0) {
    // What open(2) says of sockets and of devices without a driver.
    Fail(errno == ENXIO ? "is not a regular file" : OpeningProblem(path, errno));
  }
  isPipe_ = S_ISFIFO(status.st_mode);
  if (!S_ISREG(status.st_mode) && !(isPipe_ && mayBePipe)) {
    Fail(std::string("is ") + KindOf(status.st_mode) + ", not a regular file" + (mayBePipe ? " or a pipe" : ""));
  }
  size_ = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
}

void CInputFile::Fail(const std::string& reason) const {
  throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": cannot be read: " + reason);
}

bool CInputFile::HasDataBy(Clock::time_point end) const {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd pipe{file_.Get(), POLLIN, 0};
    const int events = poll(&pipe, 1, static_cast<int>(std::clamp<decltype(left)>(left, 0, kLongestPoll)));
    if (events < 0 && errno != EINTR) {
      Fail(std::strerror(errno));
    }
    if (events > 0 || left <= 0) {
      return events > 0;
    }
  }
}

std::size_t CInputFile::Read(char* data, std::size_t size) {
  const auto deadline = CLoadDeadline::Get();
  const Clock::time_point begin = Clock::now();
  Clock::time_point patience = deadline.value_or(begin + wait_.writer);
  for (;;) {
    const bool inTime = isPipe_ ? HasDataBy(patience) : !CLoadDeadline::IsOver();
    if (deadline && !inTime) {
      Fail(std::string(CLoadDeadline::kOver) + "; allow more time");
    }
    const ssize_t count = read(file_.Get(), data, size);
    if (count > 0 || (count == 0 && inTime)) {
      return static_cast<std::size_t>(count);
    }
    if (count == 0) {
      // With a writer, reading too early would be an error.
      Fail("no program has opened this pipe for writing within " + Seconds(wait_.writer));
    }
    if (isPipe_ && errno == EAGAIN) {
      if (Clock::now() >= begin + wait_.data) {
        Fail("the program that writes to this pipe has been silent for " + Seconds(wait_.data));
      }
      patience = begin + wait_.data;
    } else if (errno != EINTR) {
      Fail(std::strerror(errno));
    }
  }
}

}  // namespace kvx
