#pragma once

#include <cstddef>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// The name of a file that is to be removed should a signal end the process now. Each CTemporaryFile has one.
class KVXSPTFILE_EXPORT CUnfinishedFile {
 public:
  /// `path` outlives this and stays as it is. To be made before the file is: no moment is left between.
  explicit CUnfinishedFile(const std::string& path) noexcept;
  ~CUnfinishedFile();
  CUnfinishedFile(const CUnfinishedFile&) = delete;
  CUnfinishedFile& operator=(const CUnfinishedFile&) = delete;

  /// Removes the files of all such names. For a signal handler in the thread that makes files: asks for no memory and
  /// waits for nothing.
  static void RemoveAll() noexcept;

 private:
  std::size_t slot_ = 0;
};

}  // namespace kvx
