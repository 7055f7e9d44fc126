#include "upgradesrv/chain/RunNotes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/TemporaryDirectory.h"
#include "upgradecontext/UpgradeContext.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using upgradesrv::RunNotes;

class RunNotesTest : public testing::Test {
 protected:
  RunNotesTest() {
    context_.SetUpgradeCfgPath(directory_.Path());
    context_.SetLang("en");
    context_.SetClientMetaLocation(directory_.Write("client.json", ""));
    context_.SetOriginalMetaLocation(directory_.Write("original.json", ""));
  }

  std::string Metamodels(const std::string& client, const std::string& original) const {
    return "client metamodel " + directory_.File(client) + ", original metamodel " + directory_.File(original);
  }

  test::CTemporaryDirectory directory_;
  CUpgradeContext context_;
};

constexpr const char* kSame = "both metamodels are the same, so that no difference can be found";

TEST_F(RunNotesTest, NameBothMetamodels) {
  EXPECT_THAT(RunNotes(context_), ElementsAre(Metamodels("client.json", "original.json")));
}

TEST_F(RunNotesTest, HidePasswords) {
  context_.SetClientMetaLocation("postgresql://host=h password=geheim");
  EXPECT_THAT(RunNotes(context_), ElementsAre(AllOf(StartsWith("client metamodel postgresql://"), HasSubstr("host=h"),
                                                    HasSubstr("password=***"), Not(HasSubstr("geheim")))));
}

TEST_F(RunNotesTest, SayThatBothAreTheSame) {
  context_.SetOriginalMetaLocation(context_.GetClientMetaLocation());
  EXPECT_THAT(RunNotes(context_), ElementsAre(Metamodels("client.json", "client.json"), kSame));
}

TEST_F(RunNotesTest, SayThatBothAreTheSameFile) {
  std::filesystem::remove(directory_.File("original.json"));
  std::filesystem::create_symlink("client.json", directory_.File("original.json"));
  EXPECT_THAT(RunNotes(context_), ElementsAre(Metamodels("client.json", "original.json"), kSame));
}

TEST_F(RunNotesTest, LeaveALocationOfNoKnownFormToTheLoading) {
  context_.SetClientMetaLocation("installation.xml");
  EXPECT_THAT(RunNotes(context_), IsEmpty());
}

}  // namespace
