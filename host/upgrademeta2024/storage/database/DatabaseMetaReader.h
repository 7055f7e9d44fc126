#pragma once

#include <soci/soci.h>

#include <memory>
#include <string>
#include <vector>

#include "upgrademeta2024/storage/database/DatabaseRows.h"

class CLoadProgress;
class CMetaDictionary2024;
struct SDatabaseDialect;

namespace metadb {

class CDatabase;

constexpr const char* kStoreAnew = "store the metamodel anew";

/// What is being done, and what to do when it fails and the database does not say.
struct SReading {
  std::string activity;
  std::string wayOut;
};

/// Reads the metamodel that a database holds, one ordered pass for each table, inside one transaction that sees all
/// tables as of one moment. Throws soci::soci_error or SFailure when the database fails; SContentError for what is not
/// a metamodel at all. `onFault` hears of every row that is none of a metamodel's; if it returns, reading goes on.
/// Meanwhile `reading` says what is being done, for messages, and `progress` counts the rows.
std::shared_ptr<CMetaDictionary2024> ReadMetamodel(soci::session& session, const CDatabase& database, SReading& reading,
                                                   CLoadProgress& progress, const RowFaultHandler& onFault);

/// The names of those tables of a metamodel that the database does not have.
std::vector<std::string> MissingTables(soci::session& session, const SDatabaseDialect& dialect);
/// Whether the database has any of them.
bool HasTables(soci::session& session, const SDatabaseDialect& dialect);

}  // namespace metadb
