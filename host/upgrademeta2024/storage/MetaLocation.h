#pragma once

#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

/// What a metamodel location names.
struct SMetaLocation {
  enum EKind { kUnknown, kDocument, kSqlite, kPostgresql };

  EKind kind = kUnknown;
  /// The path of a document or of an SQLite database; of PostgreSQL what follows the scheme.
  std::string name;
};

/// Takes a location apart: "sqlite3://PATH" or a path ending in ".db" or ".sqlite", "postgresql://…" or "postgres://…",
/// or a path ending in ".json", capital letters or small ones. Anything else is of unknown kind.
UPGRADEMETA2024_EXPORT SMetaLocation ParseMetaLocation(const std::string& location);

/// The location with a relative path in it, which is taken to start at `directory`, made to start there. Connections
/// to a server stay as they are.
UPGRADEMETA2024_EXPORT std::string ResolveMetaLocation(const std::string& location, const std::string& directory);

/// The location with a relative path in it, which is taken to start at the current directory, made to start at
/// `directory`; ResolveMetaLocation() turns it back. Links on the way to the file are resolved, the file itself is not.
UPGRADEMETA2024_EXPORT std::string RelateMetaLocation(const std::string& location, const std::string& directory);
