#include "upgrademeta2024/storage/MetaStorage.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

CMetaStorage::CMetaStorage() = default;

CMetaStorage::~CMetaStorage() = default;

void CMetaStorage::FailExisting() const {
  throw CKVXException(kvx::kMetamodelExists, CStringHelper::ToVisible(Describe()) + ": exists already");
}

void CMetaStorage::RequireNothingThere() {
  if (Exists()) {
    FailExisting();
  }
}
