#pragma once

#include <soci/soci.h>

#include <cstdint>
#include <string>

#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/DatabaseValue.h"

namespace metadb {

/// Calls `row` for each row of a table in the order of its lists, and answers with their number. Throws
/// soci::soci_error, and whatever `row` throws.
std::uint64_t ReadSqliteRows(soci::session& session, const STable& table, const RowHandler& row);

/// Whether the name stands for rows that lie in the file as a table, not for a view or for what a module makes up.
bool IsStoredTable(soci::session& session, const std::string& name);

/// How SQLite answers a query, in its words, one line for each step.
std::string SqliteQueryPlan(soci::session& session, const std::string& query);

}  // namespace metadb
