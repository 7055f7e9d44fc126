#pragma once

#include <list>
#include <memory>
#include <string>

#include "checkmeta2024/checkmeta2024_export.h"

class CJsonObject;

/// The display texts of a dictionary document: { "KEY": { "LANGUAGE": "text", … }, … }. An entry may be null and then
/// has no texts. Nothing is written to the document, which copies share.
///
/// Every lookup throws CKVXException for a key that is missing (0xA4C0003E "json member [KEY] not exist!") or whose
/// entry is neither an object nor null (0xA4C00004 "json member [KEY] is not Object!").
class CHECKMETA2024_EXPORT CMultiLanguageConfig {
 public:
  /// `json`: the parsed dictionary, not null.
  explicit CMultiLanguageConfig(const std::shared_ptr<CJsonObject>& json);
  CMultiLanguageConfig(const CMultiLanguageConfig&);
  CMultiLanguageConfig& operator=(const CMultiLanguageConfig&);
  ~CMultiLanguageConfig();

  /// The entry of a key; an empty object for null. Never an empty pointer.
  std::shared_ptr<CJsonObject> GetDisplayJson(const std::string& key) const;
  /// The text of a key in a language; "" when the entry lacks the language. Mind the order: language, then key.
  std::string GetDisplayString(const std::string& lang, const std::string& key) const;
  /// The texts of a key in all languages, in the order of the document.
  std::list<std::string> GetDisplayStrings(const std::string& key) const;

 private:
  std::shared_ptr<CJsonObject> json_;
};
