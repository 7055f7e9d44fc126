#pragma once

#include <memory>
#include <string>

#include "upgrademeta2024/storage/MetaStorage2024.h"

/// A metamodel document: one JSON file.
class CDocumentMetaStorage2024 : public CMetaStorage2024 {
 public:
  explicit CDocumentMetaStorage2024(std::string path);
  ~CDocumentMetaStorage2024() override;

  std::string Describe() const override { return path_; }
  std::shared_ptr<CMetaDictionary2024> Load() override;
  bool Exists() override;
  using CMetaStorage2024::Save;
  void Save(const CMetaDictionary2024& dictionary, EExistingMeta2024 existing) override;

 private:
  std::string path_;
};
