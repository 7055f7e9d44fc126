#include "upgrademeta2024/MetaMgr2024.h"

#include <string>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/MetaReadAhead.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

std::shared_ptr<CMetaDictionary2024> Load(const std::string& side, const std::string& location) {
  try {
    return OpenMetaStorage(location)->Load();
  } catch (const CKVXException& error) {
    throw CKVXException(error.GetCode(), side + " metamodel: " + error.what());
  }
}

}  // namespace

CMetaMgr2024& CMetaMgr2024::Instance() {
  static CMetaMgr2024 instance;
  return instance;
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::Keep(const std::string& location,
                                                        std::shared_ptr<CMetaDictionary2024> metamodel) const {
  if (const auto kept = kept_.lock()) {
    (*kept)[location] = metamodel;
  }
  return metamodel;
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadOriginalMeta(CUpgradeContext& upgradeContext) {
  const std::string location = upgradeContext.GetOriginalMetaLocation();
  if (const auto readAhead = readAhead_.lock(); readAhead != nullptr && readAhead->Has(location)) {
    return Keep(location, readAhead->Take());
  }
  return Keep(location, Load("original", location));
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadClientMeta(CUpgradeContext& upgradeContext) {
  if (const auto readAhead = readAhead_.lock()) {
    const std::string original = upgradeContext.GetOriginalMetaLocation();
    readAhead->Begin(original, [original] { return Load("original", original); });
  }
  const std::string location = upgradeContext.GetClientMetaLocation();
  return Keep(location, Load("client", location));
}
