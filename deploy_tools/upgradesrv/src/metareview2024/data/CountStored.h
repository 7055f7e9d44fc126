#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/data/ApplyCounts.h"
#include "metareview2024/data/Lookups.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// Which table is being read, and how many of how many have been.
struct SCountProgress {
  std::string table;
  std::size_t done = 0;
  std::size_t total = 0;
};
using CountObserver = std::function<void(const SCountProgress&)>;

struct SStoredCounts {
  /// One for each finding of which something is to be counted.
  std::vector<SCount> counts;
  /// Set where the database has not one of the tables: in which schemas they were looked for, first to last; none for
  /// SQLite, which has no schemas.
  std::optional<std::vector<std::string>> searchedInVain;
};

/// Counts in a database of SQLite or PostgreSQL, each table read once in a transaction that changes nothing and sees
/// one moment; no query takes longer than `limit`. Two tables are read at a time where a second connection sees the
/// same moment. `observer` may be empty; it is called before each table, by one thread at a time. What cannot be
/// counted is a problem of its findings. Throws CKVXException for a database that cannot be opened.
METAREVIEW2024_EXPORT SStoredCounts CountStored(const std::string& location, const SLookups& lookups,
                                                std::chrono::milliseconds limit, const CountObserver& observer = {});

}  // namespace metareview
