#include "upgrademeta2024/MetaMgr2024.h"

#include <string>
#include <system_error>
#include <thread>

#include "kvxsptexception/KVXException.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaLocation2024.h"
#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace {

std::shared_ptr<CMetaDictionary2024> Load(const std::string& side, const std::string& location) {
  try {
    return CMetaStorage2024::Open(location)->Load();
  } catch (const CKVXException& error) {
    throw CKVXException(error.GetCode(), side + " metamodel: " + error.what());
  }
}

/// A server may grant its user no second connection.
bool CanLoadBesideAnother(const std::string& location) {
  const SMetaLocation2024::EKind kind = ParseMetaLocation2024(location).kind;
  return (kind == SMetaLocation2024::kDocument || kind == SMetaLocation2024::kSqlite) &&
         std::thread::hardware_concurrency() > 1;
}

}  // namespace

CMetaMgr2024::CMetaMgr2024() = default;

CMetaMgr2024::~CMetaMgr2024() = default;

CMetaMgr2024& CMetaMgr2024::Instance() {
  static CMetaMgr2024 instance;
  return instance;
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadOriginalMeta(CUpgradeContext& upgradeContext) {
  const std::string location = upgradeContext.GetOriginalMetaLocation();
  if (original_.valid() && originalLocation_ == location) {
    return original_.get();
  }
  DropOriginal();
  return Load("original", location);
}

std::shared_ptr<CMetaDictionary2024> CMetaMgr2024::LoadClientMeta(CUpgradeContext& upgradeContext) {
  DropOriginal();
  originalLocation_ = upgradeContext.GetOriginalMetaLocation();
  if (CanLoadBesideAnother(originalLocation_)) {
    try {
      original_ = std::async(std::launch::async, Load, "original", originalLocation_);
    } catch (const std::system_error&) {
      // Without a thread it is read when it is asked for.
    }
  }
  try {
    return Load("client", upgradeContext.GetClientMetaLocation());
  } catch (...) {
    DropOriginal();
    throw;
  }
}

void CMetaMgr2024::DropOriginal() {
  original_ = {};
}
