#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "kvxsptfile/FileDescriptor.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// A file that is open for reading: a regular one, or a pipe if that is allowed. Throws what ReadFile() throws.
class KVXSPTFILE_EXPORT CInputFile {
 public:
  CInputFile(const std::string& path, bool mayBePipe, const SPipeWait& wait = {});

  /// 0 when that is not known.
  std::size_t GetSize() const { return size_; }
  /// Reads at most `size` bytes; answers with how many, 0 at the end.
  std::size_t Read(char* data, std::size_t size);

 private:
  using Clock = std::chrono::steady_clock;

  [[noreturn]] void Fail(const std::string& reason) const;
  /// Whether there is something to read, or an end, by then.
  bool HasDataBy(Clock::time_point end) const;

  std::string path_;
  CFileDescriptor file_;
  std::size_t size_ = 0;
  bool isPipe_ = false;
  SPipeWait wait_;
};

}  // namespace kvx
