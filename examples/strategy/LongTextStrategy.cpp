#include "LongTextStrategy.h"

#include <kvxsptexception/ErrorCodes.h>
#include <kvxsptexception/KVXException.h>
#include <kvxsptjson/JsonObject.h>
#include <kvxsptlog/Log.h>
#include <upgradecontext/UpgradeContext.h>
#include <upgrademeta2024/MetaDictionary2024.h>
#include <upgrademeta2024/MetaMgr2024.h>

#include <charconv>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <system_error>

namespace {

constexpr int kInfo = 20000;

std::uint32_t MaxLength(const CJsonObject& parameter) {
  const std::string text = parameter.GetStringValue("max_length");
  const char* const end = text.data() + text.size();
  std::uint32_t length = 0;
  const auto [rest, error] = std::from_chars(text.data(), end, length);
  if (error != std::errc() || rest != end) {
    throw CKVXException(kvx::kJsonWrongType, "max_length: \"" + text + "\" is no length; write a whole number");
  }
  return length;
}

/// A text in the language of the run, or in English where that has none.
std::string DisplayText(const CUpgradeContext& upgradeContext, const std::string& key) {
  const std::string file = upgradeContext.GetUpgradeCfgPath() + "/multilanguage/strings/customrules.json";
  CJsonObject texts;
  texts.CreateFromFile(file);
  const auto languages = texts.GetPropertyObjectValue(key);
  if (languages == nullptr) {
    throw CKVXException(kvx::kJsonMemberMissing, file + ": the text \"" + key + "\" is missing; add it");
  }
  for (const std::string& lang : {upgradeContext.GetLang(), std::string("en")}) {
    const auto [found, text] = languages->GetPropertyStringValue(lang);
    if (found) {
      return text;
    }
  }
  throw CKVXException(kvx::kJsonMemberMissing, file + ": /" + key + ": there is no text in \"" +
                                                   upgradeContext.GetLang() + "\" and none in \"en\"; add one");
}

}  // namespace

void CLongTextStrategy::Invoke(CHandlerContext& /*handlerContext*/, CUpgradeContext& upgradeContext) {
  const std::uint32_t maxLength = MaxLength(*GetParameter());
  const auto metamodel = CMetaMgr2024::Instance().LoadClientMeta(upgradeContext);

  std::list<std::shared_ptr<CJsonObject>> entries;
  std::string lines;
  for (const auto& element : metamodel->GetClasses()) {
    for (const auto& property : element->GetProperties()) {
      if (property->GetType() != "string" || property->GetLength() <= maxLength) {
        continue;
      }
      const std::string name = element->GetInternalName() + "." + property->GetInternalName();
      CLog::Print(__FILE__, __LINE__, __func__, "customrules", kInfo, "too long: " + name);

      const auto entry = std::make_shared<CJsonObject>();
      entry->SetStringValue("class", element->GetInternalName());
      entry->SetStringValue("property", property->GetInternalName());
      entry->SetUInt32Value("length", property->GetLength());
      entries.push_back(entry);
      lines.append("  ").append(name).append(": ").append(std::to_string(property->GetLength())).append("\n");
    }
  }

  CJsonObject document;
  document.SetObjectArrayValue("long_texts", entries);
  document.SaveToFile(upgradeContext.GetVersionUpgradeCfgPath() + "/longTexts.json");

  if (!entries.empty()) {
    const auto result = std::make_shared<CJsonObject>();
    result->SetStringValue("error_info", DisplayText(upgradeContext, "long_texts") + ":\n" + lines);
    SetResult(result);
  }
}
