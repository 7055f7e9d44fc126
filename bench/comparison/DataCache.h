#pragma once

#include <filesystem>

#include "generator/Sizes.h"

namespace bench {

/// Upgrade directories that are generated when they are first asked for and kept below one directory.
class CDataCache {
 public:
  /// Directories older than this program are generated anew, because the generator is part of it.
  explicit CDataCache(std::filesystem::path directory);

  /// The directory of a generated upgrade, complete.
  std::filesystem::path Provide(const SSize& size, const SVariant& variant) const;
  /// A copy of the repository's example.
  std::filesystem::path ProvideExample() const;
  /// A directory for what programs write beside their results.
  std::filesystem::path Logs() const;

  /// Has the kernel write out what was generated; else it would do so while programs are being measured.
  static void WriteOut();

 private:
  std::filesystem::path directory_;
};

}  // namespace bench
