#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace kvx {

/// What a file has beside its name and content: owner, group, permissions and access control list, without the bits
/// that lend its owner's or group's rights to whoever runs it. Throws std::system_error.
class CFileAttributes {
 public:
  explicit CFileAttributes(const std::string& path);

  /// Gives them to an open file of this process. Answers with a word for each that the process may not give. A file
  /// that cannot have the group gives its own no more rights than everybody has.
  std::vector<std::string> GiveTo(int descriptor) const;

 private:
  uid_t owner_ = 0;
  gid_t group_ = 0;
  mode_t permissions_ = 0;
  /// As the system stores it; empty for none.
  std::string accessList_;
};

}  // namespace kvx
