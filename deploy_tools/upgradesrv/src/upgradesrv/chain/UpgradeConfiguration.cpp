#include "upgradesrv/chain/UpgradeConfiguration.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <initializer_list>
#include <list>
#include <set>
#include <utility>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/OpeningProblem.h"
#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/MetaLocation.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/UpgradeFiles.h"

namespace upgradesrv {
namespace {

constexpr const char* kAdvice = "give the upgrade configuration directory, which holds upgrade.json";

std::string WithoutTrailingSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') {
    path.pop_back();
  }
  return path;
}

/// An object of the file and its place, for messages.
class CNode {
 public:
  /// `pointer`: the object's JSON pointer, empty for the root.
  CNode(const CJsonObject& object, const std::string& file, std::string pointer)
      : object_(object), file_(file), pointer_(std::move(pointer)) {}

  [[noreturn]] void Fail(const std::string& problem) const {
    throw CTrouble(file_ + ": " + (pointer_.empty() ? "/" : pointer_) + ": " + problem);
  }
  [[noreturn]] void FailMember(const std::string& key, const std::string& problem) const {
    throw CTrouble(file_ + ": " + pointer_ + "/" + key + ": " + problem);
  }

  void RequireMember(const std::string& key) const {
    if (!object_.HasMember(key)) {
      Fail("member \"" + key + "\" is missing");
    }
  }

  void RefuseRepeatedMembers() const {
    std::set<std::string> seen;
    for (const std::string& key : GetKeys()) {
      if (!seen.insert(key).second) {
        Fail("duplicate member \"" + key + "\"");
      }
    }
  }

  void RefuseUnknownMembers(std::initializer_list<const char*> known) const {
    const std::list<std::string> keys = GetKeys();
    const auto unknown = std::find_if(keys.begin(), keys.end(), [known](const std::string& key) {
      return std::find(known.begin(), known.end(), key) == known.end();
    });
    if (unknown != keys.end()) {
      std::string names;
      for (const char* name : known) {
        names += names.empty() ? "" : ", ";
        names += name;
      }
      Fail("unknown member \"" + *unknown + "\"; known here: " + names);
    }
  }

  std::string ReadText(const std::string& key) const {
    RequireMember(key);
    std::string text = object_.IsString(key) ? object_.GetStringValue(key) : "";
    // The system would end a path at a NUL.
    if (text.empty() || text.find('\0') != std::string::npos) {
      FailMember(key, "must be a string that is not empty and holds no NUL");
    }
    return text;
  }

 private:
  std::list<std::string> GetKeys() const {
    std::list<std::string> keys;
    object_.GetAllKey(keys);
    return keys;
  }

  const CJsonObject& object_;
  const std::string& file_;
  std::string pointer_;
};

}  // namespace

CUpgradeConfiguration::CUpgradeConfiguration(const std::string& directory, const SConfigurationOverrides& overrides)
    : directory_(WithoutTrailingSeparator(directory)), file_(directory_ + kConfigurationFile) {
  std::error_code error;
  if (!std::filesystem::is_directory(directory_, error)) {
    throw CTrouble(directory_ + ": " + (error ? kvx::OpeningProblem(directory_, error.value()) : "not a directory") +
                   "; " + kAdvice);
  }
  CJsonObject root;
  try {
    root.CreateFromFile(file_);
  } catch (const CKVXException& failure) {
    if (std::filesystem::exists(file_, error)) {
      throw;
    }
    throw CTrouble(failure.what() + std::string("; ") + kAdvice);
  }
  const CNode node(root, file_, "");
  if (!root.IsObject()) {
    node.Fail("must be an object");
  }
  node.RefuseRepeatedMembers();
  node.RefuseUnknownMembers(
      {"lang", "version", "original_metamodel", "client_metamodel", "base_metamodel", "strategies"});
  lang_ = overrides.lang.value_or(node.ReadText("lang"));
  const std::string version = node.ReadText("version");
  if (version == "." || version == ".." || version.find('/') != std::string::npos) {
    node.FailMember("version", "must be the name of a directory beside upgrade.json, without separators");
  }
  versionDirectory_ = directory_ + "/" + version;
  if (!std::filesystem::is_directory(versionDirectory_, error)) {
    const std::string problem = std::filesystem::is_symlink(versionDirectory_, error)
                                    ? versionDirectory_ + " " + kvx::OpeningProblem(versionDirectory_, ENOENT)
                                    : "there is no directory " + versionDirectory_;
    node.FailMember("version", problem + "; create it or correct the version");
  }
  originalLocation_ =
      overrides.originalLocation.value_or(ResolveMetaLocation(node.ReadText("original_metamodel"), directory_));
  clientLocation_ =
      overrides.clientLocation.value_or(ResolveMetaLocation(node.ReadText("client_metamodel"), directory_));
  baseLocation_ = overrides.baseLocation;
  if (!baseLocation_ && root.HasMember("base_metamodel")) {
    baseLocation_ = ResolveMetaLocation(node.ReadText("base_metamodel"), directory_);
  }
  node.RequireMember("strategies");
  ReadStrategies(root);
  if (overrides.elements) {
    OverrideElements(*overrides.elements);
  }
}

void CUpgradeConfiguration::ReadStrategies(const CJsonObject& root) {
  const std::string pointer = "/strategies";
  std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> found;
  try {
    found = root.GetPropertyObjectArrayValue("strategies");
  } catch (const CKVXException&) {
    found.first = false;
  }
  if (!found.first || found.second.empty()) {
    CNode(root, file_, pointer).Fail("must be an array of objects, at least one");
  }
  for (const std::shared_ptr<CJsonObject>& object : found.second) {
    const std::string itemPointer = pointer + "/" + std::to_string(strategies_.size());
    const CNode node(*object, file_, itemPointer);
    node.RefuseRepeatedMembers();
    node.RefuseUnknownMembers({"module", "class", "parameter"});
    SStrategyConfiguration strategy{node.ReadText("module"), node.ReadText("class"), std::make_shared<CJsonObject>(),
                                    itemPointer, file_ + ": " + itemPointer};
    if (object->HasMember("parameter")) {
      strategy.parameter = object->GetPropertyObjectValue("parameter");
      if (strategy.parameter == nullptr) {
        node.FailMember("parameter", "must be an object");
      }
      CNode(*strategy.parameter, file_, itemPointer + "/parameter").RefuseRepeatedMembers();
    }
    strategies_.push_back(std::move(strategy));
  }
}

void CUpgradeConfiguration::OverrideElements(const std::vector<std::string>& elements) {
  bool overridden = false;
  for (const SStrategyConfiguration& strategy : strategies_) {
    overridden |= ReplaceKinds(strategy, elements);
  }
  if (!overridden) {
    throw CTrouble("--elements: no strategy of " + file_ + " has a parameter that lists kinds of elements");
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
