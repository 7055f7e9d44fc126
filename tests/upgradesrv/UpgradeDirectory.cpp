#include "UpgradeDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace test {
namespace {

const std::string kEarlierDocument = "the document of an earlier run\n";

const std::string kOriginal = R"({
  "generation": 2024,
  "classes": [ { "internal_name": "Part", "display_name": "Part" },
               { "internal_name": "Document", "display_name": "Document" } ],
  "links": [ { "internal_name": "Refers", "display_name": "Refers to" },
             { "internal_name": "Uses", "display_name": "Uses" } ],
  "behaviors": [ { "internal_name": "Versioned", "display_name": "Versioned" },
                 { "internal_name": "Approvable", "display_name": "Approvable" } ]
}
)";

const std::string kClient = R"({
  "generation": 2024,
  "classes": [ { "internal_name": "Part", "display_name": "Part" } ],
  "links": [ { "internal_name": "Refers", "display_name": "Refers to" } ],
  "behaviors": [ { "internal_name": "Versioned", "display_name": "Versioned" } ]
}
)";

const std::string kDisplayTexts = R"({
  "inserted": { "en": "New ", "de": "Neu: " },
  "deleted": { "en": "Deleted ", "de": "Entfernt: " },
  "updated": { "en": "Changed ", "de": "Anders: " },
  "class": { "en": "class", "de": "Klasse" },
  "link": { "en": "link", "de": "Verbindung" },
  "behavior": { "en": "behavior", "de": "Verhalten" },
  "method": { "en": "method", "de": "Methode" },
  "property": { "en": "property", "de": "Merkmal" },
  "internal_name": { "en": "name", "de": "Name" },
  "display_name": { "en": "shown as", "de": "Anzeige" },
  "updated_to": { "en": " now", "de": " jetzt" }
}
)";

const UpgradeChanges kUpgrade = {
    {"lang", R"("en")"},
    {"version", R"("2024")"},
    {"original_metamodel", R"("2024/metamodel.json")"},
    {"client_metamodel", R"("installation.json")"},
    {"strategies",
     R"([{"module": "checkmeta2024", "class": "CCheckMetaStrategy2024",
    "parameter": {"execute_elements": ["class", "link", "behavior"]}}])"},
};

}  // namespace

SProcessResult RunTool(const std::vector<std::string>& arguments, const std::string& workingDirectory) {
  std::vector<std::string> command = {UPGRADESRV_EXECUTABLE};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return Run(command, workingDirectory);
}

SProcessResult RunInShell(const std::string& command, const std::string& argument) {
  return Run({"/bin/sh", "-c", command, UPGRADESRV_EXECUTABLE, argument});
}

std::string ErrorOf(const SProcessResult& result) {
  EXPECT_EQ(result.status, 2) << result.errors;
  const std::string mark = "upgradesrv: error: ";
  std::vector<std::string> errors;
  std::istringstream lines(result.errors);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(mark, 0) == 0) {
      errors.push_back(line.substr(mark.size()));
    }
  }
  EXPECT_EQ(errors.size(), 1U) << result.errors;
  return errors.empty() ? "" : errors.front();
}

std::string TroubleOf(const SProcessResult& result) {
  EXPECT_EQ(result.output, "");
  return ErrorOf(result);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

CUpgradeDirectory::CUpgradeDirectory() {
  Write("2024/metamodel.json", kOriginal);
  Write("installation.json", kClient);
  Write("multilanguage/strings/info.json", kDisplayTexts);
  Write("2024/checkMetaError.json", kEarlierDocument);
  WriteUpgrade({});
}

void CUpgradeDirectory::WriteUpgrade(const UpgradeChanges& changes) const {
  UpgradeChanges members = kUpgrade;
  for (const auto& [name, value] : changes) {
    const auto member = std::find_if(members.begin(), members.end(),
                                     [&name = name](const auto& candidate) { return candidate.first == name; });
    if (member != members.end()) {
      member->second = value;
    } else {
      members.emplace_back(name, value);
    }
  }
  std::string text;
  for (const auto& [name, value] : members) {
    if (!value.empty()) {
      text += (text.empty() ? "" : ",\n  ") + ("\"" + name + "\": ") + value;
    }
  }
  Write("upgrade.json", "{\n  " + text + "\n}\n");
}

void CUpgradeDirectory::UseStranger(const std::string& className) const {
  WriteUpgrade({{"strategies", R"([{"module": "strangers", "class": ")" + className + R"("}])"}});
}

SProcessResult CUpgradeDirectory::Run(std::vector<std::string> options) const {
  options.insert(options.begin(), "run");
  options.push_back(Path());
  return RunTool(options);
}

SProcessResult CUpgradeDirectory::RunTestModules() const {
  return Run({"--module-dir", UPGRADESRV_TEST_MODULE_DIRECTORY});
}

std::string CUpgradeDirectory::Trouble(const std::vector<std::string>& options) const {
  const std::string error = TroubleOf(Run(options));
  EXPECT_TRUE(HasEarlierDocument());
  return error;
}

std::string CUpgradeDirectory::TroubleWithTestModules() const {
  return Trouble({"--module-dir", UPGRADESRV_TEST_MODULE_DIRECTORY});
}

std::string CUpgradeDirectory::Notes(const std::string& client) const {
  return "upgradesrv: client metamodel " + File(client) + ", original metamodel " + File("2024/metamodel.json") + "\n";
}

std::string CUpgradeDirectory::CheckNotes(const std::string& outcome) const {
  const std::string check = "upgradesrv: CCheckMetaStrategy2024: ";
  return check + outcome + "\n" + check +
         "not in the report: display names, identifiers, tables, fields, lookups, behaviors of links, and kinds with "
         "insertions only; run "
         "\"upgradesrv "
         "review " +
         Path() + "\" for every difference\n";
}

bool CUpgradeDirectory::HasEarlierDocument() const {
  return Document() == kEarlierDocument;
}

}  // namespace test
