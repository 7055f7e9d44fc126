#include "upgrademeta2024/storage/DocumentMetaStorage2024.h"

#include <filesystem>
#include <utility>

#include "upgrademeta2024/LoadProgress2024.h"
#include "upgrademeta2024/storage/DocumentMetaReader2024.h"
#include "upgrademeta2024/storage/DocumentMetaWriter2024.h"

CDocumentMetaStorage2024::CDocumentMetaStorage2024(std::string path) : path_(std::move(path)) {}

CDocumentMetaStorage2024::~CDocumentMetaStorage2024() = default;

std::shared_ptr<CMetaDictionary2024> CDocumentMetaStorage2024::Load() {
  CLoadProgress2024 progress(Describe(), CLoadProgress2024::kBytes);
  return ReadMetaDocument2024(path_, progress);
}

bool CDocumentMetaStorage2024::Exists() {
  std::error_code error;
  return std::filesystem::exists(path_, error);
}

void CDocumentMetaStorage2024::Save(const CMetaDictionary2024& dictionary, EExistingMeta2024 existing) {
  if (!WriteMetaDocument2024(path_, dictionary, existing)) {
    FailExisting();
  }
}
