#pragma once

#include <soci/soci.h>

#include <memory>

#include "upgrademeta2024/storage/DatabaseCursor2024.h"
#include "upgrademeta2024/storage/DatabaseSchema2024.h"

namespace metadb {

/// Rows through a cursor of the server, with a bounded number of them in memory: a query's rows would all come at once.
std::unique_ptr<CCursor> OpenPostgresqlCursor(soci::session& session, const STable& table);

}  // namespace metadb
