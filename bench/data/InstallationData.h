#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "metareview2024/data/Lookups.h"

namespace bench {

/// A database of an installation's data: tables with the same columns of texts and numbers, some of them NULL. It is
/// gone at the end of its scope.
class CInstallationData {
 public:
  virtual ~CInstallationData() = default;
  CInstallationData(const CInstallationData&) = delete;
  CInstallationData& operator=(const CInstallationData&) = delete;

  virtual std::string Location() const = 0;

  static std::string TableName(std::size_t table) { return "T_" + std::to_string(table); }

 protected:
  CInstallationData() = default;
};

std::unique_ptr<CInstallationData> MakeSqliteData(std::size_t tables, std::size_t rows);
/// On the server that libpq's environment variables name.
std::unique_ptr<CInstallationData> MakePostgresqlData(std::size_t tables, std::size_t rows);

/// The columns that lookups are about.
const std::vector<std::string>& LookedUpColumns();

/// Lookups as a review has them, the same number in each table, each rule that counts in turn.
std::vector<metareview::SLookup> MakeLookups(std::size_t tables, std::size_t findings);

}  // namespace bench
