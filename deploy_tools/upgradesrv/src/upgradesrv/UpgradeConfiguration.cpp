#include "upgradesrv/UpgradeConfiguration.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <list>

#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/MetaLocation2024.h"
#include "upgradesrv/Output.h"

namespace upgradesrv {
namespace {

std::string WithoutTrailingSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') {
    path.pop_back();
  }
  return path;
}

/// An object of the file and where it stands, for messages.
struct SNode {
  const CJsonObject& object;
  std::string place;  // "FILE: /POINTER"
};

void RequireKnownMembers(const SNode& node, std::initializer_list<const char*> known) {
  std::list<std::string> keys;
  node.object.GetAllKey(keys);
  for (auto key = keys.begin(); key != keys.end(); ++key) {
    if (std::find(known.begin(), known.end(), *key) == known.end()) {
      std::string names;
      for (const char* name : known) {
        names += (names.empty() ? "" : ", ") + std::string(name);
      }
      throw CTrouble(node.place + *key + ": unknown member; known here: " + names);
    }
    if (std::find(keys.begin(), key, *key) != key) {
      throw CTrouble(node.place + *key + ": the member stands twice");
    }
  }
}

std::string ReadText(const SNode& node, const std::string& key) {
  if (!node.object.HasMember(key)) {
    throw CTrouble(node.place + ": member \"" + key + "\" is missing");
  }
  const auto [isText, text] = node.object.GetPropertyStringValue(key);
  if (!isText || text.empty()) {
    throw CTrouble(node.place + key + ": must be a string that is not empty");
  }
  return text;
}

}  // namespace

CUpgradeConfiguration::CUpgradeConfiguration(const std::string& directory, const SConfigurationOverrides& overrides)
    : directory_(WithoutTrailingSeparator(directory)), file_(directory_ + "/upgrade.json") {
  std::error_code error;
  if (!std::filesystem::is_directory(directory_, error)) {
    throw CTrouble(directory_ +
                   ": not a directory; give the upgrade configuration directory, which holds upgrade.json");
  }
  CJsonObject root;
  root.CreateFromFile(file_);
  const SNode node = {root, file_ + ": /"};
  if (!root.IsObject()) {
    throw CTrouble(node.place + ": must be an object");
  }
  RequireKnownMembers(node, {"lang", "version", "original_metamodel", "client_metamodel", "strategies"});
  lang_ = overrides.lang.value_or(ReadText(node, "lang"));
  const std::string version = ReadText(node, "version");
  if (version == "." || version == ".." || version.find('/') != std::string::npos) {
    throw CTrouble(node.place + "version: must be the name of a directory beside upgrade.json, without separators");
  }
  versionDirectory_ = directory_ + "/" + version;
  if (!std::filesystem::is_directory(versionDirectory_, error)) {
    throw CTrouble(node.place + "version: there is no directory " + versionDirectory_ +
                   "; create it or correct the version");
  }
  originalLocation_ =
      overrides.originalLocation.value_or(ResolveMetaLocation2024(ReadText(node, "original_metamodel"), directory_));
  clientLocation_ =
      overrides.clientLocation.value_or(ResolveMetaLocation2024(ReadText(node, "client_metamodel"), directory_));
  ReadStrategies(root);
  if (overrides.elements) {
    OverrideElements(*overrides.elements);
  }
}

void CUpgradeConfiguration::ReadStrategies(const CJsonObject& root) {
  const std::string place = file_ + ": /strategies";
  if (!root.HasMember("strategies")) {
    throw CTrouble(file_ + ": /: member \"strategies\" is missing");
  }
  std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> found;
  try {
    found = root.GetPropertyObjectArrayValue("strategies");
  } catch (const CKVXException&) {
    found.first = false;
  }
  if (!found.first || found.second.empty()) {
    throw CTrouble(place + ": must be an array of objects, at least one");
  }
  for (const std::shared_ptr<CJsonObject>& object : found.second) {
    const SNode node = {*object, place + "/" + std::to_string(strategies_.size()) + "/"};
    RequireKnownMembers(node, {"module", "class", "parameter"});
    SStrategyConfiguration strategy{ReadText(node, "module"), ReadText(node, "class"), std::make_shared<CJsonObject>()};
    if (object->HasMember("parameter")) {
      strategy.parameter = object->GetPropertyObjectValue("parameter");
      if (strategy.parameter == nullptr) {
        throw CTrouble(node.place + "parameter: must be an object");
      }
    }
    strategies_.push_back(std::move(strategy));
  }
}

void CUpgradeConfiguration::OverrideElements(const std::vector<std::string>& elements) {
  const std::string key = "execute_elements";
  bool overridden = false;
  for (const SStrategyConfiguration& strategy : strategies_) {
    if (strategy.parameter->HasMember(key)) {
      strategy.parameter->SetStringArrayValue(key, {elements.begin(), elements.end()});
      overridden = true;
    }
  }
  if (!overridden) {
    throw CTrouble("--elements: no strategy of " + file_ + " has \"execute_elements\" in its parameter");
  }
}

void CUpgradeConfiguration::FillContext(CUpgradeContext& context) const {
  context.SetUpgradeCfgPath(directory_);
  context.SetVersionUpgradeCfgPath(versionDirectory_);
  context.SetLang(lang_);
  context.SetOriginalMetaLocation(originalLocation_);
  context.SetClientMetaLocation(clientLocation_);
}

}  // namespace upgradesrv
