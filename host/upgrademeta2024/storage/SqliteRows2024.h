#pragma once

#include <soci/soci.h>

#include <string>

#include "upgrademeta2024/storage/DatabaseSchema2024.h"
#include "upgrademeta2024/storage/DatabaseValue2024.h"

namespace metadb {

/// Calls `row` for each row of a table in the order of its lists. Throws soci::soci_error, and whatever `row` throws.
void ReadSqliteRows(soci::session& session, const STable& table, const RowHandler& row);

/// How SQLite answers a query, in its words, one line for each step.
std::string SqliteQueryPlan(soci::session& session, const std::string& query);

}  // namespace metadb
