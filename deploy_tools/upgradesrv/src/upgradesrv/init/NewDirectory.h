#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kvxsptfile/DelayedEnd.h"

namespace upgradesrv {

/// A directory that is filled as a whole: what is not kept is removed again, also when a signal asks the process to
/// end. Nothing that was there before is touched. Every failure throws CTrouble or CKVXException.
class CNewDirectory {
 public:
  /// Makes the directory, or takes one that is there and empty.
  explicit CNewDirectory(std::string path);
  ~CNewDirectory();
  CNewDirectory(const CNewDirectory&) = delete;
  CNewDirectory& operator=(const CNewDirectory&) = delete;

  /// Paths below the directory, without a leading separator.
  void MakeDirectory(const std::string& path);
  void WriteFile(const std::string& path, std::string_view content);

  void Keep();

 private:
  [[noreturn]] static void FailMaking(const std::string& path, int error);

  kvx::CDelayedEnd delayedEnd_;
  std::string path_;
  // What has been made, in this order.
  std::vector<std::string> made_;
};

}  // namespace upgradesrv
