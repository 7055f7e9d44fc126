#include "upgradesrv/init/InitUpgrade.h"

#include <algorithm>
#include <filesystem>
#include <list>
#include <memory>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "metareview2024/render/ShellWord.h"
#include "upgrademeta2024/storage/MetaLocation.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/OutputName.h"
#include "upgradesrv/Passwords.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/UpgradeFiles.h"
#include "upgradesrv/init/DisplayTexts.h"
#include "upgradesrv/init/NewDirectory.h"

namespace upgradesrv {
namespace {

constexpr const char* kVersion = "2024";
constexpr const char* kOriginal = "2024/metamodel.json";
constexpr const char* kClient = "installation.json";

std::list<std::string> Languages() {
  CJsonObject texts;
  texts.CreateFromText(std::string(kDisplayTexts), "display texts");
  std::list<std::string> keys;
  texts.GetAllKey(keys);
  std::list<std::string> languages;
  texts.GetObjectValue(keys.front())->GetAllKey(languages);
  languages.sort();
  return languages;
}

std::string Listed(const std::list<std::string>& words) {
  std::string list;
  for (const std::string& word : words) {
    list += (list.empty() ? "" : ", ") + word;
  }
  return list;
}

/// A code such as de_AT or EN means one of the languages, too.
void RequireLanguage(const std::string& lang) {
  const std::list<std::string> languages = Languages();
  const auto isKnown = [&](const std::string& code) {
    return std::find(languages.begin(), languages.end(), code) != languages.end();
  };
  if (isKnown(lang)) {
    return;
  }
  std::string near = lang.substr(0, lang.find_first_of("-_.@"));
  CStringHelper::ToLower(near);
  throw CTrouble("--lang: there are no display texts in \"" + lang + "\"; " +
                 (isKnown(near) ? "did you mean " + near + "? The" : "the") + " languages are " + Listed(languages));
}

/// Refuses a metamodel that no run could load.
void RequireMetamodel(const char* option, const std::optional<std::string>& location) {
  if (!location) {
    return;
  }
  if (WithoutPasswords(*location) != *location) {
    throw CTrouble(std::string(option) +
                   ": the location holds a password, which whoever reads upgrade.json would see; put it into the "
                   "password file (PGPASSFILE)");
  }
  std::error_code error;
  if (std::filesystem::is_fifo(*location, error)) {
    throw CTrouble(std::string(option) + ": " + *location +
                   " is a pipe, which cannot be read again; give the path of a file");
  }
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(*location);
  const SMetaFaults faults = storage->Check();
  if (faults.count == 0) {
    return;
  }
  throw CTrouble(std::string(option) + ": " + faults.words.front() +
                 (faults.count == 1 ? "" : "; this is the first of " + std::to_string(faults.count) + " faults") +
                 "; \"upgradesrv metamodel check\" lists what has to be mended");
}

std::list<std::string> Kinds() {
  std::list<std::string> kinds;
  const std::string names = KindNames();
  for (std::size_t begin = 0; begin < names.size();) {
    const std::size_t end = std::min(names.find(", ", begin), names.size());
    kinds.push_back(names.substr(begin, end - begin));
    begin = end + 2;
  }
  return kinds;
}

/// The text of upgrade.json.
std::string Configuration(const SInitArguments& arguments) {
  const auto location = [&](const std::optional<std::string>& given, const char* otherwise) {
    return given ? RelateMetaLocation(*given, arguments.directory) : otherwise;
  };
  const auto parameter = std::make_shared<CJsonObject>();
  parameter->SetStringArrayValue("execute_elements", Kinds());
  const auto strategy = std::make_shared<CJsonObject>();
  strategy->SetStringValue("module", "checkmeta2024");
  strategy->SetStringValue("class", "CCheckMetaStrategy2024");
  strategy->SetObjectValue("parameter", parameter);
  CJsonObject upgrade;
  upgrade.SetStringValue("lang", arguments.lang);
  upgrade.SetStringValue("version", kVersion);
  upgrade.SetStringValue("original_metamodel", location(arguments.original, kOriginal));
  upgrade.SetStringValue("client_metamodel", location(arguments.client, kClient));
  if (arguments.base) {
    upgrade.SetStringValue("base_metamodel", location(arguments.base, ""));
  }
  upgrade.SetObjectArrayValue("strategies", {strategy});
  return upgrade.ToText() + "\n";
}

std::string NextSteps(const SInitArguments& arguments) {
  const auto word = [&](const std::string& path) { return metareview::ShellWord(arguments.directory + path); };
  std::string text = arguments.directory + " is ready. Next:\n\n";
  if (!arguments.original) {
    text += "  upgradesrv metamodel copy SHIPPED " + word(std::string("/") + kOriginal) + "\n";
  }
  if (!arguments.client) {
    text += "  upgradesrv metamodel copy INSTALLED " + word(std::string("/") + kClient) + "\n";
  }
  text += "  upgradesrv run " + word("") + "\n  upgradesrv review " + word("") + "\n";
  if (!arguments.original || !arguments.client) {
    text += "\n";
    if (!arguments.original) {
      text += "SHIPPED is the metamodel that is shipped with the new version.\n";
    }
    if (!arguments.client) {
      text += "INSTALLED is the metamodel of the installation.\n";
    }
    text +=
        "Metamodels are documents or databases: \"upgradesrv metamodel copy --help\" says which. Instead of a copy,\n" +
        arguments.directory + kConfigurationFile + " may name the place that a metamodel is in.\n";
  }
  return text;
}

}  // namespace

EExitStatus InitUpgrade(const SInitArguments& given) {
  SInitArguments arguments = given;
  while (arguments.directory.size() > 1 && arguments.directory.back() == '/') {
    arguments.directory.pop_back();
  }
  if (const std::string problem = OutputNameProblem(arguments.directory, "directory"); !problem.empty()) {
    throw CTrouble("-: " + problem);
  }
  RequireLanguage(arguments.lang);
  RequireMetamodel("--original", arguments.original);
  RequireMetamodel("--client", arguments.client);
  RequireMetamodel("--base", arguments.base);
  CNewDirectory directory(arguments.directory);
  directory.MakeDirectory("multilanguage");
  directory.MakeDirectory("multilanguage/strings");
  directory.WriteFile(kDisplayTextsFile + 1, kDisplayTexts);
  directory.MakeDirectory(kVersion);
  directory.WriteFile(kConfigurationFile + 1, Configuration(arguments));
  directory.Keep();
  WriteOutput(NextSteps(arguments));
  return kNothingToReport;
}

}  // namespace upgradesrv
