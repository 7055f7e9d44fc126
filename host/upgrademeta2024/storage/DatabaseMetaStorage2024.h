#pragma once

#include <memory>

#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace metadb {
class CDatabase;
}

/// A metamodel in a database, in the tables that docs/metamodel-database.md describes.
class CDatabaseMetaStorage2024 : public CMetaStorage2024 {
 public:
  explicit CDatabaseMetaStorage2024(std::unique_ptr<metadb::CDatabase> database);
  ~CDatabaseMetaStorage2024() override;

  std::string Describe() const override;
  std::shared_ptr<CMetaDictionary2024> Load() override;
  /// Whether the database has any of a metamodel's tables.
  bool Exists() override;
  using CMetaStorage2024::Save;
  void Save(const CMetaDictionary2024& dictionary, EExistingMeta2024 existing) override;

 private:
  std::unique_ptr<metadb::CDatabase> database_;
};
