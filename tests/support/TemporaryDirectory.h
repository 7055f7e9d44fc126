#pragma once

#include <string>

namespace test {

/// A new, empty directory, removed with all that it holds at the end of its scope.
class CTemporaryDirectory {
 public:
  CTemporaryDirectory();
  ~CTemporaryDirectory();
  CTemporaryDirectory(const CTemporaryDirectory&) = delete;
  CTemporaryDirectory& operator=(const CTemporaryDirectory&) = delete;

  const std::string& Path() const { return path_; }
  /// The path of `name` below the directory.
  std::string File(const std::string& name) const { return path_ + "/" + name; }
  /// Writes a file, with the directories above it, and answers with its path.
  std::string Write(const std::string& name, const std::string& content) const;

 private:
  std::string path_;
};

/// The whole content of a file; fails the test when it cannot be read.
std::string ReadFile(const std::string& path);

}  // namespace test
