// A text is JSON for CJsonObject exactly when another parser takes it for JSON; what was read survives being written
// and read again, and the getters that throw agree with those that do not.
#include <simdjson.h>

#include <cmath>
#include <cstdlib>
#include <list>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "support/TemporaryDirectory.h"

namespace {

using fuzz::Require;
using fuzz::Succeeded;

/// The other parser's verdict; SUCCESS and NUMBER_ERROR for numbers beyond 64 bits or double.
simdjson::error_code OtherVerdict(const std::string& text) {
  static simdjson::dom::parser parser;
  const std::size_t begin = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  const simdjson::padded_string padded(std::string_view(text).substr(begin));
  return parser.parse(padded).error();
}

void RequireOtherAgrees(const std::string& text, const test::SError& error) {
  const simdjson::error_code other = OtherVerdict(text);
  if (Succeeded(error)) {
    Require(other == simdjson::SUCCESS || other == simdjson::NUMBER_ERROR, "what is accepted is JSON",
            simdjson::error_message(other));
    return;
  }
  const bool isLimit = error.message.find("nested more than 512 levels") != std::string::npos ||
                       error.message.find("too big") != std::string::npos;
  Require(isLimit || other != simdjson::SUCCESS, "what is JSON is accepted", error.message);
}

/// The failure of a getter that throws, which must be the one that its counterpart recorded, if any.
void RequireSame(const CJsonObject& node, const test::SError& thrown, bool found) {
  Require(Succeeded(thrown) == found, "the two getters of a type agree", thrown.message);
  if (!found) {
    Require(thrown.code == kvx::kJsonWrongType && thrown.message.find("json member [") == 0, "a wrong type is named",
            thrown.message);
    Require(node.GetLastError() == thrown.code || node.GetLastError() == kvx::kJsonMemberMissing,
            "the last error is that of the getter");
  }
}

void Visit(const CJsonObject& node);

void VisitMember(const CJsonObject& node, const std::string& key) {
  Require(node.HasMember(key), "a listed member is there", key);

  std::string text;
  const test::SError noText = test::ErrorOf([&] { text = node.GetStringValue(key); });
  const auto [isText, propertyText] = node.GetPropertyStringValue(key);
  RequireSame(node, noText, isText);
  Require(text == propertyText, "both getters give one text", text);
  if (isText && !node.IsString(key)) {
    Require(std::isfinite(std::strtod(text.c_str(), nullptr)) && !text.empty(), "a number reads as its digits", text);
  }

  std::list<std::string> texts;
  const test::SError noTexts = test::ErrorOf([&] { texts = node.GetStringArrayValue(key); });
  const auto [isTexts, propertyTexts] = node.GetPropertyStringArrayValue(key);
  RequireSame(node, noTexts, isTexts);
  Require(!isTexts || texts == propertyTexts, "both getters give one list", key);

  std::shared_ptr<CJsonObject> object;
  const test::SError noObject = test::ErrorOf([&] { object = node.GetObjectValue(key); });
  const std::shared_ptr<CJsonObject> propertyObject = node.GetPropertyObjectValue(key);
  Require((object != nullptr) == (propertyObject != nullptr), "both getters give one object", key);
  if (object != nullptr) {
    Visit(*object);
  }

  const test::SError wrongItem = test::ErrorOf([&] {
    for (const std::shared_ptr<CJsonObject>& item : node.GetPropertyObjectArrayValue(key).second) {
      Visit(*item);
    }
  });
  Require(Succeeded(wrongItem) || wrongItem.code == kvx::kJsonWrongType, "an item of a wrong type is named",
          wrongItem.message);
}

void Visit(const CJsonObject& node) {
  std::list<std::string> keys;
  node.GetAllKey(keys);
  Require(keys.empty() || node.IsObject(), "only objects have members");
  // Of several members of a name the first one is read; each is visited once.
  keys.sort();
  keys.unique();
  for (const std::string& key : keys) {
    VisitMember(node, key);
  }
}

void RequireRoundTrip(const CJsonObject& root) {
  static const test::CTemporaryDirectory directory;
  const std::string text = root.ToText();
  CJsonObject again;
  again.CreateFromText(text, "again");
  Require(again.ToText() == text, "a written document reads back as it was", text);
  const std::string path = directory.File("saved.json");
  root.SaveToFile(path);
  Require(test::ReadFile(path) == text + "\n", "files and texts are written alike", text);
  CJsonObject other;
  other.SetObjectValue("copy", std::make_shared<CJsonObject>(root));
  if (root.IsObject()) {
    Require(other.GetObjectValue("copy")->ToText() == text, "a copy is as its source", text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::Text(data, size);
  CJsonObject root;
  root.SetStringValue("before", "1");
  const std::string before = root.ToText();
  const test::SError error = test::ErrorOf([&] { root.CreateFromText(text, "text"); });
  RequireOtherAgrees(text, error);
  if (!Succeeded(error)) {
    Require(error.code == kvx::kMalformedDocument && error.message.find("text:") == 0, "the fault has its place",
            error.message);
    fuzz::RequireOneLine(error.message);
    Require(root.ToText() == before, "a failed read leaves the view as it was");
    return 0;
  }
  Visit(root);
  RequireRoundTrip(root);
  return 0;
}
