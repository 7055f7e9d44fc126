#include "upgradecontext/UpgradeContext.h"

CUpgradeContext::CUpgradeContext() = default;

CUpgradeContext::~CUpgradeContext() = default;

CUpgradeContext::CUpgradeContext(const CUpgradeContext&) = default;

CUpgradeContext& CUpgradeContext::operator=(const CUpgradeContext&) = default;

std::string CUpgradeContext::GetUpgradeCfgPath() const {
  return upgradeCfgPath_;
}

void CUpgradeContext::SetUpgradeCfgPath(const std::string& path) {
  upgradeCfgPath_ = path;
}

std::string CUpgradeContext::GetVersionUpgradeCfgPath() const {
  return versionUpgradeCfgPath_;
}

void CUpgradeContext::SetVersionUpgradeCfgPath(const std::string& path) {
  versionUpgradeCfgPath_ = path;
}

std::string CUpgradeContext::GetLang() const {
  return lang_;
}

void CUpgradeContext::SetLang(const std::string& lang) {
  lang_ = lang;
}

std::string CUpgradeContext::GetOriginalMetaLocation() const {
  return originalMetaLocation_;
}

void CUpgradeContext::SetOriginalMetaLocation(const std::string& location) {
  originalMetaLocation_ = location;
}

std::string CUpgradeContext::GetClientMetaLocation() const {
  return clientMetaLocation_;
}

void CUpgradeContext::SetClientMetaLocation(const std::string& location) {
  clientMetaLocation_ = location;
}
