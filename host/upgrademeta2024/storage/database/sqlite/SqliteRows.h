#pragma once

#include <soci/soci.h>

#include <string>

#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/DatabaseValue.h"

namespace metadb {

/// Calls `row` for each row of a table, which `select` asks for. Throws soci::soci_error, and whatever `row` throws.
void ReadSqliteRows(soci::session& session, const STable& table, const std::string& select, const RowHandler& row);

}  // namespace metadb
