#include "upgrademeta2024/storage/MetaStorage.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"

CMetaStorage::CMetaStorage() = default;

CMetaStorage::~CMetaStorage() = default;

void CMetaStorage::FailExisting() const {
  throw CKVXException(kvx::kFileError,
                      CStringHelper::ToVisible(Describe()) + ": exists already; give --replace to replace it");
}

void CMetaStorage::RequireNothingThere() {
  if (Exists()) {
    FailExisting();
  }
}
