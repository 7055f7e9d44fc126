#include "checkmeta2024/UpgradeFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace test {
namespace {

constexpr const char* kClientFile = "client.json";
constexpr const char* kOriginalFile = "original.json";
constexpr const char* kDictionaryFile = "multilanguage/strings/info.json";
constexpr const char* kVersionDirectory = "2024";

void Save(const SModel& model, const std::string& path) {
  CMetaDictionary2024 dictionary;
  for (const SClass& element : model.classes) {
    EXPECT_TRUE(dictionary.AddClass(MakeClass(element))) << element.internalName;
  }
  for (const SClass& element : model.links) {
    EXPECT_TRUE(dictionary.AddLink(MakeLink(element))) << element.internalName;
  }
  for (const SBehavior& element : model.behaviors) {
    EXPECT_TRUE(dictionary.AddBehavior(MakeBehavior(element))) << element.internalName;
  }
  CMetaStorage2024::Open(path)->Save(dictionary);
}

}  // namespace

const char* const kDictionary = R"({
  "inserted": {"en": "Inserted ", "xx": "<inserted>"},
  "deleted": {"en": "Deleted ", "xx": "<deleted>"},
  "updated": {"en": "Updated ", "xx": "<updated>"},
  "class": {"en": "classes", "xx": "<class>"},
  "link": {"en": "links", "xx": "<link>"},
  "behavior": {"en": "behaviors", "xx": "<behavior>"},
  "method": {"en": "methods", "xx": "<method>"},
  "property": {"en": "properties", "xx": "<property>"},
  "internal_name": {"en": "name", "xx": "<internal_name>"},
  "display_name": {"en": "shown as", "xx": "<display_name>"},
  "updated_to": {"en": " -> ", "xx": "<updated_to>"}
})";

CUpgradeFolder::CUpgradeFolder() {
  context.SetUpgradeCfgPath(directory.Path());
  context.SetVersionUpgradeCfgPath(directory.File(kVersionDirectory));
  context.SetLang("en");
  context.SetClientMetaLocation(directory.File(kClientFile));
  context.SetOriginalMetaLocation(directory.File(kOriginalFile));
  std::filesystem::create_directory(directory.File(kVersionDirectory));
  SetDictionary(kDictionary);
}

void CUpgradeFolder::SetClient(const SModel& model) const {
  Save(model, directory.File(kClientFile));
}

void CUpgradeFolder::SetOriginal(const SModel& model) const {
  Save(model, directory.File(kOriginalFile));
}

void CUpgradeFolder::RemoveClient() const {
  EXPECT_TRUE(std::filesystem::remove(directory.File(kClientFile)));
}

void CUpgradeFolder::RemoveOriginal() const {
  EXPECT_TRUE(std::filesystem::remove(directory.File(kOriginalFile)));
}

void CUpgradeFolder::SetDictionary(const std::string& text) const {
  directory.Write(kDictionaryFile, text);
}

void CUpgradeFolder::RemoveDictionary() const {
  EXPECT_TRUE(std::filesystem::remove(directory.File(kDictionaryFile)));
}

std::string CUpgradeFolder::ResultPath() const {
  return directory.File(std::string(kVersionDirectory) + "/checkMetaError.json");
}

}  // namespace test
