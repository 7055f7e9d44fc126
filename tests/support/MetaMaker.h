#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "upgrademeta2024/MetaDictionary2024.h"

namespace test {

/// SMetaPropertyValues2024 with texts of its own, so that tests can keep and change it.
struct SProperty {
  std::string internalName;
  std::string displayName;
  std::string field;
  std::string type = "string";
  std::uint32_t length = 32;
  std::string defaultValue;
  std::uint16_t precision = 0;
  std::string max;
  std::string min;
  std::string lookupClass;

  SMetaPropertyValues2024 Values() const;
};

/// A property that differs from another of the same name in nothing.
SProperty Property(const std::string& internalName);

std::shared_ptr<CMetaProperty2024> Make(const SProperty& property);
CMetaPropertyTable2024 MakeTable(const std::vector<SProperty>& properties);

struct SClass {
  std::string internalName;
  std::vector<std::string> behaviors;
  std::vector<SProperty> properties;
  std::string displayName = internalName + " (display)";
  std::uint32_t classId = 7;
  std::string tableName = "T_" + internalName;
};

std::shared_ptr<CMetaClass2024> MakeClass(const SClass& values);
std::shared_ptr<CMetaLink2024> MakeLink(const SClass& values);

struct SBehavior {
  std::string internalName;
  /// Internal names; the display name of each is the name followed by "()".
  std::vector<std::string> methods;
  std::vector<SProperty> properties;
  std::string displayName = internalName + " (display)";
  /// Of those methods that have another.
  std::map<std::string, std::string> methodDisplayNames = {};

  std::string MethodDisplayName(const std::string& method) const;
};

std::shared_ptr<CMetaBehavior2024> MakeBehavior(const SBehavior& values);

struct SModel {
  std::vector<SClass> classes;
  std::vector<SClass> links;
  std::vector<SBehavior> behaviors;
};

std::shared_ptr<CMetaDictionary2024> MakeMetamodel(const SModel& model);

}  // namespace test
