#pragma once

#include <memory>
#include <string>
#include <vector>

#include "metareview2024/data/Lookups.h"
#include "metareview2024/data/Sql.h"

class CDatabaseQueries;

namespace metareview {

/// Where a lookup finds its values in a database.
struct SPlace {
  /// Empty, or why there is no such place.
  std::string problem;
  /// No table has that name.
  bool isTableMissing = false;
  /// Quoted, with its schema.
  std::string table;
  std::vector<SSqlColumn> columns;
};

/// The places of lookups, in their order. Tables and columns are found by their names as they are, then without regard
/// to ASCII case; of tables of several schemas the one that the search path comes to first.
std::vector<SPlace> FindPlaces(CDatabaseQueries& queries, const std::vector<SLookup>& lookups);

/// Where unqualified names are looked for, first to last; none in SQLite, which has no schemas.
std::vector<std::string> SchemasSearched(CDatabaseQueries& queries);

}  // namespace metareview
