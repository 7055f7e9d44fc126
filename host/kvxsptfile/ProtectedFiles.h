#pragma once

#include <string>
#include <vector>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Files that a run reads. As long as this lives, no CTemporaryFile of the process takes their place, by whatever name
/// or link it is asked to.
class KVXSPTFILE_EXPORT CProtectedFiles {
 public:
  /// What is not there is not protected before it is.
  explicit CProtectedFiles(std::vector<std::string> paths);
  ~CProtectedFiles();
  CProtectedFiles(const CProtectedFiles&) = delete;
  CProtectedFiles& operator=(const CProtectedFiles&) = delete;

  /// The protected file that `path` leads to, too; empty for none.
  static std::string Find(const std::string& path);

 private:
  std::vector<std::string> paths_;
};

}  // namespace kvx
