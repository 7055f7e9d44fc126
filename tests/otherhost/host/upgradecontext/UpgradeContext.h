#pragma once

#include <string>

class CUpgradeContext {
 public:
  CUpgradeContext() = default;
  CUpgradeContext(const CUpgradeContext&) = delete;
  CUpgradeContext& operator=(const CUpgradeContext&) = delete;

  std::string GetUpgradeCfgPath();
  std::string GetVersionUpgradeCfgPath();
  std::string GetLang();
};
