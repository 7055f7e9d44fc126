#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "upgrademeta2024/storage/DatabaseQueries.h"
#include "upgrademeta2024/storage/MetaFaults.h"
#include "upgrademeta2024/upgrademeta2024_export.h"

class CMetaDictionary2024;

/// What becomes of a metamodel that is there already when another is stored.
enum class EExistingMeta { kReplace, kRefuse };

/// A place that holds one metamodel. Every storage keeps the order of all lists and every value, and holds the same
/// rules: names are not empty, and no two names of one list differ only in ASCII case (a class's behavior names may
/// repeat).
class UPGRADEMETA2024_EXPORT CMetaStorage {
 public:
  virtual ~CMetaStorage();
  CMetaStorage(const CMetaStorage&) = delete;
  CMetaStorage& operator=(const CMetaStorage&) = delete;

  /// The location for messages and reports: passwords are not shown.
  virtual std::string Describe() const = 0;

  /// The files that hold the metamodel; none where a server does.
  virtual std::vector<std::string> GetFiles() const = 0;

  /// Reads the whole metamodel; never an empty pointer. Changes nothing. Throws CKVXException: kvx::kFileError for what
  /// cannot be read, kvx::kMalformedDocument for content that is not a metamodel, with the place. A metamodel without
  /// any element is noted (kvx::CFileNotes): it is hardly what somebody has meant.
  std::shared_ptr<CMetaDictionary2024> Load();

  /// Reads the whole metamodel as Load() does and tells everything for which Load() would refuse it as malformed. Where
  /// it cannot be read for another reason, throws what Load() throws.
  SMetaFaults Check();

  /// Whether the location holds something already that Save would replace.
  virtual bool Exists() = 0;

  /// Throws CKVXException (kvx::kMetamodelExists) when Exists().
  void RequireNothingThere();

  /// Stores the metamodel in place of what the location held, as a whole or, when it throws CKVXException, not at all.
  void Save(const CMetaDictionary2024& dictionary) { Save(dictionary, EExistingMeta::kReplace); }
  /// With kRefuse throws what RequireNothingThere() does, and replaces nothing that comes while it writes either.
  virtual void Save(const CMetaDictionary2024& dictionary, EExistingMeta existing) = 0;

  /// Opens the database, whatever it holds, to be asked; no query takes longer than `limit`. The storage has to be
  /// there for as long as what it gives. Throws CKVXException for one that cannot be opened, and for a location that is
  /// no database.
  virtual std::unique_ptr<CDatabaseQueries> OpenQueries(std::chrono::milliseconds limit);

 protected:
  CMetaStorage();
  [[noreturn]] void FailExisting() const;

 private:
  void NoteIfEmpty(const CMetaDictionary2024& dictionary) const;
  /// What it gives is complete only where there are no faults.
  virtual std::shared_ptr<CMetaDictionary2024> LoadElements(CFaultTaker& faults) = 0;
};
