#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckLink2024Helper.h"
#include "otherhost/Elements.h"
#include "otherhost/HostTest.h"

namespace {

using otherhost::MakeJson;
using otherhost::Object;
using otherhost::SSides;
using otherhost::TextOf;
using testing::ElementsAre;
using testing::StartsWith;

using Classes = SSides<CMetaClass2024>;
using Links = SSides<CMetaLink2024>;
using Behaviors = SSides<CMetaBehavior2024>;

class ElementCheckTest : public otherhost::CHostTest {
 protected:
  std::shared_ptr<CJsonObject> entry_ = MakeJson(Object());
};

TEST_F(ElementCheckTest, AClassIsReadBehaviorsFirstAndTheOriginalsBeforeTheClients) {
  const Classes classes({"A", {}, {"B1"}, {}}, {"A", {}, {"B2", "B3"}, {}});
  CCheckClass2024Helper(classes.client, classes.original).CheckClass(entry_);
  EXPECT_THAT(
      host_.CallsWith({"GetBehaviors", "ToLower", "GetPropert", "GetInternalName", "Array"}),
      ElementsAre("original: GetBehaviors()", "ToLower(B2)", "ToLower(B3)", "client: GetBehaviors()", "ToLower(B1)",
                  "client: GetInternalName()", R"(SetStringArrayValue(deleted_behaviors, ["b2","b3"]))",
                  R"(SetStringArrayValue(inserted_behaviors, ["b1"]))", "client: GetProperties()",
                  "client: GetPropertyDict()", "original: GetProperties()", "original: GetPropertyDict()"));
}

TEST_F(ElementCheckTest, WithoutAnEntryAClassIsReadInTheSameOrder) {
  const Classes classes({"A", {}, {"B"}, {}}, {"A", {}, {"B"}, {}});
  EXPECT_TRUE(CCheckClass2024Helper(classes.client, classes.original).CheckClass());
  EXPECT_THAT(host_.Calls(), ElementsAre("original: GetBehaviors()", "ToLower(B)", "client: GetBehaviors()",
                                         "ToLower(B)", "client: GetProperties()", "client: GetPropertyDict()",
                                         "original: GetProperties()", "original: GetPropertyDict()"));
}

TEST_F(ElementCheckTest, WithoutAnEntryEveryFailedCheckOfAClassIsLogged) {
  const Classes classes({"A", {{"New"}, {"Both", 64}}, {"B"}, {}}, {"A", {{"Old"}, {"Both"}}, {}, {}});
  EXPECT_FALSE(CCheckClass2024Helper(classes.client, classes.original).CheckClass());
  const std::vector<std::string> lines = host_.CallsWith({"Print"});
  ASSERT_EQ(lines.size(), 6U);
  const auto line = [](const std::string& function, const std::string& message) {
    return testing::AllOf(StartsWith("Print(CheckClass2024Helper.cpp, "),
                          testing::EndsWith(", CCheckClass2024Helper::" + function + ", errormsg, 40000, class check " +
                                            message + " error.class:A<hr=0xA4520005>)"));
  };
  EXPECT_THAT(lines[0], line("CheckClass", "CheckBehaviorsOfClass"));
  EXPECT_THAT(lines[1], line("CheckPropertiesOfClass", "HasDeletedProperties"));
  EXPECT_THAT(lines[2], line("CheckPropertiesOfClass", "HasInsertedProperties"));
  EXPECT_THAT(lines[3], StartsWith("Print(CheckProperty2024Helper.cpp, "));
  EXPECT_THAT(lines[4], line("CheckPropertiesOfClass", "HasUpdatedProperties"));
  EXPECT_THAT(lines[5], line("CheckClass", "CheckPropertiesOfClass"));
}

TEST_F(ElementCheckTest, ALinkIsReadByTheGettersOfAClass) {
  const Links links({"A", {{"New"}}, {"B"}, {}}, {"A", {}, {}, {}});
  EXPECT_FALSE(CCheckLink2024Helper(links.client, links.original).CheckLink(entry_));
  EXPECT_THAT(host_.CallsWith({"client: ", "original: "}),
              ElementsAre("client: GetProperties()", "client: GetPropertyDict()", "original: GetProperties()",
                          "original: GetPropertyDict()", "client: GetInternalName()", "client: GetDisplayName()",
                          "client: GetClassId()", "client: GetTableName()"));
}

TEST_F(ElementCheckTest, MethodsAreLookedUpByTheirNamesUnchangedAndTheOriginalsFirst) {
  const Behaviors behaviors({"A", {}, {}, {"Both", "New"}}, {"A", {}, {}, {"Old", "Both"}});
  EXPECT_FALSE(CCheckBehavior2024Helper(behaviors.client, behaviors.original).CheckBehavior(entry_));
  EXPECT_THAT(host_.CallsWith({"Method", "methods", "ToLower", "GetPropert"}),
              ElementsAre("original: GetMethods()", "client: ExistMethod(Old)", "client: ExistMethod(Both)",
                          "client: GetMethods()", "original: ExistMethod(Both)", "original: ExistMethod(New)",
                          R"(SetObjectArrayValue(deleted_methods, [{"internal_name":"Old","display_name":"Old!"}]))",
                          R"(SetObjectArrayValue(inserted_methods, [{"internal_name":"New","display_name":"New!"}]))",
                          "client: GetProperties()", "client: GetPropertyDict()", "original: GetProperties()",
                          "original: GetPropertyDict()"));
}

TEST_F(ElementCheckTest, WhatIsInTheEntryOfAClassWhenAGetterThrowsStays) {
  const Classes classes({"A", {}, {}, {}}, {"A", {}, {"B"}, {}});
  const std::string element = R"("internal_name":"A","display_name":"A!","class_id":7,"table_name":"T_A")";
  for (const auto& [call, left] : std::vector<std::pair<std::string, std::string>>{
           {"client: GetBehaviors", "{}"},
           {"client: GetClassId", R"({"internal_name":"A","display_name":"A!"})"},
           {"SetStringArrayValue(deleted", "{" + element + "}"},
           {"original: GetPropertyDict", "{" + element + R"(,"deleted_behaviors":["b"]})"}}) {
    entry_ = MakeJson(Object());
    host_.FailAt(call);
    ExpectFailure([&] { CCheckClass2024Helper(classes.client, classes.original).CheckClass(entry_); });
    EXPECT_EQ(TextOf(entry_), left) << call;
  }
}

TEST_F(ElementCheckTest, WhatIsInTheEntryOfABehaviorWhenAGetterThrowsStays) {
  const Behaviors behaviors({"A", {}, {}, {"New"}}, {"A", {}, {}, {"Old"}});
  const std::string names = R"("internal_name":"A","display_name":"A!")";
  const std::string deleted = R"(,"deleted_methods":[{"internal_name":"Old","display_name":"Old!"}])";
  for (const auto& [call, left] : std::vector<std::pair<std::string, std::string>>{
           {"ExistMethod(New)", "{}"},
           {"client: GetDisplayName", R"({"internal_name":"A"})"},
           {"original.Old: GetDisplayName", "{" + names + "}"},
           {"client.New: GetDisplayName", "{" + names + deleted + "}"},
           {"client: GetProperties",
            "{" + names + deleted + R"(,"inserted_methods":[{"internal_name":"New","display_name":"New!"}]})"}}) {
    entry_ = MakeJson(Object());
    host_.FailAt(call);
    ExpectFailure([&] { CCheckBehavior2024Helper(behaviors.client, behaviors.original).CheckBehavior(entry_); });
    EXPECT_EQ(TextOf(entry_), left) << call;
  }
}

TEST_F(ElementCheckTest, AnElementThatCouldNotBeWrittenWholeIsWrittenByTheNextCheck) {
  const Classes classes({"A", {}, {}, {}}, {"A", {}, {"B"}, {}});
  CCheckClass2024Helper helper(classes.client, classes.original);
  host_.FailAt("GetTableName");
  ExpectFailure([&] { helper.CheckClass(entry_); });
  host_.FailNoMore();
  entry_ = MakeJson(Object());
  EXPECT_FALSE(helper.CheckClass(entry_));
  EXPECT_THAT(TextOf(entry_), StartsWith(R"({"internal_name":"A",)"));
}

}  // namespace
