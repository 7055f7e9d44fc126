// Metamodels that a run cannot use.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::EndsWith;

const std::string kCheck = " (strategy CCheckMetaStrategy2024 of module checkmeta2024, /strategies/0)";

/// A metamodel document that is refused. In the message FILE stands for the document.
struct SDocument {
  const char* name;
  const char* text;
  const char* message;
};

void PrintTo(const SDocument& document, std::ostream* output) {
  *output << document.name;
}

struct SSide {
  const char* name;
  const char* file;
};

constexpr SSide kSides[] = {{"original", "2024/metamodel.json"}, {"client", "installation.json"}};

class RefusedMetamodelTest : public testing::TestWithParam<SDocument> {};

TEST_P(RefusedMetamodelTest, IsTroubleThatNamesSideFileAndPlace) {
  for (const SSide& side : kSides) {
    const test::CUpgradeDirectory upgrade;
    const std::string file = upgrade.Write(side.file, GetParam().text);
    EXPECT_EQ(upgrade.Trouble(),
              side.name + std::string(" metamodel: ") + test::Replaced(GetParam().message, "FILE", file) + kCheck);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Documents, RefusedMetamodelTest,
    testing::Values(
        SDocument{"Empty", "", "FILE:1:1: the document is empty"},
        SDocument{"Malformed", "{\n  \"generation\": 2024,\n  \"classes\": [\n",
                  "FILE:3:15: the document does not end with the } of its object; it is cut off, or text follows it"},
        SDocument{"NotAnObject", "[]", "FILE:1:1: /: expected an object, found an array"},
        SDocument{"GenerationMissing", "{}", "FILE:1:1: /: member \"generation\" is missing"},
        SDocument{"OtherGeneration", R"({"generation": 2023})",
                  "FILE:1:2: /generation: the metamodel is of generation 2023; only 2024 can be read"},
        SDocument{"LengthOutOfRange",
                  R"({"generation": 2024, "classes": [{"internal_name": "A",
                      "properties": [{"internal_name": "P", "length": 4294967296}]}]})",
                  "FILE:2:61: /classes/0/properties/0/length: expected a whole number from 0 to 4294967295, found "
                  "4294967296"},
        SDocument{"PrecisionNegative",
                  R"({"generation": 2024, "links": [{"internal_name": "A",
                      "properties": [{"internal_name": "P", "precision": -1}]}]})",
                  "FILE:2:61: /links/0/properties/0/precision: expected a whole number from 0 to 65535, found -1"},
        SDocument{"UnknownMember", R"({"generation": 2024, "behaviors": [{"internal_name": "A", "name": "a"}]})",
                  "FILE:1:59: /behaviors/0/name: unknown member; known here: internal_name, display_name, methods, "
                  "properties"},
        SDocument{"NamesThatDifferInCaseOnly",
                  R"({"generation": 2024, "classes": [{"internal_name": "Part"}, {"internal_name": "PART"}]})",
                  "FILE:1:61: /classes/1/internal_name: the name \"PART\" repeats \"Part\" of item 0 of the same list; "
                  "names must differ in more than letter case"}),
    [](const auto& test) { return test.param.name; });

TEST(RunMetamodelsTest, ThatIsMissingIsTroubleThatNamesTheSide) {
  for (const SSide& side : kSides) {
    const test::CUpgradeDirectory upgrade;
    std::filesystem::remove(upgrade.File(side.file));
    EXPECT_EQ(upgrade.Trouble(), side.name + std::string(" metamodel: ") + upgrade.File(side.file) +
                                     ": cannot be read: No such file or directory" + kCheck);
  }
}

TEST(RunMetamodelsTest, LocationOfUnknownFormIsTroubleThatNamesTheSide) {
  for (const SSide& side : kSides) {
    const test::CUpgradeDirectory upgrade;
    upgrade.WriteUpgrade({{side.name + std::string("_metamodel"), R"("metamodel.xml")"}});
    EXPECT_THAT(upgrade.Trouble(),
                testing::StartsWith(side.name + std::string(" metamodel: ") + upgrade.File("metamodel.xml") +
                                    ": not a metamodel location; give "));
  }
}

TEST(RunMetamodelsTest, FailureInTheSecondMetamodelLeavesNoPartOfAReport) {
  const test::CUpgradeDirectory upgrade;
  upgrade.Write("2024/metamodel.json", R"({"generation": 2024, "classes": 5})");
  EXPECT_THAT(upgrade.Trouble({"--elements", "link,class"}),
              EndsWith("/2024/metamodel.json:1:22: /classes: expected an "
                       "array, found a number" +
                       kCheck));
}

}  // namespace
