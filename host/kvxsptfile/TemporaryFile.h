#pragma once

#include <memory>
#include <optional>
#include <string>

#include "kvxsptfile/FileDescriptor.h"
#include "kvxsptfile/UnfinishedFile.h"
#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

class CFileAttributes;

/// A new file that takes its target's place as a whole. It is made beside the target under a name of its own,
/// "TARGET.unfinished-XXXXXX"; Commit() flushes it to disk and renames it. Until Commit() has returned the target is as
/// it was, and without Commit() the new file is removed again. A target that is a symbolic link keeps being one: the
/// file that it points to is replaced, unless another user has put the link into a directory that all may write to. A
/// file of CProtectedFiles is not replaced.
///
/// The new file has the owner, group, permissions and access control list of the one that it replaces, without its
/// set-user-ID and set-group-ID bits. What of these the process may not give, a note tells (CFileNotes).
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
  [[noreturn]] void Fail(const std::string& reason) const;
  void LookAtTarget();
  /// Whether a new file has been made that no other process takes for a leftover.
  bool TryCreate();
  void KeepAttributes();
  /// Brings all that was written to disk.
  void Finish();
  /// What is done once the new file has its target's name.
  void EndAs(const std::string& done);

  std::string path_;
  std::string target_;
  std::string temporary_;
  std::optional<CUnfinishedFile> unfinished_;
  // The target's; null when there is none.
  std::unique_ptr<CFileAttributes> attributes_;
  std::string note_;
  CFileDescriptor file_;
  // None where the directory may be written to, but not be read.
  CFileDescriptor directory_;
};

}  // namespace kvx
