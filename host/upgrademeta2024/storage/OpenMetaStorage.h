#pragma once

#include <memory>
#include <string>

#include "upgrademeta2024/storage/MetaStorage.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

/// The storage for a location. Opens and reads nothing yet. Locations, capital letters or small ones in their fixed
/// parts:
/// - a path that ends in ".json", or of a pipe: a metamodel document;
/// - "sqlite3://PATH", or a path that ends in ".db" or ".sqlite": an SQLite database;
/// - "postgresql://" or "postgres://" followed by libpq's connection words, "host=… dbname=…" or nothing, or by the
/// rest of a
///   connection URI: a database of a PostgreSQL server. What is not given comes from libpq's environment variables,
///   service file and password file.
/// Throws CKVXException (kvx::kMetamodelError) for a location of no known form.
UPGRADEMETA2024_EXPORT std::unique_ptr<CMetaStorage> OpenMetaStorage(const std::string& location);
