#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Replaces a file as a whole: what is written goes into a new file beside the target, which Commit() flushes to disk
/// and renames over the target; CommitNew() does so only where there is no target. Until Commit() has returned the
/// target is as it was, and without Commit() the new file is removed again. A target that is a symbolic link keeps
/// being one: the file that it points to is replaced. An existing target's permissions are kept.
///
/// Every failure throws CKVXException(kFileError, "PATH: cannot be saved: reason; nothing was changed").
class KVXSPTFILE_EXPORT CAtomicFile {
 public:
  /// Creates the new file.
  explicit CAtomicFile(const std::string& path);
  ~CAtomicFile();

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

  [[noreturn]] void Fail(int error) const;
  /// Brings all that was written to disk.
  void Finish();
  void SyncDirectory(const std::string& done) const;
  void FlushBuffer();
  void WriteAll(const char* data, std::size_t size);

  std::string path_;
  std::string target_;
  std::string temporary_;
  std::unique_ptr<std::array<char, kBufferSize>> buffer_;
  std::size_t used_ = 0;
  int descriptor_ = -1;
};

}  // namespace kvx
