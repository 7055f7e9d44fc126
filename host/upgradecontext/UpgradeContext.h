#pragma once

#include <string>

#include "upgradecontext/upgradecontext_export.h"

/// The context of one upgrade run: directories, language and the two metamodels. Directories carry no trailing
/// separator, since readers append text that begins with "/"; the setters keep what they are given.
/// Everything is empty until set.
class UPGRADECONTEXT_EXPORT CUpgradeContext {
 public:
  CUpgradeContext();
  ~CUpgradeContext();
  CUpgradeContext(const CUpgradeContext&);
  CUpgradeContext& operator=(const CUpgradeContext&);

  /// The upgrade configuration directory.
  std::string GetUpgradeCfgPath() const;
  void SetUpgradeCfgPath(const std::string& path);

  /// The configuration directory of the version being upgraded to.
  std::string GetVersionUpgradeCfgPath() const;
  void SetVersionUpgradeCfgPath(const std::string& path);

  /// The language code of the run, for example "en".
  std::string GetLang() const;
  void SetLang(const std::string& lang);

  /// Where the metamodel as shipped and the metamodel of the installation are (see upgrademeta2024/storage/).
  std::string GetOriginalMetaLocation() const;
  void SetOriginalMetaLocation(const std::string& location);
  std::string GetClientMetaLocation() const;
  void SetClientMetaLocation(const std::string& location);

 private:
  std::string upgradeCfgPath_;
  std::string versionUpgradeCfgPath_;
  std::string lang_;
  std::string originalMetaLocation_;
  std::string clientMetaLocation_;
};
