#include "kvxsptfile/ReadFile.h"

#include <algorithm>

#include "kvxsptfile/InputFile.h"

namespace kvx {

std::string ReadFile(const std::string& path, const SReading& reading) {
  CInputFile file(path, reading.mayBePipe, reading.pipeWait);
  constexpr std::size_t kBlock = 65536;
  std::string text;
  // The size is only a hint: pipes have none, and a file may grow while it is read.
  text.reserve(file.GetSize() + reading.padding + 1);
  for (;;) {
    const std::size_t old = text.size();
    if (text.capacity() - old <= reading.padding) {
      text.reserve(text.capacity() * 2 + kBlock);
    }
    const std::size_t room = std::min(text.capacity() - old - reading.padding, kBlock * 16);
    text.resize(old + room);
    const std::size_t count = file.Read(&text[old], room);
    text.resize(old + count);
    if (reading.observer) {
      reading.observer(text.size(), file.GetSize());
    }
    if (count == 0) {
      // Whoever reads in blocks looks at the padding, too, and shall not find there what the memory held before.
      text.resize(old + reading.padding);
      text.resize(old);
      return text;
    }
  }
}

void RequireRegularFile(const std::string& path) {
  static_cast<void>(CInputFile(path, /*mayBePipe=*/false, {}));
}

}  // namespace kvx
