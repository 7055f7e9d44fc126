// What a check of a document finds, beyond the fault that loading ends with.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

namespace {

using test::kPlaces;
using test::SObjectPlace;
using test::With;
using testing::ElementsAre;
using testing::IsEmpty;

/// The directory is taken from what is wrong.
SMetaFaults Check(const std::string& text) {
  const test::CTemporaryDirectory directory;
  SMetaFaults faults = OpenMetaStorage(directory.Write("meta.json", text))->Check();
  for (std::string& words : faults.words) {
    words.erase(0, directory.Path().size() + 1);
  }
  return faults;
}

TEST(DocumentMetaCheckTest, AMetamodelWithoutFaultsHasNone) {
  const SMetaFaults faults = Check(R"({"generation": 2024, "classes": [{"internal_name": "Part"}]})");
  EXPECT_THAT(faults.words, IsEmpty());
  EXPECT_EQ(faults.count, 0U);
  EXPECT_TRUE(faults.isWhole);
}

TEST(DocumentMetaCheckTest, EveryFaultIsToldWithItsPlaceInTheOrderOfTheText) {
  const SMetaFaults faults = Check(R"({
  "generation": 2023,
  "sums": {"of": [1, {"classes": 2}]},
  "classes": [
    {"internal_name": "", "class_id": -1, "behaviors": ["A", 5, {"x": 1}, "B"]},
    {"display_name": {"internal_name": "no"}, "internal_name": "Part", "table_name": ["}"]},
    3,
    {"internal_name": "Plant", "class_id": 1, "class_id": {}, "properties": {"a": 1}}
  ],
  "links": "none",
  "behaviors": [{"internal_name": "V", "methods": [{}, {"internal_name": "m", "display_name": null}]}]
})");
  EXPECT_THAT(faults.words,
              ElementsAre("meta.json:2:3: /generation: the metamodel is of generation 2023; only 2024 can be read",
                          "meta.json:3:3: /sums: unknown member; known here: generation, classes, links, behaviors",
                          "meta.json:5:6: /classes/0/internal_name: the name is empty",
                          "meta.json:5:27: /classes/0/class_id: expected a whole number from 0 to 4294967295, found -1",
                          "meta.json:5:62: /classes/0/behaviors/1: expected a string, found a number",
                          "meta.json:5:65: /classes/0/behaviors/2: expected a string, found an object",
                          "meta.json:6:6: /classes/1/display_name: expected a string, found an object",
                          "meta.json:6:72: /classes/1/table_name: expected a string, found an array",
                          "meta.json:7:5: /classes/2: expected an object, found a number",
                          "meta.json:8:47: /classes/3/class_id: duplicate member",
                          "meta.json:8:63: /classes/3/properties: expected an array, found an object",
                          "meta.json:10:3: /links: expected an array, found a string",
                          "meta.json:11:52: /behaviors/0/methods/0: member \"internal_name\" is missing",
                          "meta.json:11:79: /behaviors/0/methods/1/display_name: expected a string, found null"));
  EXPECT_EQ(faults.count, 14U);
  EXPECT_TRUE(faults.isWhole);
}

TEST(DocumentMetaCheckTest, EveryRepeatedNameIsTold) {
  const SMetaFaults faults = Check(R"({"generation": 2024, "classes": [{"internal_name": "C", "properties": [
{"internal_name": "a"}, {"internal_name": "b"},
{"internal_name": "A"},
{"internal_name": "B"},
{"internal_name": "a"}]},
{"internal_name": "c"}, {"internal_name": "C"}]})");
  const std::string more = "; names must differ in more than letter case";
  EXPECT_THAT(
      faults.words,
      ElementsAre(
          "meta.json:3:1: /classes/0/properties/2/internal_name: the name \"A\" repeats \"a\" of item 0 of the same "
          "list" +
              more,
          "meta.json:4:1: /classes/0/properties/3/internal_name: the name \"B\" repeats \"b\" of item 1 of the same "
          "list" +
              more,
          "meta.json:5:1: /classes/0/properties/4/internal_name: the name \"a\" repeats \"a\" of item 0 of the same "
          "list" +
              more,
          "meta.json:6:1: /classes/1/internal_name: the name \"c\" repeats \"C\" of item 0 of the same list" + more,
          "meta.json:6:25: /classes/2/internal_name: the name \"C\" repeats \"C\" of item 0 of the same list" + more));
}

TEST(DocumentMetaCheckTest, ANameOfTheWrongTypeIsOneFault) {
  EXPECT_THAT(Check("{\"generation\": 2024, \"links\": [{\"internal_name\": 5}, {\"internal_name\": null}]}").words,
              ElementsAre("meta.json:1:33: /links/0/internal_name: expected a string, found a number",
                          "meta.json:1:55: /links/1/internal_name: expected a string, found null"));
}

TEST(DocumentMetaCheckTest, ElementsWithoutANameAreNoRepetition) {
  EXPECT_EQ(Check(R"({"generation": 2024, "classes": [{}, {}, {"internal_name": ""}, {"internal_name": ""}]})").count,
            4U);
}

class FaultsInAPlaceTest : public testing::TestWithParam<SObjectPlace> {};

/// Whatever is in the way is passed over as a whole.
TEST_P(FaultsInAPlaceTest, WhatIsInTheWayHidesNoFaultBehindIt) {
  for (const std::string value : {"1", "-1.5e3", "true", "null", "\"x\"", "\"a\\\"}]\"", "[]", "{}",
                                  R"([{"internal_name": 5}, [[]], "]"])", R"({"properties": [{"a": "}"}], "b": {}})"}) {
    SCOPED_TRACE(value);
    if (value[0] != '{') {
      EXPECT_EQ(Check(With(GetParam(), value + R"(, {"internal_name": ""})")).count, 2U);
    }
    EXPECT_EQ(
        Check(With(GetParam(), R"({"internal_name": "A", "unknown": )" + value + R"(, "display_name": 1})")).count, 2U);
    EXPECT_EQ(Check(With(GetParam(), R"({"internal_name": "A", "internal_name": )" + value + "}, 1")).count, 2U);
    if (value[0] != '"') {
      EXPECT_EQ(Check(With(GetParam(), R"({"internal_name": "A", "display_name": )" + value + "}, 1")).count, 2U);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, FaultsInAPlaceTest, testing::ValuesIn(kPlaces),
                         [](const auto& place) { return place.param.name; });

TEST(DocumentMetaCheckTest, TextThatIsNotJsonHasOneFault) {
  for (const std::string text : {"", "{", "{\"generation\": 2024,}", "\xFF\xFE", "generation: 2024"}) {
    const SMetaFaults faults = Check(text);
    EXPECT_EQ(faults.count, 1U) << text;
    EXPECT_FALSE(faults.isWhole) << text;
  }
}

TEST(DocumentMetaCheckTest, ARootThatIsNoObjectIsTheOnlyFault) {
  const SMetaFaults faults = Check("[{\"classes\": 1}, 2");
  EXPECT_THAT(faults.words, ElementsAre("meta.json:1:1: /: expected an object, found an array"));
  EXPECT_TRUE(faults.isWhole);
}

TEST(DocumentMetaCheckTest, FaultsBeforeTextThatIsNotJsonAreTold) {
  const SMetaFaults faults = Check("{\"generation\": 2024, \"classes\": [1,\n2 3, 4]}");
  EXPECT_THAT(faults.words, ElementsAre("meta.json:1:34: /classes/0: expected an object, found a number",
                                        "meta.json:2:1: /classes/1: expected an object, found a number",
                                        "meta.json:2:3: not valid JSON"));
  EXPECT_FALSE(faults.isWhole);
}

TEST(DocumentMetaCheckTest, TheFirstHundredFaultsHaveWords) {
  std::string items = "1";
  for (int i = 1; i < 117; ++i) {
    items += ", 1";
  }
  const SMetaFaults faults = Check("{\"generation\": 2024, \"links\": [" + items + "]}");
  EXPECT_EQ(faults.words.size(), 100U);
  EXPECT_EQ(faults.words.back(), "meta.json:1:329: /links/99: expected an object, found a number");
  EXPECT_EQ(faults.count, 117U);
  EXPECT_TRUE(faults.isWhole);
}

TEST(DocumentMetaCheckTest, AFileThatCannotBeReadIsNoFault) {
  EXPECT_EQ(test::ErrorOf([] { OpenMetaStorage("/absent/meta.json")->Check(); }),
            (test::SError{kvx::kFileError, "/absent/meta.json: cannot be read: No such file or directory"}));
}

}  // namespace
