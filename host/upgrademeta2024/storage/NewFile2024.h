#pragma once

#include <string>

namespace metadb {

/// A file that does not exist yet and comes to be as a whole: it is written in a hidden directory beside its place,
/// together with whatever files its writer needs beside it, and moved there at the end. Without Publish() nothing
/// remains. Throws std::system_error.
class CNewFile {
 public:
  explicit CNewFile(const std::string& path);
  ~CNewFile();
  CNewFile(const CNewFile&) = delete;
  CNewFile& operator=(const CNewFile&) = delete;

  /// Where to write it.
  const std::string& Path() const { return path_; }
  /// Moves the file to its place; fails when another file has come there meanwhile.
  void Publish();

 private:
  std::string target_;
  std::string directory_;
  std::string path_;
};

}  // namespace metadb
