#pragma once

#include <memory>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "support/Error.h"

namespace test {

inline std::shared_ptr<CJsonObject> Json(const std::string& text) {
  auto object = std::make_shared<CJsonObject>();
  object->CreateFromText(text, "text");
  return object;
}

/// The object as JSON text without any space or line end, also where they are in strings.
inline std::string Compact(const CJsonObject& object) {
  std::string compact;
  for (const char c : object.ToText()) {
    if (c != ' ' && c != '\n') {
      compact += c;
    }
  }
  return compact;
}

inline SError Missing(const std::string& key) {
  return {kvx::kJsonMemberMissing, "json member [" + key + "] not exist!"};
}

inline SError WrongType(const std::string& key, const std::string& type) {
  return {kvx::kJsonWrongType, "json member [" + key + "] is not " + type + "!"};
}

/// One member of every kind of value; the keys say which.
constexpr const char* kEveryType = R"({
  "string": "text", "empty": "", "null": null, "true": true, "false": false, "number": 7,
  "object": {"x": "y"}, "array": [], "strings": ["b", "a", "b"], "numbers": [1, 2], "strings and null": ["a", null],
  "strings and number": ["a", 1], "nested strings": [["a"]],
  "objects": [{"n": "1"}, {"n": "2"}], "objects and string": [{"n": "1"}, "a"], "objects and null": [{"n": "1"}, null]
})";

}  // namespace test
