#pragma once

#include <memory>

class CMetaDictionary2024;
class CUpgradeContext;

class CMetaMgr2024 {
 public:
  static CMetaMgr2024& Instance();
  CMetaMgr2024(const CMetaMgr2024&) = delete;
  CMetaMgr2024& operator=(const CMetaMgr2024&) = delete;

  std::shared_ptr<CMetaDictionary2024> LoadOriginalMeta(CUpgradeContext& upgradeContext);
  std::shared_ptr<CMetaDictionary2024> LoadClientMeta(CUpgradeContext& upgradeContext);

 private:
  CMetaMgr2024() = default;
};
