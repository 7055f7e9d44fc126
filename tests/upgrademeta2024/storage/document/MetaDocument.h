#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {

/// Loads a metamodel document with that text.
inline std::shared_ptr<CMetaDictionary2024> LoadText(const std::string& text) {
  const CTemporaryDirectory directory;
  return OpenMetaStorage(directory.Write("meta.json", text))->Load();
}

/// The error that a metamodel document with that text gives, the directory taken from its message. What a check finds
/// first must be the same.
inline SError LoadError(const std::string& text) {
  const CTemporaryDirectory directory;
  const std::string path = directory.Write("meta.json", text);
  SError error = ErrorOf([&path] { OpenMetaStorage(path)->Load(); });
  if (error.code == kvx::kMalformedDocument) {
    const SMetaFaults faults = OpenMetaStorage(path)->Check();
    EXPECT_EQ(faults.words.empty() ? "" : faults.words.front(), error.message);
  }
  if (error.message.compare(0, directory.Path().size() + 1, directory.Path() + "/") == 0) {
    error.message.erase(0, directory.Path().size() + 1);
  }
  return error;
}

/// The same for a document of which something is wrong at a JSON pointer, without the line and column before that.
inline SError LoadErrorAtPointer(const std::string& text) {
  SError error = LoadError(text);
  const std::string file = "meta.json:";
  const std::size_t end = error.message.find_first_not_of("0123456789:", file.size());
  if (error.message.compare(0, file.size(), file) == 0 && error.message.compare(end, 2, " /") == 0) {
    error.message.erase(file.size(), end - file.size());
  }
  return error;
}

/// The error for a document of which something is wrong at a JSON pointer.
inline SError ContentError(const std::string& pointer, const std::string& problem) {
  return {kvx::kMalformedDocument, "meta.json: " + pointer + ": " + problem};
}

/// A place in a metamodel document at which there is an object, and what its members are called.
struct SObjectPlace {
  const char* name;
  /// The document before and after the object.
  std::string before;
  std::string after;
  std::string pointer;
  std::string knownMembers;
};

inline const SObjectPlace kClass = {"Class", R"({"generation": 2024, "classes": [)", "]}", "/classes/0",
                                    "internal_name, display_name, class_id, table_name, behaviors, properties"};
inline const SObjectPlace kLink = {"Link", R"({"generation": 2024, "links": [)", "]}", "/links/0", kClass.knownMembers};
inline const SObjectPlace kBehavior = {"Behavior", R"({"generation": 2024, "behaviors": [)", "]}", "/behaviors/0",
                                       "internal_name, display_name, methods, properties"};
inline const SObjectPlace kMethod = {"Method",
                                     R"({"generation": 2024, "behaviors": [{"internal_name": "B", "methods": [)",
                                     "]}]}", "/behaviors/0/methods/0", "internal_name, display_name"};
inline const std::string kPropertyMembers =
    "internal_name, display_name, field, type, length, default_value, precision, max, min, lookup_internal_name";
inline const SObjectPlace kClassProperty = {
    "ClassProperty", R"({"generation": 2024, "classes": [{"internal_name": "C", "properties": [)", "]}]}",
    "/classes/0/properties/0", kPropertyMembers};
inline const SObjectPlace kLinkProperty = {"LinkProperty",
                                           R"({"generation": 2024, "links": [{"internal_name": "L", "properties": [)",
                                           "]}]}", "/links/0/properties/0", kPropertyMembers};
inline const SObjectPlace kBehaviorProperty = {
    "BehaviorProperty", R"({"generation": 2024, "behaviors": [{"internal_name": "B", "properties": [)", "]}]}",
    "/behaviors/0/properties/0", kPropertyMembers};

/// The places of every kind of object that has an internal name.
inline const SObjectPlace kPlaces[] = {kClass,         kLink,         kBehavior,        kMethod,
                                       kClassProperty, kLinkProperty, kBehaviorProperty};

/// A document with that object at the place.
inline std::string With(const SObjectPlace& place, const std::string& object) {
  return place.before + object + place.after;
}

/// An otherwise sound object at the place whose member has that value.
inline std::string WithMember(const SObjectPlace& place, const std::string& member, const std::string& value) {
  const std::string name = member == "internal_name" ? "" : R"("internal_name": "A", )";
  return With(place, "{" + name + "\"" + member + "\": " + value + "}");
}

inline void PrintTo(const SObjectPlace& place, std::ostream* output) {
  *output << place.name;
}

}  // namespace test
