#include "support/MetaMaker.h"

#include <gtest/gtest.h>

#include <utility>

namespace test {
namespace {

SMetaClassValues2024 Values(const SClass& values) {
  SMetaClassValues2024 result;
  result.internalName = values.internalName;
  result.displayName = values.displayName;
  result.classId = values.classId;
  result.tableName = values.tableName;
  result.behaviors.assign(values.behaviors.begin(), values.behaviors.end());
  result.properties = MakeTable(values.properties);
  return result;
}

}  // namespace

SMetaPropertyValues2024 SProperty::Values() const {
  SMetaPropertyValues2024 values;
  values.internalName = internalName;
  values.displayName = displayName;
  values.field = field;
  values.type = type;
  values.length = length;
  values.defaultValue = defaultValue;
  values.precision = precision;
  values.max = max;
  values.min = min;
  values.lookupClass = lookupClass;
  return values;
}

SProperty Property(const std::string& internalName) {
  SProperty property;
  property.internalName = internalName;
  property.displayName = internalName + " (display)";
  property.field = "F_" + internalName;
  return property;
}

std::shared_ptr<CMetaProperty2024> Make(const SProperty& property) {
  return MakeTable({property}).GetProperties().front();
}

CMetaPropertyTable2024 MakeTable(const std::vector<SProperty>& properties) {
  CMetaPropertyTable2024 table;
  for (const SProperty& property : properties) {
    table.Add(property.Values());
  }
  return table;
}

std::shared_ptr<CMetaClass2024> MakeClass(const SClass& values) {
  return std::make_shared<CMetaClass2024>(Values(values));
}

std::shared_ptr<CMetaLink2024> MakeLink(const SClass& values) {
  return std::make_shared<CMetaLink2024>(Values(values));
}

std::string SBehavior::MethodDisplayName(const std::string& method) const {
  const auto found = methodDisplayNames.find(method);
  return found != methodDisplayNames.end() ? found->second : method + "()";
}

std::shared_ptr<CMetaBehavior2024> MakeBehavior(const SBehavior& values) {
  SMetaBehaviorValues2024 result;
  result.internalName = values.internalName;
  result.displayName = values.displayName;
  for (const std::string& name : values.methods) {
    result.methods.push_back(std::make_shared<CMetaMethod2024>(name, values.MethodDisplayName(name)));
  }
  result.properties = MakeTable(values.properties);
  return std::make_shared<CMetaBehavior2024>(std::move(result));
}

std::shared_ptr<CMetaDictionary2024> MakeMetamodel(const SModel& model) {
  auto dictionary = std::make_shared<CMetaDictionary2024>();
  for (const SClass& element : model.classes) {
    EXPECT_TRUE(dictionary->AddClass(MakeClass(element)));
  }
  for (const SClass& element : model.links) {
    EXPECT_TRUE(dictionary->AddLink(MakeLink(element)));
  }
  for (const SBehavior& element : model.behaviors) {
    EXPECT_TRUE(dictionary->AddBehavior(MakeBehavior(element)));
  }
  return dictionary;
}

}  // namespace test
