// The display dictionary of a run: what is wrong with it shows only after the check itself has ended, with its document
// saved.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;

const std::string kFile = "multilanguage/strings/info.json";
const std::string kCheck = " (strategy CCheckMetaStrategy2024 of module checkmeta2024, /strategies/0)";

class DisplayTextsTest : public testing::Test {
 protected:
  /// What a run complains of that ends only after the document has been saved.
  std::string TroubleWithSavedDocument() const {
    const std::string trouble = test::TroubleOf(upgrade_.Run());
    EXPECT_THAT(upgrade_.Document(), HasSubstr("deleted_classes"));
    return trouble;
  }

  void Replace(const std::string& from, const std::string& to) const {
    const std::string text = test::ReadFile(upgrade_.File(kFile));
    ASSERT_THAT(text, HasSubstr(from));
    upgrade_.Write(kFile, test::Replaced(text, from, to));
  }

  std::string WithPlace(const std::string& problem, const std::string& key) const {
    return problem + "; look at " + upgrade_.File(kFile) + ": /" + key + kCheck;
  }

  test::CUpgradeDirectory upgrade_;
};

TEST_F(DisplayTextsTest, ThatAreMissingAreTrouble) {
  std::filesystem::remove(upgrade_.File(kFile));
  EXPECT_EQ(TroubleWithSavedDocument(), upgrade_.File(kFile) + ": cannot be read: No such file or directory" + kCheck);
}

TEST_F(DisplayTextsTest, ThatAreMalformedAreTroubleAtLineAndColumn) {
  upgrade_.Write(kFile, "{\n  \"inserted\": {\n");
  EXPECT_EQ(TroubleWithSavedDocument(), upgrade_.File(kFile) + ":3:1: Missing a name for object member." + kCheck);
}

TEST_F(DisplayTextsTest, ThatLackAKeyAreTrouble) {
  Replace("\"deleted\"", "\"removed\"");
  EXPECT_EQ(TroubleWithSavedDocument(), WithPlace("json member [deleted] not exist!, code 0xA4C0003E", "deleted"));
}

TEST_F(DisplayTextsTest, WithAnEntryThatIsNotAnObjectAreTrouble) {
  Replace(R"({ "en": "link", "de": "Verbindung" })", "\"link\"");
  EXPECT_EQ(TroubleWithSavedDocument(), WithPlace("json member [link] is not Object!, code 0xA4C00004", "link"));
}

TEST_F(DisplayTextsTest, WhoseRootIsNotAnObjectAreTrouble) {
  upgrade_.Write(kFile, "[]");
  EXPECT_EQ(TroubleWithSavedDocument(), WithPlace("json member [deleted] not exist!, code 0xA4C0003E", "deleted"));
}

TEST_F(DisplayTextsTest, AreNotReadWhenThereIsNothingToReport) {
  std::filesystem::remove(upgrade_.File(kFile));
  upgrade_.WriteUpgrade({{"client_metamodel", R"("2024/metamodel.json")"}});
  EXPECT_EQ(upgrade_.Run().status, 0);
}

TEST_F(DisplayTextsTest, InTheLanguageOfTheUpgradeFileAreUsed) {
  upgrade_.WriteUpgrade({{"lang", R"("de")"}});
  EXPECT_THAT(upgrade_.Run().output, testing::StartsWith("\nEntfernt: Verhalten:\n Name:Approvable,Anzeige:"));
}

TEST_F(DisplayTextsTest, WithoutTheLanguageGiveEmptyWordsAndANote) {
  const test::SProcessResult result = upgrade_.Run({"--lang", "fr", "--elements", "class"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "\n:\n :Document,:Document\n\n");
  EXPECT_EQ(result.errors, upgrade_.Notes() + "upgradesrv: language \"fr\" is not in " + upgrade_.File(kFile) +
                               ", so that words are left out of reports; it has de, en\n" +
                               upgrade_.CheckNotes("differences reported"));
}

}  // namespace
