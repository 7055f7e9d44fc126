#pragma once

#include <soci/soci.h>

class CMetaDictionary2024;
enum class EExistingMeta;

namespace metadb {

class CDatabase;

/// Replaces the metamodel that a database holds, tables included, in one transaction. Throws soci::soci_error when the
/// database fails, SContentError for a text that no database can hold; then nothing is changed once the session is
/// closed. The same when it answers with false: the database has tables of a metamodel that may not be replaced.
bool WriteMetamodel(soci::session& session, const CDatabase& database, const CMetaDictionary2024& dictionary,
                    EExistingMeta existing);

}  // namespace metadb
