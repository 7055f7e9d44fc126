#pragma once

#include <soci/soci.h>

#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/DatabaseValue.h"

namespace metadb {

/// Calls `row` for each row of a table in the order of its lists. Throws soci::soci_error, and whatever `row` throws.
void ReadSqliteRows(soci::session& session, const STable& table, const RowHandler& row);

}  // namespace metadb
