#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

class CJsonObject;
class CUpgradeContext;

namespace upgradesrv {

/// One strategy of the chain.
struct SStrategyConfiguration {
  std::string module;
  std::string className;
  /// Never null; without members when upgrade.json gives none.
  std::shared_ptr<CJsonObject> parameter;
  /// Its place in upgrade.json, for messages: "/strategies/0", and with the file, "FILE: /strategies/0".
  std::string pointer;
  std::string place;
};

/// What the command line gives in place of upgrade.json.
struct SConfigurationOverrides {
  std::optional<std::string> lang;
  /// Relative paths start at the current directory.
  std::optional<std::string> originalLocation;
  std::optional<std::string> clientLocation;
  std::optional<std::string> baseLocation;
  /// Kinds in place of those that the parameters of strategies list.
  std::optional<std::vector<std::string>> elements;
};

/// upgrade.json of an upgrade configuration directory:
///
///     { "lang": "en", "version": "2024", "original_metamodel": LOCATION, "client_metamodel": LOCATION,
///       "base_metamodel": LOCATION,
///       "strategies": [ { "module": "checkmeta2024", "class": "CCheckMetaStrategy2024", "parameter": { … } } ] }
///
/// Everything but "base_metamodel" and "parameter" is required and nothing else is allowed; "version" names a directory
/// beside the file; at least one strategy. No member is there twice, not in a parameter either. Relative metamodel
/// paths, also those of databases, start at the file's directory.
class CUpgradeConfiguration {
 public:
  /// Reads DIRECTORY/upgrade.json. Throws CKVXException or CTrouble that names the file, the place and the way out.
  CUpgradeConfiguration(const std::string& directory, const SConfigurationOverrides& overrides);

  /// The upgrade configuration directory, without trailing separator.
  const std::string& GetDirectory() const { return directory_; }
  const std::vector<SStrategyConfiguration>& GetStrategies() const { return strategies_; }
  /// The metamodel as it was shipped with the version that the installation runs now, if one is named.
  const std::optional<std::string>& GetBaseLocation() const { return baseLocation_; }
  /// Fills in directories, language and metamodel locations.
  void FillContext(CUpgradeContext& context) const;

 private:
  void ReadStrategies(const CJsonObject& root);
  void OverrideElements(const std::vector<std::string>& elements);

  std::string directory_;
  std::string file_;
  std::string lang_;
  std::string versionDirectory_;
  std::string originalLocation_;
  std::string clientLocation_;
  std::optional<std::string> baseLocation_;
  std::vector<SStrategyConfiguration> strategies_;
};

}  // namespace upgradesrv
