#include "upgrademeta2024/storage/MetaStorage.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"

CMetaStorage::CMetaStorage() = default;

CMetaStorage::~CMetaStorage() = default;

std::shared_ptr<CMetaDictionary2024> CMetaStorage::Load() {
  std::shared_ptr<CMetaDictionary2024> dictionary = LoadElements();
  if (dictionary->GetClasses().empty() && dictionary->GetLinks().empty() && dictionary->GetBehaviors().empty()) {
    kvx::CFileNotes::Tell(CStringHelper::ToVisible(Describe()) + ": the metamodel has no classes, links or behaviors");
  }
  return dictionary;
}

void CMetaStorage::FailExisting() const {
  throw CKVXException(kvx::kMetamodelExists, CStringHelper::ToVisible(Describe()) + ": exists already");
}

void CMetaStorage::RequireNothingThere() {
  if (Exists()) {
    FailExisting();
  }
}
