#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>

#include "checkmeta2024/CheckProperty2024Helper.h"
#include "checkmeta2024/CheckProperty2024Interface.h"
#include "kvxsptjson/JsonObject.h"
#include "otherhost/Elements.h"
#include "otherhost/HostTest.h"

namespace {

using otherhost::MakeJson;
using otherhost::Object;
using otherhost::SPropertySides;
using otherhost::TextOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using Interface = CCheckProperty2024Interface;

/// One property of each side.
class PropertyPairTest : public otherhost::CHostTest {
 protected:
  std::list<std::shared_ptr<CJsonObject>> entries_;
};

TEST_F(PropertyPairTest, EachAttributeIsFetchedAndComparedClientFirst) {
  const SPropertySides sides({"P"}, {"P"});
  EXPECT_TRUE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty(entries_));
  EXPECT_THAT(host_.Calls(),
              ElementsAre("client.P: GetType()", "original.P: GetType()", "StringCompare(string, string, false)",  //
                          "client.P: GetLength()", "original.P: GetLength()",                                      //
                          "client.P: GetPrecision()", "original.P: GetPrecision()",                                //
                          "client.P: GetMaxMinValue()", "original.P: GetMaxMinValue()",                            //
                          "StringCompare(9, 9, false)",                                                            //
                          "client.P: GetMaxMinValue()", "original.P: GetMaxMinValue()",                            //
                          "StringCompare(1, 1, false)",                                                            //
                          "client.P: GetDefaultValue()", "original.P: GetDefaultValue()",                          //
                          "StringCompare(none, none, false)"));
}

TEST_F(PropertyPairTest, TheClientsValueIsTheFirstOfTheTwoThatAreCompared) {
  const SPropertySides sides({"P", 32, "t1", "8", "3", "d1"}, {"P", 32, "t2", "9", "4", "d2"});
  EXPECT_FALSE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty(entries_));
  EXPECT_THAT(host_.CallsWith({"StringCompare"}),
              ElementsAre("StringCompare(t1, t2, false)", "StringCompare(8, 9, false)", "StringCompare(3, 4, false)",
                          "StringCompare(d1, d2, false)"));
}

TEST_F(PropertyPairTest, InTheLogMaximumAndMinimumOfASideAreFetchedAtOnce) {
  const SPropertySides sides({"P"}, {"P"});
  EXPECT_TRUE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty());
  EXPECT_THAT(host_.Calls(),
              ElementsAre("client.P: GetType()", "original.P: GetType()", "StringCompare(string, string, false)",  //
                          "client.P: GetLength()", "original.P: GetLength()",                                      //
                          "client.P: GetPrecision()", "original.P: GetPrecision()",                                //
                          "client.P: GetMaxMinValue()", "original.P: GetMaxMinValue()",                            //
                          "StringCompare(9, 9, false)", "StringCompare(1, 1, false)",                              //
                          "client.P: GetDefaultValue()", "original.P: GetDefaultValue()",                          //
                          "StringCompare(none, none, false)"));
}

TEST_F(PropertyPairTest, InTheLogAMinimumIsComparedOnlyWhereTheMaximaAreEqual) {
  const SPropertySides sides({"P", 32, "t", "8", "3"}, {"P", 32, "t", "9", "4"});
  EXPECT_FALSE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty());
  EXPECT_THAT(
      host_.CallsWith({"StringCompare"}),
      ElementsAre("StringCompare(t, t, false)", "StringCompare(8, 9, false)", "StringCompare(none, none, false)"));
}

TEST_F(PropertyPairTest, InTheLogEachFailedCheckIsALineAndNothingIsSerialized) {
  const SPropertySides sides({"P", 1, "t1", "8", "3", "d1", 1}, {"P", 2, "t2", "9", "4", "d2", 2});
  EXPECT_FALSE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty());
  const auto line = [](const std::string& message) {
    return testing::AllOf(StartsWith("Print(CheckProperty2024Helper.cpp, "),
                          testing::EndsWith(", CCheckProperty2024Helper::CheckProperty, errormsg, 40000, " + message +
                                            " error.property:P<hr=0xA4520003>)"));
  };
  EXPECT_THAT(host_.CallsWith({"Print"}),
              ElementsAre(line("property check CheckPropertyType"), line("property check CheckPropertyLength"),
                          line("property check CheckPrecision"), line("property CheckMaxMinValue"),
                          line("property CheckDefaultValue")));
  EXPECT_THAT(host_.CallsWith({"CJsonObject", "Set", "GetField"}), IsEmpty());
}

const std::string kClientJson =
    R"({"internal_name":"P","display_name":"P!","field":"F_P","type":"t1","length":64,"default_value":"none",)"
    R"("precision":2,"max":"9","min":"1","lookup_internal_name":"Unit"})";
const std::string kOriginalJson =
    R"({"internal_name":"P","display_name":"P!","field":"F_P","type":"t2","length":32,"default_value":"none",)"
    R"("precision":2,"max":"9","min":"1","lookup_internal_name":"Unit"})";

TEST_F(PropertyPairTest, EachSideIsSerializedOnceAndCopiedIntoEveryEntry) {
  const SPropertySides sides({"P", 64, "t1"}, {"P", 32, "t2"});
  EXPECT_FALSE(CCheckProperty2024Helper(sides.client, sides.original).CheckProperty(entries_));
  EXPECT_THAT(
      host_.CallsWith({"CJsonObject()", "GetField", "updated_field", "SetObjectValue"}),
      ElementsAre("CJsonObject()", "client.P: GetField()", "CJsonObject()", "original.P: GetField()", "CJsonObject()",
                  "SetStringValue(updated_field, type)", "SetObjectValue(client_property, " + kClientJson + ")",
                  "SetObjectValue(original_property, " + kOriginalJson + ")",  //
                  "CJsonObject()", "SetStringValue(updated_field, length)",
                  "SetObjectValue(client_property, " + kClientJson + ")",
                  "SetObjectValue(original_property, " + kOriginalJson + ")"));
}

TEST_F(PropertyPairTest, ACopyOfTheHelperSharesWhatIsSerialized) {
  const SPropertySides sides({"P", 64, "t1"}, {"P", 32, "t2"});
  CCheckProperty2024Helper helper(sides.client, sides.original);
  EXPECT_FALSE(helper.CheckProperty(entries_));
  host_.ForgetCalls();
  CCheckProperty2024Helper copy(helper);
  EXPECT_FALSE(copy.CheckProperty(entries_));
  EXPECT_THAT(host_.CallsWith({"GetField"}), IsEmpty());
  EXPECT_EQ(entries_.size(), 4U);
}

TEST_F(PropertyPairTest, EntriesThatWereAppendedBeforeACallThrowsStay) {
  const SPropertySides sides({"P", 64, "t1"}, {"P", 32, "t2"});
  host_.FailAt("StringCompare(9, 9");
  ExpectFailure([&] { CCheckProperty2024Helper(sides.client, sides.original).CheckProperty(entries_); });
  ASSERT_EQ(entries_.size(), 2U);
  const std::string sidesJson =
      R"(,"client_property":)" + kClientJson + R"(,"original_property":)" + kOriginalJson + "}";
  EXPECT_EQ(TextOf(entries_.front()), R"({"updated_field":"type")" + sidesJson);
  EXPECT_EQ(TextOf(entries_.back()), R"({"updated_field":"length")" + sidesJson);
}

TEST_F(PropertyPairTest, AnEntryThatCannotBeFinishedIsNotAppended) {
  const SPropertySides sides({"P", 64, "t1"}, {"P", 32, "t2"});
  host_.FailAt("SetObjectValue(original_property");
  ExpectFailure([&] { CCheckProperty2024Helper(sides.client, sides.original).CheckProperty(entries_); });
  EXPECT_THAT(entries_, IsEmpty());
}

/// The properties of two classes: "Old" was deleted, "New" inserted, "Both" changed.
class PropertyListTest : public otherhost::CHostTest {
 protected:
  bool CheckWithResult() {
    return Interface::CheckProperties(clientList_, originalList_, clientDict_, originalDict_, result_);
  }

  const CMetaClass2024 client_{"client", {"A", {{"New"}, {"Both", 64}}, {}, {}}};
  const CMetaClass2024 original_{"original", {"A", {{"Old"}, {"Both"}}, {}, {}}};
  const Interface::PropertyList clientList_ = client_.GetProperties();
  const Interface::PropertyDict clientDict_ = client_.GetPropertyDict();
  const Interface::PropertyList originalList_ = original_.GetProperties();
  const Interface::PropertyDict originalDict_ = original_.GetPropertyDict();
  std::shared_ptr<CJsonObject> result_ = MakeJson(Object());
};

TEST_F(PropertyListTest, DeletionsAreFoundAndWrittenThenInsertionsThenPairsAreCompared) {
  EXPECT_FALSE(CheckWithResult());
  const std::vector<std::string> calls = host_.CallsWith({"ToLower", "Array", "GetType", "GetLength", "GetField"});
  EXPECT_THAT(calls, ElementsAre("ToLower(Old)", "ToLower(Both)", "original.Old: GetField()", "original.Old: GetType()",
                                 "original.Old: GetLength()", StartsWith("SetObjectArrayValue(deleted_properties, "),
                                 "ToLower(New)", "ToLower(Both)", "client.New: GetField()", "client.New: GetType()",
                                 "client.New: GetLength()", StartsWith("SetObjectArrayValue(inserted_properties, "),
                                 "ToLower(New)", "ToLower(Both)", "client.Both: GetType()", "original.Both: GetType()",
                                 "client.Both: GetLength()", "original.Both: GetLength()", "client.Both: GetField()",
                                 "client.Both: GetType()", "client.Both: GetLength()", "original.Both: GetField()",
                                 "original.Both: GetType()", "original.Both: GetLength()",
                                 StartsWith("SetObjectArrayValue(updated_properties, ")));
}

TEST_F(PropertyListTest, FindingsThatWereWrittenBeforeAGetterThrowsStay) {
  for (const auto& [call, left] : std::vector<std::pair<std::string, std::vector<std::string>>>{
           {"original.Old: GetField", {}},
           {"SetObjectArrayValue(deleted_properties", {}},
           {"client.New: GetField", {"deleted_properties"}},
           {"SetObjectArrayValue(inserted_properties", {"deleted_properties"}},
           {"client.Both: GetPrecision", {"deleted_properties", "inserted_properties"}},
           {"SetObjectArrayValue(updated_properties", {"deleted_properties", "inserted_properties"}}}) {
    result_ = MakeJson(Object());
    host_.FailAt(call);
    ExpectFailure([this] { CheckWithResult(); });
    host_.FailNoMore();
    std::list<std::string> keys;
    result_->GetAllKey(keys);
    EXPECT_THAT(keys, testing::ElementsAreArray(left)) << call;
  }
}

TEST_F(PropertyListTest, WithListsTheThreeStepsRunInTheSameOrder) {
  Interface::PropertyList deleted;
  Interface::PropertyList inserted;
  Interface::PropertyList updatedClient;
  Interface::PropertyList updatedOriginal;
  EXPECT_FALSE(Interface::CheckProperties(clientList_, originalList_, clientDict_, originalDict_, deleted, inserted,
                                          updatedClient, updatedOriginal));
  EXPECT_THAT(host_.CallsWith({"ToLower", "GetType", "Print"}),
              ElementsAre("ToLower(Old)", "ToLower(Both)", "ToLower(New)", "ToLower(Both)", "ToLower(New)",
                          "ToLower(Both)", "client.Both: GetType()", "original.Both: GetType()",
                          StartsWith("Print(CheckProperty2024Helper.cpp, ")));
  EXPECT_THAT(deleted, ElementsAre(originalList_.front()));
  EXPECT_THAT(inserted, ElementsAre(clientList_.front()));
  EXPECT_THAT(updatedClient, ElementsAre(clientList_.back()));
  EXPECT_THAT(updatedOriginal, ElementsAre(originalList_.back()));
}

TEST_F(PropertyListTest, WhatWasAppendedToListsBeforeAGetterThrowsStays) {
  Interface::PropertyList deleted;
  Interface::PropertyList inserted;
  Interface::PropertyList updatedClient;
  Interface::PropertyList updatedOriginal;
  host_.FailAt("client.Both: GetDefaultValue");
  ExpectFailure([&] {
    Interface::CheckProperties(clientList_, originalList_, clientDict_, originalDict_, deleted, inserted, updatedClient,
                               updatedOriginal);
  });
  EXPECT_THAT(deleted, ElementsAre(originalList_.front()));
  EXPECT_THAT(inserted, ElementsAre(clientList_.front()));
  EXPECT_THAT(updatedClient, IsEmpty());
  EXPECT_THAT(updatedOriginal, IsEmpty());
}

}  // namespace
