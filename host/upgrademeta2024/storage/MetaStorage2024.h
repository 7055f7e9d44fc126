#pragma once

#include <memory>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;

/// What becomes of a metamodel that is there already when another is stored.
enum class EExistingMeta2024 { kReplace, kRefuse };

/// A place that holds one metamodel. Every storage keeps the order of all lists and every value, and holds the same
/// rules: names are not empty, and no two names of one list differ only in ASCII case (a class's behavior names may
/// repeat).
class UPGRADEMETA2024_EXPORT CMetaStorage2024 {
 public:
  /// The storage for a location. Opens and reads nothing yet. Locations, capital letters or small ones in their fixed
  /// parts:
  /// - a path that ends in ".json": a metamodel document;
  /// - "sqlite3://PATH", or a path that ends in ".db" or ".sqlite": an SQLite database;
  /// - "postgresql://" followed by libpq's connection words, "host=… dbname=…" or nothing, or by the rest of a
  ///   connection URI: a database of a PostgreSQL server. What is not given comes from libpq's environment variables,
  ///   service file and password file.
  /// Throws CKVXException (kvx::kMetamodelError) for a location of no known form.
  static std::unique_ptr<CMetaStorage2024> Open(const std::string& location);

  virtual ~CMetaStorage2024();
  CMetaStorage2024(const CMetaStorage2024&) = delete;
  CMetaStorage2024& operator=(const CMetaStorage2024&) = delete;

  /// The location for messages and reports: passwords are not shown.
  virtual std::string Describe() const = 0;

  /// Reads the whole metamodel; never an empty pointer. Changes nothing. Throws CKVXException: kvx::kFileError for what
  /// cannot be read, kvx::kMalformedDocument for content that is not a metamodel, with the place.
  virtual std::shared_ptr<CMetaDictionary2024> Load() = 0;

  /// Whether the location holds something already that Save would replace.
  virtual bool Exists() = 0;

  /// Throws CKVXException (kvx::kFileError) when Exists().
  void RequireNothingThere();

  /// Stores the metamodel in place of what the location held, as a whole or, when it throws CKVXException, not at all.
  void Save(const CMetaDictionary2024& dictionary) { Save(dictionary, EExistingMeta2024::kReplace); }
  /// With kRefuse throws what RequireNothingThere() does, and replaces nothing that comes while it writes either.
  virtual void Save(const CMetaDictionary2024& dictionary, EExistingMeta2024 existing) = 0;

 protected:
  CMetaStorage2024();
  [[noreturn]] void FailExisting() const;
};
