#include "checkmeta2024/MultiLanguageConfig.h"

#include "kvxsptjson/JsonObject.h"

// NOLINTNEXTLINE(modernize-pass-by-value): the parameter's type is the contract
CMultiLanguageConfig::CMultiLanguageConfig(const std::shared_ptr<CJsonObject>& json) : json_(json) {}

CMultiLanguageConfig::CMultiLanguageConfig(const CMultiLanguageConfig&) = default;

CMultiLanguageConfig& CMultiLanguageConfig::operator=(const CMultiLanguageConfig&) = default;

CMultiLanguageConfig::~CMultiLanguageConfig() = default;

std::shared_ptr<CJsonObject> CMultiLanguageConfig::GetDisplayJson(const std::string& key) const {
  std::shared_ptr<CJsonObject> entry = json_->GetObjectValue(key);
  return entry != nullptr ? entry : std::make_shared<CJsonObject>();
}

std::string CMultiLanguageConfig::GetDisplayString(const std::string& lang, const std::string& key) const {
  const std::shared_ptr<CJsonObject> entry = json_->GetObjectValue(key);
  if (entry == nullptr) {
    return "";
  }
  const auto [found, text] = entry->GetPropertyStringValue(lang);
  return found ? text : "";
}

std::list<std::string> CMultiLanguageConfig::GetDisplayStrings(const std::string& key) const {
  const std::shared_ptr<CJsonObject> entry = json_->GetObjectValue(key);
  std::list<std::string> texts;
  if (entry == nullptr) {
    return texts;
  }
  std::list<std::string> languages;
  entry->GetAllKey(languages);
  for (const std::string& language : languages) {
    texts.push_back(entry->GetStringValue(language));
  }
  return texts;
}
