#include "upgradesrv/chain/CheckStrategy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "kvxsptjson/JsonObject.h"
#include "support/TemporaryDirectory.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Display texts in which every word has a text in English and in French.
constexpr const char* kTexts = R"({
  "inserted": {"en": "a", "fr": "a"}, "deleted": {"en": "a", "fr": "a"}, "updated": {"en": "a", "fr": "a"},
  "class": {"en": "a", "fr": "a"}, "link": {"en": "a", "fr": "a"}, "behavior": {"en": "a", "fr": "a"},
  "method": {"en": "a", "fr": "a"}, "property": {"en": "a", "fr": "a"}, "internal_name": {"en": "a", "fr": "a"},
  "display_name": {"en": "a", "fr": "a"}, "updated_to": {"en": "a", "fr": "a"}})";

class CheckNotesTest : public testing::Test {
 protected:
  CheckNotesTest() {
    context_.SetUpgradeCfgPath(directory_.Path());
    context_.SetLang("fr");
    strategy_.module = "checkmeta2024";
    strategy_.className = "CCheckMetaStrategy2024";
    strategy_.parameter = std::make_shared<CJsonObject>();
    strategy_.parameter->SetStringArrayValue("execute_elements", {"class"});
    WriteTexts(kTexts);
  }

  std::vector<std::string> Notes() const { return CheckNotes(strategy_, context_); }
  std::string TextsFile() const { return directory_.File("multilanguage/strings/info.json"); }
  void WriteTexts(const std::string& texts) const { directory_.Write("multilanguage/strings/info.json", texts); }
  /// Puts a value in place of the French text of a word.
  void SetText(const std::string& key, const std::string& value) {
    const std::string from = "\"" + key + R"(": {"en": "a", "fr": "a"})";
    std::string texts = test::ReadFile(TextsFile());
    ASSERT_NE(texts.find(from), std::string::npos);
    WriteTexts(texts.replace(texts.find(from), from.size(), "\"" + key + R"(": {"en": "a")" + value + "}"));
  }
  std::string Without(const std::string& keys) const {
    return TextsFile() + " has no text in language \"fr\" for " + keys +
           ", so that these words are missing or wrong in reports";
  }

  test::CTemporaryDirectory directory_;
  CUpgradeContext context_;
  upgradesrv::SStrategyConfiguration strategy_;
};

TEST_F(CheckNotesTest, AreNoneWhereEveryWordHasAText) {
  EXPECT_THAT(Notes(), IsEmpty());
}

TEST_F(CheckNotesTest, SayThatNothingIsChecked) {
  strategy_.parameter->SetStringArrayValue("execute_elements", {});
  EXPECT_THAT(Notes(), ElementsAre("CCheckMetaStrategy2024: \"execute_elements\" is empty, so nothing is checked"));
}

TEST_F(CheckNotesTest, NameAWordWhoseTextIsMissing) {
  SetText("link", "");
  EXPECT_THAT(Notes(), ElementsAre(Without("\"link\"")));
}

TEST_F(CheckNotesTest, NameAWordWhoseTextIsNoString) {
  for (const char* value : {"null", "5", "{}", "[\"a\"]", "true"}) {
    WriteTexts(kTexts);
    SetText("behavior", std::string(", \"fr\": ") + value);
    EXPECT_THAT(Notes(), ElementsAre(Without("\"behavior\""))) << value;
  }
}

TEST_F(CheckNotesTest, NameEveryWordOfTheCheckWithoutText) {
  for (const std::string key : {"inserted", "deleted", "updated", "class", "link", "behavior", "method", "property",
                                "internal_name", "display_name", "updated_to"}) {
    WriteTexts(kTexts);
    SetText(key, ", \"fr\": null");
    EXPECT_THAT(Notes(), ElementsAre(Without("\"" + key + "\"")));
  }
}

TEST_F(CheckNotesTest, NameAWordWhoseEntryIsNull) {
  WriteTexts(R"({"inserted": {"fr": "a"}, "deleted": null, "updated": {"fr": null}})");
  EXPECT_THAT(Notes(), ElementsAre(Without("\"deleted\", \"updated\"")));
}

TEST_F(CheckNotesTest, LeaveAnEmptyTextAlone) {
  SetText("link", R"(, "fr": "")");
  EXPECT_THAT(Notes(), IsEmpty());
}

TEST_F(CheckNotesTest, SayThatTheLanguageIsNotKnown) {
  WriteTexts(R"({"inserted": {"en": "New", "de": "Neu"}, "updated": {"it": "Altro", "en": "Other"}, "x": null})");
  EXPECT_THAT(Notes(), ElementsAre("language \"fr\" is not in " + TextsFile() +
                                   ", so that words are left out of reports; it has de, en, it"));
}

TEST_F(CheckNotesTest, SuggestALanguageThatDiffersInCaseOnly) {
  context_.SetLang("FR");
  EXPECT_THAT(Notes(), ElementsAre("language \"FR\" is not in " + TextsFile() +
                                   ", so that words are left out of reports; it has en, fr; did you mean fr?"));
}

TEST_F(CheckNotesTest, LeaveFaultyTextsToTheCheck) {
  for (const std::string texts : {"", "[]", "{}", R"({"inserted": {}})", R"({"inserted": "New"})"}) {
    WriteTexts(texts);
    EXPECT_THAT(Notes(), IsEmpty()) << texts;
  }
}

}  // namespace
