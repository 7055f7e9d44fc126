#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "checkmeta2024/CheckMetaStrategy2024.h"
#include "otherhost/HostTest.h"

// Whole runs, by way of the exported factory.
namespace {

using otherhost::Array;
using otherhost::CHost;
using otherhost::Object;
using otherhost::SFailure;
using otherhost::SModel;
using otherhost::SProperty;
using otherhost::SValue;
using testing::ElementsAre;
using testing::IsEmpty;

class InvokeTest : public otherhost::CHostTest {
 protected:
  /// Each kind has one inserted, one deleted and one changed element.
  void SetModelsThatDifferInEverything() {
    const auto elements = [](const std::string& own, std::uint32_t length) {
      return std::vector<otherhost::SElement>{{own, {}, {}, {}}, {"Both", {{"Code", length}}, {own}, {own}}};
    };
    host_.client = {elements("New", 64), elements("New", 64), elements("New", 64), {}};
    host_.original = {elements("Old", 32), elements("Old", 32), elements("Old", 32), {}};
  }

  void Invoke(const std::list<SValue>& elements) {
    host_.files[otherhost::kDictionaryPath] = otherhost::DisplayDictionary();
    host_.parameter = otherhost::MakeJson(Object({{"execute_elements", Array(elements)}}));
    const std::unique_ptr<CUpgradeStrategy> strategy(CreateReflectionClassObject("CCheckMetaStrategy2024"));
    ASSERT_NE(strategy, nullptr);
    strategy->Invoke(handlerContext_, upgradeContext_);
  }

  bool IsSaved() const { return host_.files.count(otherhost::kResultPath) > 0; }
};

TEST_F(InvokeTest, ARunThatFindsADifferenceTakesItsStepsInTheirOrder) {
  host_.original.classes = {{"A", {}, {}, {}}};
  Invoke({"class"});
  const std::string deleted = R"([{"internal_name":"A","display_name":"A!","class_id":7,"table_name":"T_A"}])";
  const std::string kind = R"({"deleted_classes":)" + deleted + "}";
  const std::string text = "\n<deleted><class>:\n <internal_name>:A,<display_name>:A!\n\n";
  EXPECT_THAT(host_.CallsWith({"GetParameter", "StringArray", "Load", "ObjectArrayValue(d", "SetObject", "Path", "File",
                               "GetLang", "error_info", "SetResult"}),
              ElementsAre("GetParameter()",                                                       //
                          "GetStringArrayValue(execute_elements)",                                //
                          "LoadClientMeta()",                                                     //
                          "LoadOriginalMeta()",                                                   //
                          "SetObjectArrayValue(deleted_classes, " + deleted + ")",                //
                          "SetObjectValue(class, " + kind + ")",                                  //
                          "GetVersionUpgradeCfgPath()",                                           //
                          "SaveToFile(/cfg/2024/checkMetaError.json, {\"class\":" + kind + "})",  //
                          "GetUpgradeCfgPath()",                                                  //
                          "CreateFromFile(/cfg/multilanguage/strings/info.json)",                 //
                          "GetLang()",                                                            //
                          "GetPropertyObjectArrayValue(deleted_classes)",                         //
                          "SetStringValue(error_info, " + text + ")",                             //
                          "SetResult({\"error_info\":\"" + text + "\"})"));
}

TEST_F(InvokeTest, ARunThatFindsNothingSavesAnEmptyDocumentAndEnds) {
  host_.original.classes = host_.client.classes = {{"A", {{"Code"}}, {"b"}, {}}};
  Invoke({"class", "link", "behavior"});
  EXPECT_THAT(host_.CallsWith({"SetObject", "Save", "Create", "SetResult"}),
              ElementsAre("SaveToFile(/cfg/2024/checkMetaError.json, {})"));
  EXPECT_EQ(host_.result, nullptr);
}

TEST_F(InvokeTest, AKindsWordIsTheFirstOfTheTwoThatAreComparedAndTheFlagIsFalse) {
  Invoke({"behavior", "table"});
  EXPECT_THAT(host_.CallsWith({"StringCompare"}),
              ElementsAre("StringCompare(class, behavior, false)", "StringCompare(link, behavior, false)",
                          "StringCompare(behavior, behavior, false)", "StringCompare(class, table, false)",
                          "StringCompare(link, table, false)", "StringCompare(behavior, table, false)"));
}

TEST_F(InvokeTest, AnUnknownKindIsOneLogLineAndTheRunGoesOn) {
  Invoke({"table", "class"});
  EXPECT_THAT(host_.CallsWith({"Print", "Load", "Save"}),
              ElementsAre("Print(CheckMetaStrategy2024.cpp, 59, CCheckMetaStrategy2024::Invoke, errormsg, 40000, "
                          "meta element check type error.type:table<hr=0xA4520008>)",
                          "LoadClientMeta()", "LoadOriginalMeta()", "SaveToFile(/cfg/2024/checkMetaError.json, {})"));
}

TEST_F(InvokeTest, TheMetamodelsAreLoadedOnceForAllKinds) {
  SetModelsThatDifferInEverything();
  Invoke({"class", "link", "behavior", "class"});
  EXPECT_THAT(host_.CallsWith({"Load"}), ElementsAre("LoadClientMeta()", "LoadOriginalMeta()"));
}

TEST_F(InvokeTest, WithoutAKindNoMetamodelIsLoaded) {
  Invoke({});
  EXPECT_THAT(host_.CallsWith({"Load"}), IsEmpty());
  EXPECT_TRUE(IsSaved());
}

TEST_F(InvokeTest, TheTextIsBehaviorsThenClassesThenLinks) {
  host_.original = {{{"A", {}, {}, {}}}, {{"A", {}, {}, {}}}, {{"A", {}, {}, {}}}, {}};
  Invoke({"link", "class", "behavior"});
  EXPECT_THAT(host_.CallsWith({"SetObjectValue", "GetPropertyObjectValue"}),
              ElementsAre(testing::StartsWith("SetObjectValue(link"), testing::StartsWith("SetObjectValue(class"),
                          testing::StartsWith("SetObjectValue(behavior"), "GetPropertyObjectValue(behavior)",
                          "GetPropertyObjectValue(class)", "GetPropertyObjectValue(link)"));
}

TEST_F(InvokeTest, WhateverCallFailsItsExceptionLeavesTheRunAtOnce) {
  SetModelsThatDifferInEverything();
  Invoke({"class", "table", "link", "behavior"});
  const std::vector<std::string> whole = host_.Calls();
  ASSERT_NE(host_.result, nullptr);
  ASSERT_EQ(whole.back().substr(0, 9), "SetResult");
  ASSERT_GT(whole.size(), 300U);
  bool saved = false;
  for (std::size_t number = 1; number <= whole.size(); ++number) {
    host_.files.clear();
    host_.result = nullptr;
    host_.ForgetCalls();
    host_.FailAt(number);
    try {
      Invoke({"class", "table", "link", "behavior"});
      ADD_FAILURE() << "call " << number << " was not made: " << whole[number - 1];
    } catch (const SFailure& failure) {
      EXPECT_EQ(failure.call, whole[number - 1]);
    }
    EXPECT_EQ(host_.Calls(),
              std::vector<std::string>(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(number)));
    EXPECT_EQ(host_.result, nullptr) << number;
    EXPECT_EQ(IsSaved(), saved) << number;
    saved = saved || whole[number - 1].substr(0, 10) == "SaveToFile";
  }
  EXPECT_TRUE(saved);
}

}  // namespace
