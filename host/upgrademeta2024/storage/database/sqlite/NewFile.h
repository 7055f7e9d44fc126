#pragma once

#include <string>

namespace metadb {

/// A file that does not exist yet and comes to be as a whole: it is written in a hidden directory beside its place,
/// together with whatever files its writer needs beside it, and moved there at the end. Without Publish() nothing
/// remains; what a process leaves that is killed, RemoveLeftovers() removes. Throws std::system_error.
class CNewFile {
 public:
  explicit CNewFile(const std::string& path);
  ~CNewFile();
  CNewFile(const CNewFile&) = delete;
  CNewFile& operator=(const CNewFile&) = delete;

  /// Where to write it.
  const std::string& Path() const { return path_; }
  /// Moves the file to its place. False when another file has come there meanwhile.
  bool Publish();

  /// Removes the directories that earlier writers of a file at `path` have left, as far as it may. Those of writers
  /// that are still at work stay, and so does whatever holds other files than a writer makes.
  static void RemoveLeftovers(const std::string& path);

 private:
  bool TryMakeDirectory(const std::string& pattern);
  /// Answers with 0 or an errno.
  int LockDirectory();

  std::string target_;
  std::string directory_;
  std::string path_;
  // Of the directory, locked as long as its writer lives.
  int lock_ = -1;
};

}  // namespace metadb
