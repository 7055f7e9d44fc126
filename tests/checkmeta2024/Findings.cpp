#include "checkmeta2024/Findings.h"

#include <gtest/gtest.h>

#include <list>

namespace test {
namespace {

std::string Change(const CJsonObject& update) {
  const std::string field = update.GetStringValue("updated_field");
  const auto client = update.GetObjectValue("client_property");
  const auto original = update.GetObjectValue("original_property");
  return client->GetStringValue("internal_name") + "." + field + ": " + original->GetStringValue(field) + " > " +
         client->GetStringValue(field);
}

bool BeginsWith(const std::string& text, const std::string& begin) {
  return text.compare(0, begin.size(), begin) == 0;
}

std::string NameOf(const CJsonObject& element) {
  return element.GetStringValue("internal_name");
}

/// What an entry says of one member, one text per item.
std::vector<std::string> EntryItems(const CJsonObject& entry, const std::string& key) {
  if (key == "updated_properties") {
    return Changes(entry);
  }
  if (const auto [isTexts, texts] = entry.GetPropertyStringArrayValue(key); isTexts) {
    return {texts.begin(), texts.end()};
  }
  return Names(entry, key);
}

bool IsElementMember(const std::string& key) {
  return key == "internal_name" || key == "display_name" || key == "class_id" || key == "table_name";
}

}  // namespace

std::shared_ptr<CJsonObject> Json(const std::string& text) {
  auto object = std::make_shared<CJsonObject>();
  object->CreateFromText(text, "test");
  return object;
}

std::vector<std::string> Keys(const CJsonObject& object) {
  std::list<std::string> keys;
  object.GetAllKey(keys);
  return {keys.begin(), keys.end()};
}

std::vector<std::string> Names(const CJsonObject& object, const std::string& key) {
  std::vector<std::string> names;
  for (const auto& item : object.GetPropertyObjectArrayValue(key).second) {
    names.push_back(NameOf(*item));
  }
  return names;
}

std::vector<std::string> Changes(const CJsonObject& entry) {
  std::vector<std::string> changes;
  for (const auto& update : entry.GetPropertyObjectArrayValue("updated_properties").second) {
    changes.push_back(Change(*update));
  }
  return changes;
}

std::vector<std::string> Findings(const CJsonObject& checkResult) {
  std::vector<std::string> findings;
  for (const std::string& kind : Keys(checkResult)) {
    const auto section = checkResult.GetObjectValue(kind);
    for (const std::string& list : Keys(*section)) {
      const auto elements = section->GetPropertyObjectArrayValue(list).second;
      EXPECT_FALSE(elements.empty()) << kind << " " << list;
      for (const auto& element : elements) {
        const std::string line = kind + " " + list + " " + NameOf(*element);
        if (!BeginsWith(list, "updated_")) {
          findings.push_back(line);
          continue;
        }
        for (const std::string& key : Keys(*element)) {
          if (IsElementMember(key)) {
            continue;
          }
          const std::vector<std::string> items = EntryItems(*element, key);
          EXPECT_FALSE(items.empty()) << line << " " << key;
          for (const std::string& item : items) {
            findings.push_back(line + " " + key + " " + item);
          }
        }
      }
    }
  }
  return findings;
}

}  // namespace test
