#include "checkmeta2024/CheckMeta2024Helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "checkmeta2024/MetaKindRow.h"
#include "kvxsptexception/KVXException.h"
#include "support/Error.h"

namespace {

using test::ErrorLineAt;
using test::ErrorOf;
using test::Findings;
using test::Keys;
using test::Names;
using test::SElement;
using test::SError;
using test::SMetaKindRow;
using testing::ElementsAre;
using testing::IsEmpty;

using Elements = std::vector<SElement>;

constexpr const char* kFile = "CheckMeta2024Helper.cpp";

/// The checks of one kind between two metamodels that hold only elements of that kind.
class CheckMeta2024HelperTest : public testing::TestWithParam<SMetaKindRow> {
 protected:
  void Set(const Elements& client, const Elements& original) const {
    folder_.SetClient(GetParam().model(client));
    folder_.SetOriginal(GetParam().model(original));
  }

  bool CheckWithDocument() { return (helper_.*GetParam().checkWithDocument)(document_); }
  bool Check() { return (helper_.*GetParam().check)(); }

  /// The kind object of the document.
  std::shared_ptr<CJsonObject> Section() const { return document_->GetObjectValue(GetParam().kind); }

  /// The check without a document fails with this line for this element and with the kind's code alone.
  void ExpectFailure(const std::string& name, int line) {
    const test::CLogCapture log;
    EXPECT_EQ(ErrorOf([this] { Check(); }), (SError{GetParam().code, "error 0x" + GetParam().codeText}));
    ASSERT_THAT(log.Lines(), testing::Not(IsEmpty()));
    EXPECT_THAT(log.Lines().back(), ErrorLineAt(line, kFile, GetParam().function,
                                                GetParam().logPrefix + name + "<hr=0x" + GetParam().codeText + ">"));
  }

  test::CUpgradeFolder folder_;
  CCheckMeta2024Helper helper_{folder_.handlerContext, folder_.context};
  std::shared_ptr<CJsonObject> document_ = std::make_shared<CJsonObject>();
};

TEST_P(CheckMeta2024HelperTest, IdenticalMetamodelsPassAndLeaveTheDocumentUntouched) {
  Set({{"A"}, {"B"}}, {{"A"}, {"B"}});
  const test::CLogCapture log;
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_EQ(document_->ToText(), "{}");
  EXPECT_TRUE(Check());
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_P(CheckMeta2024HelperTest, EmptyMetamodelsPass) {
  Set({}, {});
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_EQ(document_->ToText(), "{}");
  EXPECT_TRUE(Check());
}

TEST_P(CheckMeta2024HelperTest, InsertedElementsAlonePassAndAreNotReported) {
  Set({{"New"}, {"A"}}, {{"A"}});
  const test::CLogCapture log;
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_EQ(document_->ToText(), "{}");
  EXPECT_TRUE(Check());
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_P(CheckMeta2024HelperTest, InsertedElementsAreReportedBesideADeletion) {
  Set({{"Same"}, {"A"}}, {{"B"}, {"Same"}});
  const test::CLogCapture log;
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_THAT(Keys(*document_), ElementsAre(GetParam().kind));
  EXPECT_THAT(Keys(*Section()), ElementsAre(GetParam().insertedKey, GetParam().deletedKey));
  EXPECT_THAT(Names(*Section(), GetParam().insertedKey), ElementsAre("A"));
  EXPECT_THAT(Names(*Section(), GetParam().deletedKey), ElementsAre("B"));
}

TEST_P(CheckMeta2024HelperTest, AChangedElementIsUpdatedAndAnEqualOneIsWrittenNowhere) {
  Set({{"Changed", 64}, {"Equal"}}, {{"Equal"}, {"Changed"}});
  const test::CLogCapture log;
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_THAT(Keys(*Section()), ElementsAre(GetParam().updatedKey));
  EXPECT_THAT(Findings(*document_), ElementsAre(GetParam().kind + " " + GetParam().updatedKey +
                                                " Changed updated_properties Code.length: 32 > 64"));
}

TEST_P(CheckMeta2024HelperTest, ADeletedElementAloneIsReported) {
  Set({}, {{"A"}});
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(Findings(*document_), ElementsAre(GetParam().kind + " " + GetParam().deletedKey + " A"));
  EXPECT_THAT(Keys(*Section()), ElementsAre(GetParam().deletedKey));
}

TEST_P(CheckMeta2024HelperTest, FindingsFollowTheListsAndStandAsInsertedUpdatedDeleted) {
  Set({{"N2"}, {"C2", 1}, {"N1"}, {"Same"}, {"C1", 1}}, {{"D2"}, {"C1"}, {"C2"}, {"D1"}, {"Same"}});
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(Keys(*Section()), ElementsAre(GetParam().insertedKey, GetParam().updatedKey, GetParam().deletedKey));
  EXPECT_THAT(Names(*Section(), GetParam().insertedKey), ElementsAre("N2", "N1"));
  EXPECT_THAT(Names(*Section(), GetParam().updatedKey), ElementsAre("C2", "C1"));
  EXPECT_THAT(Names(*Section(), GetParam().deletedKey), ElementsAre("D2", "D1"));
}

TEST_P(CheckMeta2024HelperTest, ElementsMatchAsTheLookupOfTheMetamodelDoes) {
  Set({{"PART"}}, {{"Part"}});
  EXPECT_TRUE(CheckWithDocument());
  EXPECT_TRUE(Check());
}

TEST_P(CheckMeta2024HelperTest, ElementsOfOtherKindsWithTheNameAreNoMatch) {
  test::SModel client;
  for (const SMetaKindRow& other : test::MetaKindRows()) {
    if (other.kind != GetParam().kind) {
      const test::SModel model = other.model({{"A"}});
      client.classes.insert(client.classes.end(), model.classes.begin(), model.classes.end());
      client.links.insert(client.links.end(), model.links.begin(), model.links.end());
      client.behaviors.insert(client.behaviors.end(), model.behaviors.begin(), model.behaviors.end());
    }
  }
  folder_.SetClient(client);
  folder_.SetOriginal(GetParam().model({{"A"}}));
  for (const SMetaKindRow& row : test::MetaKindRows()) {
    EXPECT_EQ((helper_.*row.checkWithDocument)(document_), row.kind != GetParam().kind) << row.kind;
  }
  EXPECT_THAT(Findings(*document_), ElementsAre(GetParam().kind + " " + GetParam().deletedKey + " A"));
}

TEST_P(CheckMeta2024HelperTest, ASecondCheckReplacesTheMemberOfTheFirst) {
  Set({}, {{"First"}});
  EXPECT_FALSE(CheckWithDocument());
  Set({}, {{"Second"}});
  CCheckMeta2024Helper second(folder_.handlerContext, folder_.context);
  EXPECT_FALSE((second.*GetParam().checkWithDocument)(document_));
  EXPECT_THAT(Findings(*document_), ElementsAre(GetParam().kind + " " + GetParam().deletedKey + " Second"));
}

TEST_P(CheckMeta2024HelperTest, OtherMembersOfTheDocumentStay) {
  Set({}, {{"A"}});
  document_ = test::Json(R"({"other": "kept"})");
  EXPECT_FALSE(CheckWithDocument());
  EXPECT_THAT(Keys(*document_), ElementsAre("other", GetParam().kind));
  EXPECT_EQ(document_->GetStringValue("other"), "kept");
}

TEST_P(CheckMeta2024HelperTest, APassingCheckLeavesTheMemberOfAnEarlierOne) {
  Set({}, {{"A"}});
  EXPECT_FALSE(CheckWithDocument());
  const std::string before = document_->ToText();
  Set({{"A"}}, {{"A"}});
  CCheckMeta2024Helper second(folder_.handlerContext, folder_.context);
  EXPECT_TRUE((second.*GetParam().checkWithDocument)(document_));
  EXPECT_EQ(document_->ToText(), before);
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentAChangedElementIsLoggedAtTheLineOfTheClientPassAndThrown) {
  Set({{"Equal"}, {"Changed", 64}}, {{"Equal"}, {"Changed"}});
  ExpectFailure("Changed", GetParam().clientLine);
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentADeletedElementIsLoggedAtTheLineOfTheOriginalPassAndThrown) {
  Set({{"Equal"}}, {{"Equal"}, {"Deleted"}});
  ExpectFailure("Deleted", GetParam().originalLine);
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentADeletedElementGivesOneLogLine) {
  Set({}, {{"Deleted"}, {"Another"}});
  const test::CLogCapture log;
  ErrorOf([this] { Check(); });
  EXPECT_THAT(log.Lines(),
              ElementsAre(ErrorLineAt(GetParam().originalLine, kFile, GetParam().function,
                                      GetParam().logPrefix + "Deleted<hr=0x" + GetParam().codeText + ">")));
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentTheNameLoggedForAChangedElementIsTheClients) {
  Set({{"CHANGED", 64}}, {{"Changed"}});
  ExpectFailure("CHANGED", GetParam().clientLine);
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentTheFirstDifferenceEndsTheCheck) {
  Set({{"Second", 1}, {"First", 1}}, {{"Deleted"}, {"First"}, {"Second"}});
  const test::CLogCapture log;
  ErrorOf([this] { Check(); });
  const std::vector<std::string> messages = log.Messages();
  EXPECT_EQ(messages.back(), GetParam().logPrefix + "Second<hr=0x" + GetParam().codeText + ">");
  EXPECT_THAT(messages, testing::Each(testing::Not(testing::HasSubstr("First"))));
  EXPECT_THAT(messages, testing::Each(testing::Not(testing::HasSubstr("Deleted"))));
}

TEST_P(CheckMeta2024HelperTest, WithoutADocumentTheExceptionHasNoMessageOfItsOwn) {
  Set({}, {{"Deleted"}});
  const test::CLogCapture log;
  try {
    Check();
    FAIL() << "nothing was thrown";
  } catch (const CKVXException& error) {
    EXPECT_EQ(error.GetCode(), GetParam().code);
    EXPECT_FALSE(error.HasMessage());
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, CheckMeta2024HelperTest, testing::ValuesIn(test::MetaKindRows()),
                         [](const auto& row) { return row.param.kind; });

/// The whole document after all three checks.
TEST(CheckMeta2024HelperDocumentTest, EveryKindsObjectStandsInItsLayoutInTheOrderOfTheChecks) {
  test::CUpgradeFolder folder;
  folder.SetClient({{{"Added", {}, {}, "An added class", 3, "T_ADDED"}},
                    {{"Linked", {}, {}, "An added link", 4, "T_LINKED"}},
                    {{"Marked", {}, {}, "An added behavior"}, {"Versioned", {"Revise"}, {}, "Client's"}}});
  folder.SetOriginal({{{"Part", {}, {}, "A part", 1, "T_PART"}},
                      {{"Uses", {}, {}, "A use", 2, "T_USES"}},
                      {{"Versioned", {}, {}, "Original's"}, {"Gone", {}, {}, "A deleted behavior"}}});
  CCheckMeta2024Helper helper(folder.handlerContext, folder.context);
  auto document = std::make_shared<CJsonObject>();
  EXPECT_FALSE(helper.CheckMetaLinks(document));
  EXPECT_FALSE(helper.CheckMetaBehaviors(document));
  EXPECT_FALSE(helper.CheckMetaClasses(document));
  EXPECT_EQ(document->ToText(), R"json({
  "link": {
    "inserted_links": [
      {
        "internal_name": "Linked",
        "display_name": "An added link",
        "class_id": 4,
        "table_name": "T_LINKED"
      }
    ],
    "deleted_links": [
      {
        "internal_name": "Uses",
        "display_name": "A use",
        "class_id": 2,
        "table_name": "T_USES"
      }
    ]
  },
  "behavior": {
    "inserted_behaviors": [
      {
        "internal_name": "Marked",
        "display_name": "An added behavior"
      }
    ],
    "updated_behaviors": [
      {
        "internal_name": "Versioned",
        "display_name": "Client's",
        "inserted_methods": [
          {
            "internal_name": "Revise",
            "display_name": "Revise()"
          }
        ]
      }
    ],
    "deleted_behaviors": [
      {
        "internal_name": "Gone",
        "display_name": "A deleted behavior"
      }
    ]
  },
  "class": {
    "inserted_classes": [
      {
        "internal_name": "Added",
        "display_name": "An added class",
        "class_id": 3,
        "table_name": "T_ADDED"
      }
    ],
    "deleted_classes": [
      {
        "internal_name": "Part",
        "display_name": "A part",
        "class_id": 1,
        "table_name": "T_PART"
      }
    ]
  }
})json");
}

}  // namespace
