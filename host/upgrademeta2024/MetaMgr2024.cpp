#include "upgrademeta2024/MetaMgr2024.h"

#include <string>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace {

std::shared_ptr<CMetaDictionary2024> Load(const std::string& side, const std::string& location) {
  try {
    return CMetaStorage2024::Open(location)->Load();
  } catch (const CKVXException& error) {
    throw CKVXException(error.GetCode(), side + " metamodel: " + error.what());
  }
}

}  // namespace

CMetaMgr2024::CMetaMgr2024() = default;

CMetaMgr2024& CMetaMgr2024::Instance() {
  static CMetaMgr2024 instance;
  return instance;
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadOriginalMeta(CUpgradeContext& upgradeContext) {
  return Load("original", upgradeContext.GetOriginalMetaLocation());
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadClientMeta(CUpgradeContext& upgradeContext) {
  return Load("client", upgradeContext.GetClientMetaLocation());
}
