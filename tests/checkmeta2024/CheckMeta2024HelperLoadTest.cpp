#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckMeta2024Helper.h"
#include "checkmeta2024/Findings.h"
#include "checkmeta2024/MetaKindRow.h"
#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/LogCapture.h"

namespace {

using test::ErrorOf;
using test::Findings;
using test::SError;
using test::SModel;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// Every one of the six checks loads the metamodels in the same way.
struct SCheck {
  std::string name;
  bool (*run)(CCheckMeta2024Helper&);
};

void PrintTo(const SCheck& check, std::ostream* output) {
  *output << check.name;
}

template <bool (CCheckMeta2024Helper::*Operation)(std::shared_ptr<CJsonObject>&)>
bool RunWithDocument(CCheckMeta2024Helper& helper) {
  auto document = std::make_shared<CJsonObject>();
  return (helper.*Operation)(document);
}

template <bool (CCheckMeta2024Helper::*Operation)()>
bool Run(CCheckMeta2024Helper& helper) {
  return (helper.*Operation)();
}

SModel WithClass(const std::string& name) {
  return {{{name, {}, {}}}, {}, {}};
}

class CheckMeta2024HelperLoadTest : public testing::Test {
 protected:
  /// The findings of the class check.
  static std::vector<std::string> Classes(CCheckMeta2024Helper& helper) {
    auto document = std::make_shared<CJsonObject>();
    helper.CheckMetaClasses(document);
    return Findings(*document);
  }

  test::CUpgradeFolder folder_;
  CCheckMeta2024Helper helper_{folder_.handlerContext, folder_.context};
};

class CheckMeta2024HelperEachCheckLoadTest : public CheckMeta2024HelperLoadTest,
                                             public testing::WithParamInterface<SCheck> {};

TEST_P(CheckMeta2024HelperEachCheckLoadTest, TheClientIsLoadedFirst) {
  const SError error = ErrorOf([this] { GetParam().run(helper_); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, StartsWith("client metamodel: "));
  EXPECT_THAT(error.message, HasSubstr(folder_.context.GetClientMetaLocation()));
}

TEST_P(CheckMeta2024HelperEachCheckLoadTest, TheOriginalIsLoadedNextAndItsFailureLeavesTheCheckUnchanged) {
  folder_.SetClient({});
  const SError error = ErrorOf([this] { GetParam().run(helper_); });
  EXPECT_EQ(error.code, kvx::kFileError);
  EXPECT_THAT(error.message, StartsWith("original metamodel: "));
  EXPECT_THAT(error.message, HasSubstr(folder_.context.GetOriginalMetaLocation()));
}

TEST_P(CheckMeta2024HelperEachCheckLoadTest, AMalformedMetamodelFailsWithTheHostsError) {
  folder_.directory.Write("client.json", R"({"generation": 2023})");
  folder_.SetOriginal({});
  const SError error = ErrorOf([this] { GetParam().run(helper_); });
  EXPECT_EQ(error.code, kvx::kMalformedDocument);
  EXPECT_THAT(error.message, StartsWith("client metamodel: "));
  EXPECT_THAT(error.message, HasSubstr("generation"));
}

TEST_P(CheckMeta2024HelperEachCheckLoadTest, WhatItLoadsServesEveryLaterCheck) {
  folder_.SetClient({});
  folder_.SetOriginal({});
  EXPECT_TRUE(GetParam().run(helper_));
  folder_.RemoveClient();
  folder_.RemoveOriginal();
  auto document = std::make_shared<CJsonObject>();
  EXPECT_TRUE(helper_.CheckMetaClasses(document));
  EXPECT_TRUE(helper_.CheckMetaClasses());
  EXPECT_TRUE(helper_.CheckMetaLinks(document));
  EXPECT_TRUE(helper_.CheckMetaLinks());
  EXPECT_TRUE(helper_.CheckMetaBehaviors(document));
  EXPECT_TRUE(helper_.CheckMetaBehaviors());
}

INSTANTIATE_TEST_SUITE_P(
    AllSix, CheckMeta2024HelperEachCheckLoadTest,
    testing::Values(SCheck{"ClassesWithDocument", &RunWithDocument<&CCheckMeta2024Helper::CheckMetaClasses>},
                    SCheck{"Classes", &Run<&CCheckMeta2024Helper::CheckMetaClasses>},
                    SCheck{"LinksWithDocument", &RunWithDocument<&CCheckMeta2024Helper::CheckMetaLinks>},
                    SCheck{"Links", &Run<&CCheckMeta2024Helper::CheckMetaLinks>},
                    SCheck{"BehaviorsWithDocument", &RunWithDocument<&CCheckMeta2024Helper::CheckMetaBehaviors>},
                    SCheck{"Behaviors", &Run<&CCheckMeta2024Helper::CheckMetaBehaviors>}),
    [](const auto& check) { return check.param.name; });

TEST_F(CheckMeta2024HelperLoadTest, ConstructingAndCopyingLoadNothing) {
  folder_.SetClient(WithClass("OfTheClient"));
  folder_.SetOriginal({});
  CCheckMeta2024Helper copy(helper_);
  folder_.SetClient({});
  folder_.SetOriginal(WithClass("A"));
  EXPECT_THAT(Classes(copy), ElementsAre("class deleted_classes A"));
  EXPECT_THAT(Classes(helper_), ElementsAre("class deleted_classes A"));
}

TEST_F(CheckMeta2024HelperLoadTest, ChangesAfterTheFirstCheckAreNotSeen) {
  folder_.SetClient({});
  folder_.SetOriginal(WithClass("A"));
  EXPECT_THAT(Classes(helper_), ElementsAre("class deleted_classes A"));
  folder_.SetClient(WithClass("B"));
  folder_.SetOriginal(WithClass("C"));
  EXPECT_THAT(Classes(helper_), ElementsAre("class deleted_classes A"));
}

TEST_F(CheckMeta2024HelperLoadTest, BothAreLoadedAgainWhenOnlyTheClientCouldBe) {
  folder_.SetClient({});
  EXPECT_THAT(ErrorOf([this] { Classes(helper_); }).message, StartsWith("original metamodel: "));
  folder_.SetClient(WithClass("New"));
  folder_.SetOriginal(WithClass("A"));
  EXPECT_THAT(Classes(helper_), ElementsAre("class inserted_classes New", "class deleted_classes A"));
}

TEST_F(CheckMeta2024HelperLoadTest, ACopySharesTheLoadedMetamodels) {
  folder_.SetClient({});
  folder_.SetOriginal(WithClass("A"));
  Classes(helper_);
  CCheckMeta2024Helper copy(helper_);
  folder_.RemoveClient();
  folder_.RemoveOriginal();
  EXPECT_THAT(Classes(copy), ElementsAre("class deleted_classes A"));
}

TEST_F(CheckMeta2024HelperLoadTest, ACopyOutlivesTheHelperThatLoaded) {
  folder_.SetClient({});
  folder_.SetOriginal(WithClass("A"));
  auto loaded = std::make_unique<CCheckMeta2024Helper>(folder_.handlerContext, folder_.context);
  Classes(*loaded);
  CCheckMeta2024Helper copy(*loaded);
  loaded.reset();
  folder_.RemoveClient();
  EXPECT_THAT(Classes(copy), ElementsAre("class deleted_classes A"));
}

TEST_F(CheckMeta2024HelperLoadTest, ACopyMadeBeforeTheFirstCheckLoadsForItself) {
  folder_.SetClient({});
  folder_.SetOriginal(WithClass("A"));
  CCheckMeta2024Helper copy(helper_);
  Classes(helper_);
  folder_.SetOriginal(WithClass("B"));
  EXPECT_THAT(Classes(copy), ElementsAre("class deleted_classes B"));
}

TEST_F(CheckMeta2024HelperLoadTest, AFailedLoadLeavesTheDocumentUntouchedAndLogsNothing) {
  const test::CLogCapture log;
  auto document = test::Json(R"({"other": "kept"})");
  EXPECT_EQ(ErrorOf([&] { helper_.CheckMetaClasses(document); }).code, kvx::kFileError);
  EXPECT_THAT(test::Keys(*document), ElementsAre("other"));
  EXPECT_THAT(log.Lines(), testing::IsEmpty());
}

}  // namespace
