#include "checkmeta2024/CheckMetaStrategy2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "checkmeta2024/UpgradeFolder.h"
#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"

namespace {

using test::ErrorLineAt;
using test::ErrorOf;
using test::Findings;
using test::Json;
using test::Keys;
using test::SError;
using test::SModel;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kFile = "CheckMetaStrategy2024.cpp";
constexpr const char* kFunction = "CCheckMetaStrategy2024::Invoke";

/// One element of each kind.
SModel OneOfEach(const std::string& name) {
  return {{{name, {}, {}, "C", 1, "T"}}, {{name, {}, {}, "L", 2, "T"}}, {{name, {}, {}, "B"}}};
}

class CheckMetaStrategy2024Test : public testing::Test {
 protected:
  void Invoke(const std::string& elements) { Invoke(Json(R"({"execute_elements": )" + elements + "}")); }
  void Invoke(const std::shared_ptr<CJsonObject>& parameter) {
    strategy_.SetParameter(parameter);
    strategy_.Invoke(folder_.handlerContext, folder_.context);
  }

  std::string SavedText() const { return test::ReadFile(folder_.ResultPath()); }
  std::shared_ptr<CJsonObject> Saved() const { return Json(SavedText()); }
  bool IsSaved() const { return std::filesystem::exists(folder_.ResultPath()); }
  std::string ErrorInfo() const { return strategy_.GetResult()->GetStringValue("error_info"); }

  test::CUpgradeFolder folder_;
  CCheckMetaStrategy2024 strategy_;
};

TEST_F(CheckMetaStrategy2024Test, WithoutDifferencesAnEmptyObjectIsSavedAndNoResultSet) {
  folder_.SetClient(OneOfEach("A"));
  folder_.SetOriginal(OneOfEach("A"));
  const test::CLogCapture log;
  Invoke(R"(["class", "link", "behavior"])");
  EXPECT_EQ(SavedText(), "{}\n");
  EXPECT_EQ(strategy_.GetResult(), nullptr);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(CheckMetaStrategy2024Test, ADifferenceIsSavedAndHandedBackAsText) {
  folder_.SetClient({});
  folder_.SetOriginal({{{"Part", {}, {}, "A part", 1001, "T_PART"}}, {}, {}});
  Invoke(R"(["class", "link", "behavior"])");
  EXPECT_EQ(SavedText(), R"({
  "class": {
    "deleted_classes": [
      {
        "internal_name": "Part",
        "display_name": "A part",
        "class_id": 1001,
        "table_name": "T_PART"
      }
    ]
  }
}
)");
  ASSERT_NE(strategy_.GetResult(), nullptr);
  EXPECT_THAT(Keys(*strategy_.GetResult()), ElementsAre("error_info"));
  EXPECT_EQ(ErrorInfo(),
            "\n"
            "Deleted classes:\n"
            " name:Part,shown as:A part\n"
            "\n");
}

TEST_F(CheckMetaStrategy2024Test, TheDocumentFollowsTheOrderOfTheKindsAndTheTextIsBehaviorsClassesLinks) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["link", "class", "behavior"])");
  EXPECT_THAT(Keys(*Saved()), ElementsAre("link", "class", "behavior"));
  EXPECT_EQ(ErrorInfo(),
            "\n"
            "Deleted behaviors:\n"
            " name:A,shown as:B\n"
            "\n"
            "\n"
            "Deleted classes:\n"
            " name:A,shown as:C\n"
            "\n"
            "\n"
            "Deleted links:\n"
            " name:A,shown as:L\n"
            "\n");
}

TEST_F(CheckMetaStrategy2024Test, OfTwoKindsTheTextHasClassesBeforeLinksToo) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["link", "class"])");
  EXPECT_THAT(Keys(*Saved()), ElementsAre("link", "class"));
  EXPECT_EQ(ErrorInfo(), "\nDeleted classes:\n name:A,shown as:C\n\n\nDeleted links:\n name:A,shown as:L\n\n");
}

TEST_F(CheckMetaStrategy2024Test, InsertedAndUpdatedElementsOfEveryKindReachTheText) {
  test::SProperty changed = test::Property("Code");
  changed.length = 64;
  folder_.SetClient({{{"New", {}, {}, "N"}, {"A", {}, {changed}, "C"}},
                     {{"New", {}, {}, "N"}, {"A", {}, {changed}, "L"}},
                     {{"New", {}, {}, "N"}, {"A", {}, {changed}, "B"}}});
  folder_.SetOriginal({{{"A", {}, {test::Property("Code")}}},
                       {{"A", {}, {test::Property("Code")}}},
                       {{"A", {}, {test::Property("Code")}}}});
  Invoke(R"(["class", "link", "behavior"])");
  const std::string inserted = " name:New,shown as:N\n\n";
  const std::string updated =
      "   Updated properties:\n"
      "    name:Code,shown as:Code (display)\n"
      "     length:32 -> :64\n"
      "\n";
  EXPECT_EQ(ErrorInfo(), "\nInserted behaviors:\n" + inserted +                                   //
                             "Updated behaviors:\n" + "\n" + "  name:A,shown as:B\n" + updated +  //
                             "\nInserted classes:\n" + inserted +                                 //
                             "Updated classes:\n" + "  name:A,shown as:C\n" + updated +           //
                             "\nInserted links:\n" + inserted +                                   //
                             "Updated links:\n" + "  name:A,shown as:L\n" + updated);
}

TEST_F(CheckMetaStrategy2024Test, OnlyTheKindsAskedForAreChecked) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["link"])");
  EXPECT_THAT(Findings(*Saved()), ElementsAre("link deleted_links A"));
  EXPECT_EQ(ErrorInfo(), "\nDeleted links:\n name:A,shown as:L\n\n");
}

TEST_F(CheckMetaStrategy2024Test, OneFailingKindAmongPassingOnesGivesAResult) {
  folder_.SetClient({{{"A", {}, {}}}, {}, {{"A", {}, {}}}});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["class", "link", "behavior"])");
  EXPECT_THAT(Findings(*Saved()), ElementsAre("link deleted_links A"));
  ASSERT_NE(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, AnEmptyArrayChecksNothingLogsNothingAndSavesTheEmptyDocument) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  const test::CLogCapture log;
  Invoke("[]");
  EXPECT_EQ(SavedText(), "{}\n");
  EXPECT_EQ(strategy_.GetResult(), nullptr);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(CheckMetaStrategy2024Test, InsertionsAloneGiveNoResultAndAreNotSaved) {
  folder_.SetClient(OneOfEach("A"));
  folder_.SetOriginal({});
  Invoke(R"(["class", "link", "behavior"])");
  EXPECT_EQ(SavedText(), "{}\n");
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

struct SUnknown {
  std::string name;
  std::string item;
  std::string message;
};

void PrintTo(const SUnknown& unknown, std::ostream* output) {
  *output << unknown.name;
}

class CheckMetaStrategy2024UnknownTest : public CheckMetaStrategy2024Test,
                                         public testing::WithParamInterface<SUnknown> {};

TEST_P(CheckMetaStrategy2024UnknownTest, AnUnknownKindIsLoggedAndSkipped) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  const test::CLogCapture log;
  Invoke("[\"" + GetParam().item + "\"]");
  EXPECT_THAT(log.Lines(), ElementsAre(ErrorLineAt(59, kFile, kFunction, GetParam().message)));
  EXPECT_EQ(SavedText(), "{}\n");
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Items, CheckMetaStrategy2024UnknownTest,
    testing::Values(SUnknown{"Method", "method", "meta element check type error.type:method<hr=0xA4520008>"},
                    SUnknown{"Empty", "", "meta element check type error.type:<hr=0xA4520008>"},
                    SUnknown{"CapitalC", "Class", "meta element check type error.type:Class<hr=0xA4520008>"},
                    SUnknown{"Plural", "links", "meta element check type error.type:links<hr=0xA4520008>"},
                    SUnknown{"Space", "behavior ", "meta element check type error.type:behavior <hr=0xA4520008>"}),
    [](const auto& row) { return row.param.name; });

TEST_F(CheckMetaStrategy2024Test, TheCheckGoesOnAfterUnknownKinds) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  const test::CLogCapture log;
  Invoke(R"(["table", "link", "table"])");
  const auto line = ErrorLineAt(59, kFile, kFunction, "meta element check type error.type:table<hr=0xA4520008>");
  EXPECT_THAT(log.Lines(), ElementsAre(line, line));
  EXPECT_THAT(Findings(*Saved()), ElementsAre("link deleted_links A"));
  EXPECT_NE(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, UnknownKindsNeedNoMetamodel) {
  const test::CLogCapture log;
  Invoke(R"(["table"])");
  EXPECT_EQ(SavedText(), "{}\n");
}

TEST_F(CheckMetaStrategy2024Test, AKindThatStandsTwiceRunsTwiceAndMovesToTheEnd) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["class", "link", "class"])");
  EXPECT_THAT(Findings(*Saved()), ElementsAre("link deleted_links A", "class deleted_classes A"));
}

TEST_F(CheckMetaStrategy2024Test, AParameterWithoutKindsThrowsAndNothingIsSaved) {
  folder_.SetClient({});
  folder_.SetOriginal({});
  EXPECT_EQ(ErrorOf([this] { Invoke(std::make_shared<CJsonObject>()); }),
            (SError{0xA4C0003E, "json member [execute_elements] not exist!"}));
  EXPECT_EQ(ErrorOf([this] { Invoke(R"("class")"); }),
            (SError{0xA4C00004, "json member [execute_elements] is not Array String!"}));
  EXPECT_EQ(ErrorOf([this] { Invoke(R"(["class", 5])"); }),
            (SError{0xA4C00004, "json member [execute_elements] is not Array String!"}));
  EXPECT_FALSE(IsSaved());
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, AMetamodelThatCannotBeLoadedLeavesInvokeAndNothingIsSaved) {
  folder_.SetClient({});
  const SError error = ErrorOf([this] { Invoke(R"(["class"])"); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, StartsWith("original metamodel: "));
  EXPECT_FALSE(IsSaved());
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, AnUnwritableDirectoryLeavesInvokeAndNoResultIsSet) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  folder_.context.SetVersionUpgradeCfgPath("/nonexistent/2024");
  const SError error = ErrorOf([this] { Invoke(R"(["class"])"); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, HasSubstr("/nonexistent/2024/checkMetaError.json"));
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, TheFilesNameIsAppendedToTheDirectoryAsItStands) {
  folder_.SetClient({});
  folder_.SetOriginal({});
  folder_.context.SetVersionUpgradeCfgPath("/nonexistent/2024/");
  EXPECT_THAT(ErrorOf([this] { Invoke("[]"); }).message, HasSubstr("/nonexistent/2024//checkMetaError.json"));
}

TEST_F(CheckMetaStrategy2024Test, AMissingDisplayDictionaryLeavesInvokeAfterTheDocumentIsSaved) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  folder_.RemoveDictionary();
  const SError error = ErrorOf([this] { Invoke(R"(["class"])"); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, HasSubstr("/multilanguage/strings/info.json"));
  EXPECT_THAT(Findings(*Saved()), ElementsAre("class deleted_classes A"));
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, ADisplayDictionaryWithoutANeededWordLeavesInvoke) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  folder_.SetDictionary(R"({"deleted": {"en": "Deleted "}})");
  EXPECT_EQ(ErrorOf([this] { Invoke(R"(["class"])"); }), (SError{0xA4C0003E, "json member [class] not exist!"}));
  EXPECT_EQ(strategy_.GetResult(), nullptr);
}

TEST_F(CheckMetaStrategy2024Test, WithoutDifferencesTheDisplayDictionaryIsNotNeeded) {
  folder_.SetClient({});
  folder_.SetOriginal({});
  folder_.RemoveDictionary();
  Invoke(R"(["class", "link", "behavior"])");
  EXPECT_EQ(SavedText(), "{}\n");
}

TEST_F(CheckMetaStrategy2024Test, ALaterRunLoadsTheMetamodelsAnewAndReplacesTheFile) {
  folder_.SetClient({});
  folder_.SetOriginal(OneOfEach("A"));
  Invoke(R"(["class"])");
  folder_.SetOriginal(OneOfEach("B"));
  Invoke(R"(["link"])");
  EXPECT_THAT(Findings(*Saved()), ElementsAre("link deleted_links B"));
  EXPECT_EQ(ErrorInfo(), "\nDeleted links:\n name:B,shown as:L\n\n");
}

TEST_F(CheckMetaStrategy2024Test, CopiesTakeParameterAndResultOver) {
  const auto parameter = Json("{}");
  const auto result = Json("{}");
  strategy_.SetParameter(parameter);
  strategy_.SetResult(result);
  const CCheckMetaStrategy2024 copy(strategy_);
  CCheckMetaStrategy2024 assigned;
  assigned = strategy_;
  EXPECT_EQ(copy.GetParameter(), parameter);
  EXPECT_EQ(copy.GetResult(), result);
  EXPECT_EQ(assigned.GetParameter(), parameter);
  EXPECT_EQ(assigned.GetResult(), result);
}

TEST(CreateReflectionClassObjectTest, CreatesANewStrategyInWhateverCaseTheNameIs) {
  for (const char* name :
       {"CCheckMetaStrategy2024", "cCheckMetaStrategy2024", "ccheckmetastrategy2024", "CCHECKMETASTRATEGY2024"}) {
    const std::unique_ptr<CUpgradeStrategy> first(CreateReflectionClassObject(name));
    const std::unique_ptr<CUpgradeStrategy> second(CreateReflectionClassObject(name));
    EXPECT_NE(dynamic_cast<CCheckMetaStrategy2024*>(first.get()), nullptr) << name;
    EXPECT_NE(second, nullptr) << name;
    EXPECT_NE(first, second) << name;
  }
}

TEST(CreateReflectionClassObjectTest, GivesNullForAnUnknownNameAndLogsNothing) {
  const test::CLogCapture log;
  for (const char* name : {"CCheckMeta2024Helper", "", "CheckMetaStrategy2024", "CCheckMetaStrategy2024 "}) {
    EXPECT_EQ(CreateReflectionClassObject(name), nullptr) << name;
  }
  EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
