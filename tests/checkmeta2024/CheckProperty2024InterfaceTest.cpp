#include "checkmeta2024/CheckProperty2024Interface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/LogLines.h"
#include "support/MetaMaker.h"
#include "upgrademeta2024/MetaProperty2024.h"

namespace {

using test::Changes;
using test::Keys;
using test::Names;
using test::SProperty;
using testing::ElementsAre;
using testing::IsEmpty;

using Interface = CCheckProperty2024Interface;

SProperty Property(const std::string& name, std::uint32_t length = 32) {
  SProperty property = test::Property(name);
  property.length = length;
  return property;
}

/// The two forms in which one side is given.
struct SSide {
  explicit SSide(const std::vector<SProperty>& properties) : SSide(test::MakeClass({"Element", {}, properties})) {}
  explicit SSide(const std::shared_ptr<CMetaClass2024>& element)
      : list(element->GetProperties()), dict(element->GetPropertyDict()) {}

  Interface::PropertyList list;
  Interface::PropertyDict dict;
};

std::vector<std::string> Names(const Interface::PropertyList& list) {
  std::vector<std::string> names;
  for (const auto& property : list) {
    names.push_back(property->GetInternalName());
  }
  return names;
}

/// What every operation answers for one pair of sides.
struct SResult {
  SResult(const SSide& client, const SSide& original) {
    const test::CLogCapture log;
    jsonPassed = Interface::CheckProperties(client.list, original.list, client.dict, original.dict, json);
    jsonUpdated = Interface::HasUpdatedProperties(client.list, original.dict, updatesAlone);
    EXPECT_THAT(log.Lines(), IsEmpty()) << "the operations with an object log nothing";
    passed = Interface::CheckProperties(client.list, original.list, client.dict, original.dict, deleted, inserted,
                                        updatedClient, updatedOriginal);
    messages = log.Messages();
  }

  std::shared_ptr<CJsonObject> json = std::make_shared<CJsonObject>();
  std::shared_ptr<CJsonObject> updatesAlone = std::make_shared<CJsonObject>();
  bool jsonPassed;
  bool jsonUpdated;
  bool passed;
  Interface::PropertyList deleted;
  Interface::PropertyList inserted;
  Interface::PropertyList updatedClient;
  Interface::PropertyList updatedOriginal;
  std::vector<std::string> messages;
};

TEST(CheckProperty2024InterfaceTest, EmptyListsGiveNothingEverywhere) {
  const SSide none(std::vector<SProperty>{});
  const SResult result(none, none);
  EXPECT_TRUE(result.jsonPassed);
  EXPECT_FALSE(result.jsonUpdated);
  EXPECT_TRUE(result.passed);
  EXPECT_EQ(result.json->ToText(), "{}");
  EXPECT_EQ(result.updatesAlone->ToText(), "{}");
  EXPECT_THAT(result.deleted, IsEmpty());
  EXPECT_THAT(result.inserted, IsEmpty());
  EXPECT_THAT(result.updatedClient, IsEmpty());
  EXPECT_THAT(result.updatedOriginal, IsEmpty());
  EXPECT_THAT(result.messages, IsEmpty());
  Interface::PropertyList found;
  Interface::PropertyList foundOriginal;
  EXPECT_FALSE(Interface::HasDeletedProperties(none.list, none.dict, found));
  EXPECT_FALSE(Interface::HasInsertedProperties(none.list, none.dict, found));
  EXPECT_FALSE(Interface::HasUpdatedProperties(none.list, none.dict, found, foundOriginal));
  EXPECT_THAT(found, IsEmpty());
}

TEST(CheckProperty2024InterfaceTest, NamesMatchWithoutRegardToCase) {
  const SResult result(SSide({Property("Code")}), SSide({Property("cODE", 64)}));
  EXPECT_THAT(Keys(*result.json), ElementsAre("updated_properties"));
  EXPECT_THAT(Changes(*result.json), ElementsAre("Code.length: 64 > 32"));
  EXPECT_THAT(result.deleted, IsEmpty());
  EXPECT_THAT(result.inserted, IsEmpty());
  EXPECT_THAT(Names(result.updatedClient), ElementsAre("Code"));
  EXPECT_THAT(Names(result.updatedOriginal), ElementsAre("cODE"));
}

TEST(CheckProperty2024InterfaceTest, OnlyAsciiLettersIgnoreCase) {
  const SResult result(SSide({Property("Größe")}), SSide({Property("GRÖßE")}));
  EXPECT_THAT(Names(result.deleted), ElementsAre("GRÖßE"));
  EXPECT_THAT(Names(result.inserted), ElementsAre("Größe"));
}

TEST(CheckProperty2024InterfaceTest, DisplayNameFieldAndTypeTakeNoPartInMatching) {
  SProperty client = Property("Code");
  SProperty original = Property("Number");
  original.displayName = client.displayName;
  original.field = client.field;
  const SResult result(SSide({client}), SSide({original}));
  EXPECT_THAT(Keys(*result.json), ElementsAre("deleted_properties", "inserted_properties"));
}

TEST(CheckProperty2024InterfaceTest, ARenameIsOneInsertionAndOneDeletionAndNoUpdate) {
  const SResult result(SSide({Property("Number")}), SSide({Property("Code")}));
  EXPECT_FALSE(result.jsonPassed);
  EXPECT_FALSE(result.jsonUpdated);
  EXPECT_FALSE(result.passed);
  EXPECT_EQ(result.json->ToText(), R"json({
  "deleted_properties": [
    {
      "internal_name": "Code",
      "display_name": "Code (display)",
      "field": "F_Code",
      "type": "string",
      "length": 32,
      "default_value": "",
      "precision": 0,
      "max": "",
      "min": "",
      "lookup_internal_name": ""
    }
  ],
  "inserted_properties": [
    {
      "internal_name": "Number",
      "display_name": "Number (display)",
      "field": "F_Number",
      "type": "string",
      "length": 32,
      "default_value": "",
      "precision": 0,
      "max": "",
      "min": "",
      "lookup_internal_name": ""
    }
  ]
})json");
  EXPECT_THAT(Names(result.deleted), ElementsAre("Code"));
  EXPECT_THAT(Names(result.inserted), ElementsAre("Number"));
  EXPECT_THAT(result.updatedClient, IsEmpty());
  EXPECT_THAT(result.messages, IsEmpty());
}

TEST(CheckProperty2024InterfaceTest, APairThatDiffersInTypeAndDefaultValueGivesTwoUpdatesInThisOrder) {
  SProperty client = Property("Code");
  client.type = "text";
  client.defaultValue = "x";
  const SResult result(SSide({client}), SSide({Property("Code")}));
  EXPECT_FALSE(result.jsonPassed);
  EXPECT_TRUE(result.jsonUpdated);
  EXPECT_THAT(Keys(*result.json), ElementsAre("updated_properties"));
  EXPECT_THAT(Changes(*result.json), ElementsAre("Code.type: string > text", "Code.default_value:  > x"));
  EXPECT_EQ(result.updatesAlone->ToText(), result.json->ToText());
}

TEST(CheckProperty2024InterfaceTest, UpdatesOfSeveralPairsStandInTheOrderOfTheClientsList) {
  SProperty second = Property("B", 2);
  second.precision = 1;
  const SResult result(SSide({second, Property("C"), Property("A", 1)}),
                       SSide({Property("A"), Property("B"), Property("C")}));
  EXPECT_THAT(Changes(*result.json), ElementsAre("B.length: 32 > 2", "B.precision: 0 > 1", "A.length: 32 > 1"));
  EXPECT_THAT(Names(result.updatedClient), ElementsAre("B", "A"));
  EXPECT_THAT(Names(result.updatedOriginal), ElementsAre("B", "A"));
  EXPECT_THAT(result.messages, ElementsAre("property check CheckPropertyLength error.property:B<hr=0xA4520003>",
                                           "property check CheckPrecision error.property:B<hr=0xA4520003>",
                                           "property check CheckPropertyLength error.property:A<hr=0xA4520003>"));
}

TEST(CheckProperty2024InterfaceTest, DeletedInsertedAndUpdatedAreAllFoundAndStandInThisOrder) {
  const SResult result(SSide({Property("New2"), Property("Same", 1), Property("New1")}),
                       SSide({Property("Old2"), Property("Same"), Property("Old1")}));
  EXPECT_FALSE(result.jsonPassed);
  EXPECT_FALSE(result.passed);
  EXPECT_THAT(Keys(*result.json), ElementsAre("deleted_properties", "inserted_properties", "updated_properties"));
  EXPECT_THAT(Names(*result.json, "deleted_properties"), ElementsAre("Old2", "Old1"));
  EXPECT_THAT(Names(*result.json, "inserted_properties"), ElementsAre("New2", "New1"));
  EXPECT_THAT(Changes(*result.json), ElementsAre("Same.length: 32 > 1"));
  EXPECT_THAT(Names(result.deleted), ElementsAre("Old2", "Old1"));
  EXPECT_THAT(Names(result.inserted), ElementsAre("New2", "New1"));
}

TEST(CheckProperty2024InterfaceTest, EachFindingAloneMakesTheCheckFail) {
  const SSide empty(std::vector<SProperty>{});
  const SSide one({Property("Code")});
  const SSide changed({Property("Code", 1)});
  const SResult deleted(empty, one);
  EXPECT_FALSE(deleted.passed);
  EXPECT_FALSE(deleted.jsonPassed);
  EXPECT_THAT(Keys(*deleted.json), ElementsAre("deleted_properties"));
  const SResult inserted(one, empty);
  EXPECT_FALSE(inserted.passed);
  EXPECT_FALSE(inserted.jsonPassed);
  EXPECT_THAT(Keys(*inserted.json), ElementsAre("inserted_properties"));
  const SResult updated(changed, one);
  EXPECT_FALSE(updated.passed);
  EXPECT_FALSE(updated.jsonPassed);
  EXPECT_THAT(Keys(*updated.json), ElementsAre("updated_properties"));
}

TEST(CheckProperty2024InterfaceTest, OutputListsAreAppendedTo) {
  const SSide client({Property("New"), Property("Same", 1)});
  const SSide original({Property("Same"), Property("Old")});
  const test::CLogCapture log;
  Interface::PropertyList deleted = {test::Make(Property("before1"))};
  Interface::PropertyList inserted = {test::Make(Property("before2"))};
  Interface::PropertyList updatedClient = {test::Make(Property("before3"))};
  Interface::PropertyList updatedOriginal = {test::Make(Property("before4"))};
  EXPECT_FALSE(Interface::CheckProperties(client.list, original.list, client.dict, original.dict, deleted, inserted,
                                          updatedClient, updatedOriginal));
  EXPECT_THAT(Names(deleted), ElementsAre("before1", "Old"));
  EXPECT_THAT(Names(inserted), ElementsAre("before2", "New"));
  EXPECT_THAT(Names(updatedClient), ElementsAre("before3", "Same"));
  EXPECT_THAT(Names(updatedOriginal), ElementsAre("before4", "Same"));
}

TEST(CheckProperty2024InterfaceTest, TheFoundPropertiesAreTheGivenObjects) {
  const SSide client({Property("New"), Property("Same", 1)});
  const SSide original({Property("Same"), Property("Old")});
  const SResult result(client, original);
  EXPECT_THAT(result.deleted, ElementsAre(original.list.back()));
  EXPECT_THAT(result.inserted, ElementsAre(client.list.front()));
  EXPECT_THAT(result.updatedClient, ElementsAre(client.list.back()));
  EXPECT_THAT(result.updatedOriginal, ElementsAre(original.list.front()));
}

using HasMissing = bool (*)(const Interface::PropertyList&, const Interface::PropertyDict&, Interface::PropertyList&);

class CheckProperty2024InterfaceMissingTest : public testing::TestWithParam<HasMissing> {};

TEST_P(CheckProperty2024InterfaceMissingTest, WhatTheDictionaryLacksIsAppendedInListOrder) {
  const SSide side({Property("C"), Property("A"), Property("B")});
  const SSide other({Property("a")});
  Interface::PropertyList found = {test::Make(Property("before"))};
  EXPECT_TRUE(GetParam()(side.list, other.dict, found));
  EXPECT_THAT(Names(found), ElementsAre("before", "C", "B"));
}

TEST_P(CheckProperty2024InterfaceMissingTest, AListThatTheDictionaryCoversGivesNothing) {
  const SSide side({Property("C"), Property("A", 1)});
  const SSide other({Property("a"), Property("b"), Property("c")});
  Interface::PropertyList found;
  EXPECT_FALSE(GetParam()(side.list, other.dict, found));
  EXPECT_THAT(found, IsEmpty());
}

TEST_P(CheckProperty2024InterfaceMissingTest, ANameThatStandsTwiceAndIsMissingIsAppendedTwice) {
  const SSide side({Property("Code"), Property("A"), Property("CODE")});
  Interface::PropertyList found;
  EXPECT_TRUE(GetParam()(side.list, SSide({Property("A")}).dict, found));
  EXPECT_THAT(Names(found), ElementsAre("Code", "CODE"));
}

TEST_P(CheckProperty2024InterfaceMissingTest, TheDictionarysKeysAreTakenAsTheyStand) {
  const SSide side({Property("Code")});
  const Interface::PropertyDict upperCaseKey = {{"Code", side.list.front()}};
  Interface::PropertyList found;
  EXPECT_TRUE(GetParam()(side.list, upperCaseKey, found));
}

INSTANTIATE_TEST_SUITE_P(BothNames, CheckProperty2024InterfaceMissingTest,
                         testing::Values(&Interface::HasDeletedProperties, &Interface::HasInsertedProperties));

TEST(CheckProperty2024InterfaceTest, HasUpdatedPropertiesPassesOverWhatHasNoMatch) {
  const SSide client({Property("New"), Property("Same")});
  const SSide original({Property("Same"), Property("Old")});
  Interface::PropertyList updatedClient;
  Interface::PropertyList updatedOriginal;
  EXPECT_FALSE(Interface::HasUpdatedProperties(client.list, original.dict, updatedClient, updatedOriginal));
  EXPECT_THAT(updatedClient, IsEmpty());
  EXPECT_THAT(updatedOriginal, IsEmpty());
}

TEST(CheckProperty2024InterfaceTest, HasUpdatedPropertiesWithListsLogsEveryCheckThatFailsUnderTheClientsName) {
  const test::CLogCapture log;
  Interface::PropertyList updatedClient;
  Interface::PropertyList updatedOriginal;
  EXPECT_TRUE(Interface::HasUpdatedProperties(SSide({Property("CODE", 1)}).list, SSide({Property("Code")}).dict,
                                              updatedClient, updatedOriginal));
  EXPECT_THAT(log.Lines(),
              ElementsAre(test::ErrorLine("CheckProperty2024Helper.cpp", "CCheckProperty2024Helper::CheckProperty",
                                          "property check CheckPropertyLength error.property:CODE<hr=0xA4520003>")));
}

TEST(CheckProperty2024InterfaceTest, AKeyThatTheObjectHoldsIsReplacedInItsPlaceAndOthersStay) {
  auto result = test::Json(R"({"updated_properties": "old", "internal_name": "Part"})");
  const SSide client({Property("Code", 1), Property("New")});
  const SSide original({Property("Code")});
  EXPECT_FALSE(Interface::CheckProperties(client.list, original.list, client.dict, original.dict, result));
  EXPECT_THAT(Keys(*result), ElementsAre("updated_properties", "internal_name", "inserted_properties"));
  EXPECT_THAT(Changes(*result), ElementsAre("Code.length: 32 > 1"));
}

}  // namespace
