#include "upgradesrv/RunNotes.h"

#include <algorithm>
#include <filesystem>
#include <list>
#include <memory>
#include <system_error>

#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/UpgradeFiles.h"

namespace upgradesrv {
namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a, b, error);
}

void NoteMetamodels(const CUpgradeContext& context, std::vector<std::string>& notes) {
  const std::string client = OpenMetaStorage(context.GetClientMetaLocation())->Describe();
  const std::string original = OpenMetaStorage(context.GetOriginalMetaLocation())->Describe();
  notes.push_back("client metamodel " + client + ", original metamodel " + original);
  if (IsSameFile(context.GetClientMetaLocation(), context.GetOriginalMetaLocation())) {
    notes.emplace_back("both metamodels are the same, so that no difference can be found");
  }
}

void NoteLanguage(const CUpgradeContext& context, std::vector<std::string>& notes) {
  const std::string file = context.GetUpgradeCfgPath() + kDisplayTextsFile;
  CJsonObject texts;
  texts.CreateFromFile(file);
  std::list<std::string> keys;
  texts.GetAllKey(keys);
  std::list<std::string> known;
  for (const std::string& key : keys) {
    if (const std::shared_ptr<CJsonObject> entry = texts.GetPropertyObjectValue(key); entry != nullptr) {
      std::list<std::string> languages;
      entry->GetAllKey(languages);
      known.splice(known.end(), languages);
    }
  }
  known.sort();
  known.unique();
  if (known.empty() || std::find(known.begin(), known.end(), context.GetLang()) != known.end()) {
    return;
  }
  std::string names;
  for (const std::string& name : known) {
    names += (names.empty() ? "" : ", ") + name;
  }
  notes.push_back("language \"" + context.GetLang() + "\" stands nowhere in " + file +
                  ", so that words of reports are left out; it has " + names);
}

}  // namespace

std::vector<std::string> RunNotes(const CUpgradeContext& context) {
  std::vector<std::string> notes;
  for (const auto note : {&NoteMetamodels, &NoteLanguage}) {
    try {
      note(context, notes);
    } catch (const CKVXException&) {
      // Whoever reads the metamodel or the texts says what is wrong with them.
    }
  }
  return notes;
}

}  // namespace upgradesrv
