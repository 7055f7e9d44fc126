#pragma once

#include <memory>
#include <string>

#include "upgrademeta2024/storage/MetaStorage.h"

/// A metamodel document: one JSON file.
class CDocumentMetaStorage : public CMetaStorage {
 public:
  explicit CDocumentMetaStorage(std::string path);
  ~CDocumentMetaStorage() override;

  std::string Describe() const override { return path_; }
  std::vector<std::string> GetFiles() const override { return {path_}; }
  bool Exists() override;
  using CMetaStorage::Save;
  void Save(const CMetaDictionary2024& dictionary, EExistingMeta existing) override;

 private:
  std::shared_ptr<CMetaDictionary2024> LoadElements(CFaultTaker& faults) override;

  std::string path_;
};
