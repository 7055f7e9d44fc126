#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "kvxsptfile/TemporaryFile.h"
#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Replaces a file as a whole by what is written, with everything that CTemporaryFile promises.
///
/// Every failure throws CKVXException(kFileError, "PATH: cannot be saved: reason; nothing was changed").
class KVXSPTFILE_EXPORT CAtomicFile {
 public:
  explicit CAtomicFile(const std::string& path);

  CAtomicFile(const CAtomicFile&) = delete;
  CAtomicFile& operator=(const CAtomicFile&) = delete;

  void Write(const char* data, std::size_t size);
  /// Writes one character `count` times.
  void PutN(char c, std::size_t count);
  void Commit();
  /// False when something has come to the target's place, which is as it was.
  bool CommitNew();

  // What RapidJSON's writers ask of an output stream.
  using Ch = char;
  void Put(char c) {
    if (used_ == kBufferSize) {
      FlushBuffer();
    }
    (*buffer_)[used_++] = c;
  }
  void Flush() {}

 private:
  static constexpr std::size_t kBufferSize = 65536;

  void FlushBuffer();
  void WriteAll(const char* data, std::size_t size);
  /// Lets the system bring to disk what has been written, while the rest is made: less is left to wait for at the end.
  void BeginFlush();

  CTemporaryFile file_;
  std::size_t written_ = 0;
  // As much of it as is on its way to disk.
  std::size_t flushing_ = 0;
  std::unique_ptr<std::array<char, kBufferSize>> buffer_;
  std::size_t used_ = 0;
};

}  // namespace kvx
