#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/data/ApplyCounts.h"
#include "metareview2024/data/Lookups.h"
#include "metareview2024/data/Sql.h"

namespace upgradesrv {

/// How stored values are counted, as the command line says it.
struct SStoredValues {
  /// The installation's database, or a ".csv" file of what the script of "-o sql" has counted there.
  std::optional<std::string> location;
  /// For each query; 30 s without it.
  std::optional<std::chrono::milliseconds> timeout;
  /// The dialect of the script.
  std::optional<std::string> dialect;
};

/// Where stored values are counted. Opens and reads nothing before Count().
class CStoredValues {
 public:
  /// `client` is the location of the client's metamodel. Throws CTrouble for a location that cannot be counted in, and
  /// CKVXException for one that is none.
  CStoredValues(const SStoredValues& values, const std::string& client);

  /// Files that no output may replace.
  std::vector<std::string> GetFiles() const;

  bool IsWanted() const { return location_.has_value(); }
  std::chrono::milliseconds GetTimeout() const { return timeout_; }
  /// That of the database, else of the client's metamodel, else PostgreSQL's, unless the command line says it.
  metareview::EDialect GetDialect() const { return dialect_; }

  /// Gives findings their counts, and `review` the name of where they were counted. Throws CKVXException for a database
  /// that cannot be opened, and for a file that is no such result.
  void Count(const metareview::SLookups& lookups, metareview::SReview& review) const;

 private:
  std::vector<metareview::SCount> ReadFromFile(const metareview::SLookups& lookups,
                                               const metareview::SReview& review) const;
  std::vector<metareview::SCount> ReadFromDatabase(const metareview::SLookups& lookups) const;

  std::optional<std::string> location_;
  bool isFile_ = false;
  std::chrono::milliseconds timeout_;
  metareview::EDialect dialect_ = metareview::EDialect::kPostgresql;
};

}  // namespace upgradesrv
