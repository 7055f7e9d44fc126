#include "checkmeta2024/UpgradeFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <list>

#include "kvxsptjson/JsonObject.h"

namespace test {
namespace {

constexpr const char* kClientFile = "client.json";
constexpr const char* kOriginalFile = "original.json";
constexpr const char* kDictionaryFile = "multilanguage/strings/info.json";
constexpr const char* kVersionDirectory = "2024";

using Objects = std::list<std::shared_ptr<CJsonObject>>;

/// The object of each of the elements, as `fill` makes it.
template <typename Element>
Objects ToObjects(const std::vector<Element>& elements, void (*fill)(const Element&, CJsonObject&)) {
  Objects objects;
  for (const Element& element : elements) {
    fill(element, *objects.emplace_back(std::make_shared<CJsonObject>()));
  }
  return objects;
}

void FillProperty(const SProperty& property, CJsonObject& object) {
  object.SetStringValue("internal_name", property.internalName);
  object.SetStringValue("display_name", property.displayName);
  object.SetStringValue("field", property.field);
  object.SetStringValue("type", property.type);
  object.SetUInt32Value("length", property.length);
  object.SetStringValue("default_value", property.defaultValue);
  object.SetUInt32Value("precision", property.precision);
  object.SetStringValue("max", property.max);
  object.SetStringValue("min", property.min);
  object.SetStringValue("lookup_internal_name", property.lookupClass);
}

template <typename Element>
void FillElement(const Element& element, CJsonObject& object) {
  object.SetStringValue("internal_name", element.internalName);
  object.SetStringValue("display_name", element.displayName);
  object.SetObjectArrayValue("properties", ToObjects(element.properties, &FillProperty));
}

void FillClass(const SClass& element, CJsonObject& object) {
  FillElement(element, object);
  object.SetUInt32Value("class_id", element.classId);
  object.SetStringValue("table_name", element.tableName);
  object.SetStringArrayValue("behaviors", {element.behaviors.begin(), element.behaviors.end()});
}

void FillBehavior(const SBehavior& element, CJsonObject& object) {
  FillElement(element, object);
  Objects methods;
  for (const std::string& name : element.methods) {
    CJsonObject& method = *methods.emplace_back(std::make_shared<CJsonObject>());
    method.SetStringValue("internal_name", name);
    method.SetStringValue("display_name", element.MethodDisplayName(name));
  }
  object.SetObjectArrayValue("methods", methods);
}

/// The metamodel document. The host's writer would wait for the disk each time, which generated cases cannot afford.
std::string Document(const SModel& model) {
  CJsonObject document;
  document.SetUInt32Value("generation", 2024);
  document.SetObjectArrayValue("classes", ToObjects(model.classes, &FillClass));
  document.SetObjectArrayValue("links", ToObjects(model.links, &FillClass));
  document.SetObjectArrayValue("behaviors", ToObjects(model.behaviors, &FillBehavior));
  return document.ToText();
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
  directory.Write(kClientFile, Document(model));
}

void CUpgradeFolder::SetOriginal(const SModel& model) const {
  directory.Write(kOriginalFile, Document(model));
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
