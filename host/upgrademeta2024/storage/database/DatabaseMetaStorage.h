#pragma once

#include <memory>

#include "upgrademeta2024/storage/MetaStorage.h"

namespace metadb {
class CDatabase;
}

/// A metamodel in a database, in the tables that docs/metamodel-database.md describes.
class CDatabaseMetaStorage : public CMetaStorage {
 public:
  explicit CDatabaseMetaStorage(std::unique_ptr<metadb::CDatabase> database);
  ~CDatabaseMetaStorage() override;

  std::string Describe() const override;
  std::vector<std::string> GetFiles() const override;
  /// Whether the database has any of a metamodel's tables.
  bool Exists() override;
  using CMetaStorage::Save;
  void Save(const CMetaDictionary2024& dictionary, EExistingMeta existing) override;
  std::unique_ptr<CDatabaseQueries> OpenQueries(std::chrono::milliseconds limit) override;

 private:
  std::shared_ptr<CMetaDictionary2024> LoadElements(CFaultTaker& faults) override;

  std::unique_ptr<metadb::CDatabase> database_;
};
