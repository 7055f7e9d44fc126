#pragma once

#include <soci/soci.h>

class CMetaDictionary2024;
enum class EExistingMeta2024;
struct SDatabaseDialect2024;

namespace metadb {

/// Replaces the metamodel that a database holds, tables included, in one transaction. Throws soci::soci_error when the
/// database fails, SContentError for a text that no database can hold; then nothing is changed once the session is
/// closed. The same when it answers with false: the database has tables of a metamodel that may not be replaced.
bool WriteMetamodel(soci::session& session, const SDatabaseDialect2024& dialect, const CMetaDictionary2024& dictionary,
                    EExistingMeta2024 existing);

}  // namespace metadb
