#include "kvxsptfile/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

class CReadDescriptor {
 public:
  explicit CReadDescriptor(const std::string& path) : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~CReadDescriptor() {
    if (descriptor_ >= 0) {
      close(descriptor_);
    }
  }
  CReadDescriptor(const CReadDescriptor&) = delete;
  CReadDescriptor& operator=(const CReadDescriptor&) = delete;

  int Get() const { return descriptor_; }

 private:
  int descriptor_;
};

[[noreturn]] void FailReading(const std::string& path, int error) {
  throw CKVXException(kFileError, CStringHelper::ToVisible(path) + ": cannot be read: " + std::strerror(error));
}

}  // namespace

std::string ReadFile(const std::string& path, std::size_t padding, const ReadObserver& observer) {
  const CReadDescriptor file(path);
  struct stat status {};
  if (file.Get() < 0 || fstat(file.Get(), &status) != 0) {
    FailReading(path, errno);
  }
  constexpr std::size_t kBlock = 65536;
  std::string text;
  // The size is only a hint: pipes have none, and a file may grow while it is read.
  const auto size = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
  text.reserve(size + padding + 1);
  for (;;) {
    const std::size_t old = text.size();
    if (text.capacity() - old <= padding) {
      text.reserve(text.capacity() * 2 + kBlock);
    }
    const std::size_t room = std::min(text.capacity() - old - padding, kBlock * 16);
    text.resize(old + room);
    ssize_t count = 0;
    do {
      count = read(file.Get(), &text[old], room);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
      FailReading(path, errno);
    }
    text.resize(old + static_cast<std::size_t>(count));
    if (observer) {
      observer(text.size(), size);
    }
    if (count == 0) {
      // Whoever reads in blocks looks at the padding, too, and shall not find there what the memory held before.
      text.resize(old + padding);
      text.resize(old);
      return text;
    }
  }
}

std::string LineAndColumn(const char* text, std::size_t offset) {
  std::size_t line = 1;
  std::size_t column = 1;
  for (std::size_t i = 0; i < offset; ++i) {
    const bool continuation = (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else if (!continuation) {
      ++column;
    }
  }
  return std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace kvx
