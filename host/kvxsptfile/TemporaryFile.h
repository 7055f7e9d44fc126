#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "kvxsptfile/FileDescriptor.h"
#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// A new file that takes its target's place as a whole. It is made beside the target under a name of its own,
/// "TARGET.unfinished-XXXXXX"; Commit() flushes it to disk and renames it. Until Commit() has returned the target is as
/// it was, and without Commit() the new file is removed again. A target that is a symbolic link keeps being one: the
/// file that it points to is replaced. An existing target's permissions are kept.
///
/// What a killed process has left under such a name is removed by the next file with the same target. The file of a
/// process that still works is locked (flock) and stays; where the file system has no such locks, leftovers stay too.
///
/// Every failure throws CKVXException(kFileError, "PATH: cannot be saved: reason; nothing was changed").
class KVXSPTFILE_EXPORT CTemporaryFile {
 public:
  /// Creates the new file, empty.
  explicit CTemporaryFile(const std::string& path);
  ~CTemporaryFile();

  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;

  /// The new file, for a library that opens it by name; that must neither replace nor remove it, and have closed it
  /// before Commit(). It needs no locks there: no one else uses the file, and on a network file system its locks and
  /// the one that this class holds might keep one another out.
  const std::string& GetPath() const { return temporary_; }
  /// The new file, open for reading and writing; stays open.
  int GetDescriptor() const { return file_.Get(); }

  void Commit();
  /// Like Commit(), but where something has come to the target's place, answers false and leaves that as it is.
  bool CommitNew();

  /// Throws what every failure throws, for an errno from writing the file.
  [[noreturn]] void Fail(int error) const;

 private:
  /// Whether a new file has been made that no other process takes for a leftover.
  bool TryCreate();
  /// Brings all that was written to disk.
  void Finish();
  void SyncDirectory(const std::string& done) const;

  std::string path_;
  std::string target_;
  std::string temporary_;
  // The target's, when that exists.
  std::optional<mode_t> mode_;
  CFileDescriptor file_;
  // None where the directory may be written to, but not be read.
  CFileDescriptor directory_;
};

}  // namespace kvx
