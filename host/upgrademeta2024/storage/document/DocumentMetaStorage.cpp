#include "upgrademeta2024/storage/document/DocumentMetaStorage.h"

#include <filesystem>
#include <utility>

#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/storage/document/DocumentMetaReader.h"
#include "upgrademeta2024/storage/document/DocumentMetaWriter.h"

CDocumentMetaStorage::CDocumentMetaStorage(std::string path) : path_(std::move(path)) {}

CDocumentMetaStorage::~CDocumentMetaStorage() = default;

std::shared_ptr<CMetaDictionary2024> CDocumentMetaStorage::LoadElements(CFaultTaker& faults) {
  CLoadProgress progress(Describe(), CLoadProgress::kBytes);
  return ReadMetaDocument(path_, progress, faults);
}

bool CDocumentMetaStorage::Exists() {
  std::error_code error;
  return std::filesystem::exists(path_, error);
}

void CDocumentMetaStorage::Save(const CMetaDictionary2024& dictionary, EExistingMeta existing) {
  if (!WriteMetaDocument(path_, dictionary, existing)) {
    FailExisting();
  }
}
