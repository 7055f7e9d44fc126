#include "upgrademeta2024/storage/MetaStorage2024.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/DocumentMetaStorage2024.h"

namespace {

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

CMetaStorage2024::CMetaStorage2024() = default;

CMetaStorage2024::~CMetaStorage2024() = default;

std::unique_ptr<CMetaStorage2024> CMetaStorage2024::Open(const std::string& location) {
  std::string form = location;
  CStringHelper::ToLower(form);
  if (EndsWith(form, ".json")) {
    return std::make_unique<CDocumentMetaStorage2024>(location);
  }
  throw CKVXException(kvx::kMetamodelError, CStringHelper::ToVisible(location) +
                                                ": not a metamodel location; give the path of a .json document");
}
