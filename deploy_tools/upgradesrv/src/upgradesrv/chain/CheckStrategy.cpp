#include "upgradesrv/chain/CheckStrategy.h"

#include <algorithm>
#include <array>
#include <list>
#include <memory>
#include <set>

#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"
#include "upgradesrv/chain/UpgradeFiles.h"

namespace upgradesrv {
namespace {

constexpr const char* kModule = "checkmeta2024";
constexpr const char* kClass = "CCheckMetaStrategy2024";

constexpr const char* kKindsMember = "execute_elements";
constexpr std::array<const char*, 3> kKinds = {"class", "link", "behavior"};

constexpr std::array<const char*, 11> kDisplayKeys = {"inserted",      "deleted",      "updated",   "class",
                                                      "link",          "behavior",     "method",    "property",
                                                      "internal_name", "display_name", "updated_to"};

bool IsSameIgnoringCase(const std::string& a, const std::string& b) {
  return CStringHelper::StringCompare(a, b, /*ignoreCase=*/true) == 0;
}

template <typename Texts>
std::string Joined(const Texts& texts, const std::string& quote = "") {
  std::string joined;
  for (const auto& text : texts) {
    joined.append(joined.empty() ? "" : ", ").append(quote).append(text).append(quote);
  }
  return joined;
}

std::string DisplayTextsFile(const CUpgradeContext& context) {
  return context.GetUpgradeCfgPath() + kDisplayTextsFile;
}

std::set<std::string> Languages(const CJsonObject& texts) {
  std::set<std::string> languages;
  std::list<std::string> keys;
  texts.GetAllKey(keys);
  for (const std::string& key : keys) {
    if (const std::shared_ptr<CJsonObject> entry = texts.GetPropertyObjectValue(key); entry != nullptr) {
      std::list<std::string> found;
      entry->GetAllKey(found);
      languages.insert(found.begin(), found.end());
    }
  }
  return languages;
}

/// The display keys without a text in a language, although they have an entry: without one the check fails.
std::vector<std::string> KeysWithoutText(const CJsonObject& texts, const std::string& language) {
  std::vector<std::string> keys;
  for (const std::string key : kDisplayKeys) {
    const std::shared_ptr<CJsonObject> entry = texts.GetPropertyObjectValue(key);
    if (texts.HasMember(key) && (entry == nullptr || !entry->IsString(language))) {
      keys.push_back(key);
    }
  }
  return keys;
}

std::string UnknownLanguageNote(const std::string& language, const std::set<std::string>& known,
                                const std::string& file) {
  const auto meant = std::find_if(known.begin(), known.end(),
                                  [&language](const std::string& name) { return IsSameIgnoringCase(name, language); });
  return "language \"" + language + "\" is not in " + file + ", so that words are left out of reports; it has " +
         Joined(known) + (meant == known.end() ? "" : "; did you mean " + *meant + "?");
}

/// Empty for nothing to note.
std::string DisplayTextsNote(const std::string& language, const std::string& file) {
  CJsonObject texts;
  texts.CreateFromFile(file);
  const std::set<std::string> known = Languages(texts);
  if (known.empty()) {
    return "";
  }
  if (known.count(language) == 0) {
    return UnknownLanguageNote(language, known, file);
  }
  const std::vector<std::string> keys = KeysWithoutText(texts, language);
  return keys.empty() ? ""
                      : file + " has no text in language \"" + language + "\" for " + Joined(keys, "\"") +
                            ", so that these words are missing or wrong in reports";
}

}  // namespace

bool IsKind(const std::string& kind) {
  return std::find(kKinds.begin(), kKinds.end(), kind) != kKinds.end();
}

std::string KindNames() {
  return Joined(kKinds);
}

bool IsCheck(const SStrategyConfiguration& strategy) {
  return strategy.module == kModule && IsSameIgnoringCase(strategy.className, kClass);
}

bool ReplaceKinds(const SStrategyConfiguration& strategy, const std::vector<std::string>& kinds) {
  if (!strategy.parameter->HasMember(kKindsMember)) {
    return false;
  }
  strategy.parameter->SetStringArrayValue(kKindsMember, {kinds.begin(), kinds.end()});
  return true;
}

void RequireCheckParameter(const SStrategyConfiguration& strategy) {
  const std::string place = strategy.place + "/parameter";
  if (!strategy.parameter->HasMember(kKindsMember)) {
    throw CTrouble(place + ": member \"" + kKindsMember + "\" is missing; it lists the kinds to check: " + KindNames());
  }
  const std::string list = place + "/" + kKindsMember;
  const auto [isList, kinds] = strategy.parameter->GetPropertyStringArrayValue(kKindsMember);
  if (!isList) {
    throw CTrouble(list + ": must be an array of strings, the kinds to check: " + KindNames());
  }
  std::size_t index = 0;
  for (const std::string& kind : kinds) {
    if (!IsKind(kind)) {
      std::string problem = list;
      problem.append("/").append(std::to_string(index)).append(": unknown kind \"").append(kind);
      throw CTrouble(problem.append("\"; the kinds are ").append(KindNames()));
    }
    ++index;
  }
}

std::vector<std::string> CheckNotes(const SStrategyConfiguration& strategy, const CUpgradeContext& context) {
  std::vector<std::string> notes;
  if (strategy.parameter->GetStringArrayValue(kKindsMember).empty()) {
    notes.push_back(strategy.className + ": \"" + kKindsMember + "\" is empty, so nothing is checked");
  }
  try {
    if (const std::string note = DisplayTextsNote(context.GetLang(), DisplayTextsFile(context)); !note.empty()) {
      notes.push_back(note);
    }
  } catch (const CKVXException&) {
    // Whoever reads the texts says what is wrong with them.
  }
  return notes;
}

std::string CheckDocument(const CUpgradeContext& context) {
  return context.GetVersionUpgradeCfgPath() + "/checkMetaError.json";
}

std::string NoteOnReport(const SStrategyConfiguration& strategy, const std::string& command) {
  return strategy.className +
         ": not in the report: display names, identifiers, tables, fields, lookups, behaviors of links, and kinds with "
         "insertions only; run "
         "\"" +
         command + "\" for every difference";
}

std::string PlaceOfDisplayText(const CKVXException& failure, const CUpgradeContext& context) {
  const std::string message = failure.what();
  for (const std::string key : kDisplayKeys) {
    const std::string member = "json member [" + key + "] ";
    if (message == member + "not exist!" || message == member + "is not Object!") {
      return DisplayTextsFile(context) + ": /" + key;
    }
  }
  return "";
}

}  // namespace upgradesrv
