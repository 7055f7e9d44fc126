// Whole runs: the real executable with the real module. Each folder beside this file that has a case.json is one case;
// see README.md here. The metamodels are documents; with the environment variable UPGRADESRV_CASES_STORAGE "sqlite" or
// "postgresql" they are copied into databases first, which must not make a difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"
#include "support/TestStorage.h"

namespace {

namespace fs = std::filesystem;

const std::string kSourceDirectory = UPGRADESRV_SOURCE_DIR;
const std::string kCases = kSourceDirectory + "/tests/cases";

test::EStorage StorageOfCases() {
  const char* value = std::getenv("UPGRADESRV_CASES_STORAGE");
  const std::string name = value == nullptr ? "" : value;
  if (name.empty()) {
    return test::EStorage::kDocument;
  }
  if (name != "sqlite" && name != "postgresql") {
    throw std::invalid_argument("UPGRADESRV_CASES_STORAGE: " + name);
  }
  return name == "sqlite" ? test::EStorage::kSqlite : test::EStorage::kPostgresql;
}

struct SCase {
  std::string folder;
  std::string lang;
};

std::string TextFile(const SCase& testCase) {
  return testCase.folder + "/error_info." + testCase.lang + ".txt";
}

/// The languages for which a case has a text; English alone, with no text expected, when it has none.
std::vector<std::string> Languages(const std::string& folder) {
  const std::string prefix = "error_info.";
  std::vector<std::string> languages;
  for (const auto& file : fs::directory_iterator(folder)) {
    const std::string name = file.path().filename();
    if (name.compare(0, prefix.size(), prefix) == 0) {
      languages.push_back(name.substr(prefix.size(), name.size() - prefix.size() - std::string(".txt").size()));
    }
  }
  std::sort(languages.begin(), languages.end());
  return languages.empty() ? std::vector<std::string>{"en"} : languages;
}

std::string DisplayTexts(const std::string& folder, const CJsonObject& description) {
  if (const auto [named, path] = description.GetPropertyStringValue("info"); named) {
    return kSourceDirectory + "/" + path;
  }
  const std::string own = folder + "/info.json";
  return fs::exists(own) ? own : kCases + "/info.json";
}

/// The messages of the log's error lines, in order.
std::vector<std::string> LoggedErrors(const std::string& errors) {
  std::vector<std::string> messages;
  std::istringstream lines(errors);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("ERROR ", 0) == 0) {
      messages.push_back(line.substr(line.find(" - ") + 3));
    }
  }
  return messages;
}

class CaseTest : public testing::Test {
 public:
  explicit CaseTest(SCase testCase) : case_(std::move(testCase)) {}

  void TestBody() override {
    CJsonObject description;
    description.CreateFromFile(case_.folder + "/case.json");
    SetUpDirectory(description);

    const test::SProcessResult result =
        test::Run({UPGRADESRV_EXECUTABLE, "run", "--lang", case_.lang, directory_.Path()});

    EXPECT_EQ(std::to_string(result.status), description.GetStringValue("exit_status")) << result.errors;
    const std::string expectedDocument = case_.folder + "/checkMetaError.json";
    const std::string document = directory_.File("2024/checkMetaError.json");
    if (fs::exists(expectedDocument)) {
      ExpectSameFile(expectedDocument, document);
    } else {
      EXPECT_FALSE(fs::exists(document));
    }
    const std::string expectedText = fs::exists(TextFile(case_)) ? TextFile(case_) : directory_.Write("none", "");
    ExpectSameFile(expectedText, directory_.Write("output", result.output));
    std::vector<std::string> expectedLog;
    for (const std::string& message : description.GetPropertyStringArrayValue("log").second) {
      expectedLog.push_back(CStringHelper::ToVisible(message));
    }
    EXPECT_EQ(LoggedErrors(result.errors), expectedLog);
    const bool failed = result.status == 2;
    EXPECT_EQ(result.errors.find("upgradesrv: error: ") != std::string::npos, failed) << result.errors;
  }

 private:
  void SetUpDirectory(const CJsonObject& description) {
    const auto copy = [this](const std::string& from, const std::string& to) {
      directory_.Write(to, test::ReadFile(from));
    };
    copy(DisplayTexts(case_.folder, description), "multilanguage/strings/info.json");
    copy(case_.folder + "/original.json", "2024/metamodel.json");
    copy(case_.folder + "/client.json", "installation.json");
    const std::string original = Store("2024/metamodel");
    const std::string client = Store("installation");

    std::list<std::string> elements = {"class", "link", "behavior"};
    if (description.HasMember("execute_elements")) {
      elements = description.GetStringArrayValue("execute_elements");
    }
    const auto parameter = std::make_shared<CJsonObject>();
    parameter->SetStringArrayValue("execute_elements", elements);
    const auto strategy = std::make_shared<CJsonObject>();
    strategy->SetStringValue("module", "checkmeta2024");
    strategy->SetStringValue("class", "CCheckMetaStrategy2024");
    strategy->SetObjectValue("parameter", parameter);
    CJsonObject upgrade;
    upgrade.SetStringValue("lang", "en");
    upgrade.SetStringValue("version", "2024");
    upgrade.SetStringValue("original_metamodel", original);
    upgrade.SetStringValue("client_metamodel", client);
    upgrade.SetObjectArrayValue("strategies", {strategy});
    upgrade.SaveToFile(directory_.File("upgrade.json"));
  }

  /// Moves a document, named without its ending, into the storage that the cases run with. Answers with its location.
  std::string Store(const std::string& name) {
    const std::string document = directory_.File(name + ".json");
    switch (StorageOfCases()) {
      case test::EStorage::kDocument:
        return name + ".json";
      case test::EStorage::kSqlite:
        Move(document, directory_.File(name + ".db"));
        return "sqlite3://" + name + ".db";
      default:
        schemas_.push_back(std::make_unique<test::CTestStorage>(test::EStorage::kPostgresql));
        Move(document, schemas_.back()->Location());
        return schemas_.back()->Location();
    }
  }

  static void Move(const std::string& document, const std::string& location) {
    const test::SProcessResult result = test::Run({UPGRADESRV_EXECUTABLE, "metamodel", "copy", document, location});
    EXPECT_EQ(result.status, 0) << result.errors;
    fs::remove(document);
  }

  static void ExpectSameFile(const std::string& expected, const std::string& actual) {
    ASSERT_TRUE(fs::exists(actual)) << actual << " was not written";
    if (test::ReadFile(expected) != test::ReadFile(actual)) {
      ADD_FAILURE() << test::Run({"/usr/bin/diff", "-u", "--text", expected, actual}).output;
    }
  }

  SCase case_;
  test::CTemporaryDirectory directory_;
  std::vector<std::unique_ptr<test::CTestStorage>> schemas_;
};

void RegisterCases() {
  std::vector<fs::path> folders;
  for (const auto& entry : fs::directory_iterator(kCases)) {
    if (fs::exists(entry.path() / "case.json")) {
      folders.push_back(entry.path());
    }
  }
  std::sort(folders.begin(), folders.end());
  for (const fs::path& folder : folders) {
    for (const std::string& lang : Languages(folder)) {
      const SCase testCase{folder, lang};
      testing::RegisterTest(folder.filename().c_str(), lang.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                            [testCase]() -> testing::Test* { return std::make_unique<CaseTest>(testCase).release(); });
    }
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  RegisterCases();
  return RUN_ALL_TESTS();
}
