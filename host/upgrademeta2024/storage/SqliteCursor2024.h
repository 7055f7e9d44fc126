#pragma once

#include <soci/soci.h>

#include <memory>

#include "upgrademeta2024/storage/DatabaseCursor2024.h"
#include "upgrademeta2024/storage/DatabaseSchema2024.h"

namespace metadb {

/// Rows straight from SQLite's statement: SOCI would copy each value twice.
std::unique_ptr<CCursor> OpenSqliteCursor(soci::session& session, const STable& table);

}  // namespace metadb
