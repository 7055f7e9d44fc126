#include "metareview2024/render/page/ValueCells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "metareview2024/MadeReview.h"

namespace metareview::page {
namespace {

using test::Made;
using test::MadeChange;
using testing::ElementsAre;

/// The cells as texts: marks in brackets, words that are no values in parentheses.
std::vector<std::string> Cells(const SFinding& finding, bool hasBase = true) {
  std::vector<std::string> texts;
  for (const SValueCell& cell : ValueCells(CWords::English(), finding, hasBase)) {
    const std::string text = cell.before + (cell.marked.empty() ? "" : "[" + cell.marked + "]") + cell.after;
    texts.push_back(cell.side + " " + (cell.isWord ? "(" + text + ")" : text));
  }
  return texts;
}

SFinding Length(std::uint32_t client, std::uint32_t original, EOrigin origin) {
  return MadeChange("class/A/property/P/length", "length-shrinks", client, original, origin);
}

TEST(ValueCellsTest, WhatTheClientChangedIsMarkedThere) {
  EXPECT_THAT(Cells(Length(48, 32, EOrigin::kCustomer)), ElementsAre("base 32", "original 32", "client [48]"));
}

TEST(ValueCellsTest, WhatTheOriginalChangedIsMarkedThere) {
  EXPECT_THAT(Cells(Length(48, 32, EOrigin::kVendor)), ElementsAre("base 48", "original [32]", "client 48"));
}

TEST(ValueCellsTest, WhatBothChangedIsMarkedOnBothSides) {
  SFinding finding = Length(48, 32, EOrigin::kBoth);
  finding.base = 40U;
  EXPECT_THAT(Cells(finding), ElementsAre("base 40", "original [32]", "client [48]"));
}

TEST(ValueCellsTest, WithoutABaseBothSidesAreMarked) {
  EXPECT_THAT(Cells(Length(48, 32, EOrigin::kUnknown), false), ElementsAre("original [32]", "client [48]"));
}

TEST(ValueCellsTest, OfANameOnlyTheDifferingCharactersAreMarked) {
  const SFinding finding = MadeChange("class/A/table_name", "table-moved", "T_FHA_PLANT", "T_PLANT");
  EXPECT_THAT(Cells(finding), ElementsAre("base T_PLANT", "original T_PLANT", "client T_[FHA_]PLANT"));
}

TEST(ValueCellsTest, AShorterNameIsMarkedAsAWhole) {
  const SFinding finding = MadeChange("class/A/table_name", "table-moved", "T_PLANT", "T_FHA_PLANT");
  EXPECT_THAT(Cells(finding), ElementsAre("base T_FHA_PLANT", "original T_FHA_PLANT", "client [T_PLANT]"));
}

TEST(ValueCellsTest, ANumberIsMarkedAsAWhole) {
  const SFinding finding = MadeChange("class/A/property/P/max", "max-tightens", "2880.00", "1440");
  EXPECT_THAT(Cells(finding), ElementsAre("base 1440", "original 1440", "client [2880.00]"));
}

TEST(ValueCellsTest, NoCharacterIsMarkedInHalf) {
  // Ä is C3 84, Ö is C3 96, and 4 bytes of the emoji differ in the last one only.
  EXPECT_THAT(Cells(MadeChange("class/A/display_name", "display-name", "aÄb", "aÖb")),
              ElementsAre("base aÖb", "original aÖb", "client a[Ä]b"));
  EXPECT_THAT(Cells(MadeChange("class/A/display_name", "display-name", "\U0001F600", "\U0001F601")),
              ElementsAre("base \U0001F601", "original \U0001F601", "client [\U0001F600]"));
  // Ä is C3 84 and ℄ is E2 84 84: they end in the same byte.
  EXPECT_THAT(Cells(MadeChange("class/A/display_name", "display-name", "Ä", "℄")),
              ElementsAre("base ℄", "original ℄", "client [Ä]"));
  EXPECT_THAT(Cells(MadeChange("class/A/display_name", "display-name", "aÄb", "a℄b")),
              ElementsAre("base a℄b", "original a℄b", "client a[Ä]b"));
}

TEST(ValueCellsTest, WhatBeginsWithinACharacterIsMarkedToo) {
  EXPECT_THAT(Cells(MadeChange("class/A/display_name", "display-name", "\x84", "\x96")),
              ElementsAre("base \\x96", "original \\x96", "client [\\x84]"));
}

TEST(ValueCellsTest, AnEmptyValueIsAWord) {
  const SFinding finding = MadeChange("class/A/property/P/lookup_internal_name", "lookup-unset", "User", "");
  EXPECT_THAT(Cells(finding), ElementsAre("base (empty)", "original (empty)", "client [User]"));
}

TEST(ValueCellsTest, WhatTheBaseDidNotHaveIsAbsentThere) {
  SFinding finding = Length(48, 32, EOrigin::kBoth);
  finding.base.reset();
  EXPECT_THAT(Cells(finding), ElementsAre("base (absent)", "original [32]", "client [48]"));
}

struct SPresence {
  const char* name;
  EChange change;
  EOrigin origin;
  std::vector<std::string> cells;
};

void PrintTo(const SPresence& presence, std::ostream* output) {
  *output << presence.name;
}

class ValueCellsPresenceTest : public testing::TestWithParam<SPresence> {};

TEST_P(ValueCellsPresenceTest, TheOriginTellsWhatTheBaseHad) {
  EXPECT_EQ(Cells(Made("class/A", GetParam().change, "class-inserted", GetParam().origin)), GetParam().cells);
}

INSTANTIATE_TEST_SUITE_P(AllOrigins, ValueCellsPresenceTest,
                         testing::Values(SPresence{"InsertedByCustomer",
                                                   EChange::kInserted,
                                                   EOrigin::kCustomer,
                                                   {"base (absent)", "original (absent)", "client ([present])"}},
                                         SPresence{"WithdrawnByVendor",
                                                   EChange::kInserted,
                                                   EOrigin::kVendor,
                                                   {"base (present)", "original ([absent])", "client (present)"}},
                                         SPresence{"WithdrawnAndChanged",
                                                   EChange::kInserted,
                                                   EOrigin::kBoth,
                                                   {"base (present)", "original ([absent])", "client ([changed])"}},
                                         SPresence{"AddedByVendor",
                                                   EChange::kDeleted,
                                                   EOrigin::kVendor,
                                                   {"base (absent)", "original ([present])", "client (absent)"}},
                                         SPresence{"DeletedByCustomer",
                                                   EChange::kDeleted,
                                                   EOrigin::kCustomer,
                                                   {"base (present)", "original (present)", "client ([absent])"}},
                                         SPresence{"DeletedAndChanged",
                                                   EChange::kDeleted,
                                                   EOrigin::kBoth,
                                                   {"base (present)", "original ([changed])", "client ([absent])"}}),
                         testing::PrintToStringParamName());

TEST(ValueCellsTest, WithoutABaseTheSideThatHasItIsMarked) {
  EXPECT_THAT(Cells(Made("class/A", EChange::kInserted, "class-inserted", EOrigin::kUnknown), false),
              ElementsAre("original (absent)", "client ([present])"));
  EXPECT_THAT(Cells(Made("class/A", EChange::kDeleted, "class-deleted", EOrigin::kUnknown), false),
              ElementsAre("original ([present])", "client (absent)"));
}

TEST(ValueCellsTest, ControlsAreVisibleAndLongValuesCut) {
  const std::string longName(1000000, 'x');
  const SFinding finding = MadeChange("class/A/display_name", "display-name", "a\n" + longName, "a\n");
  const std::string cut = std::string(400, 'x') + " … " + std::string(100, 'x');
  EXPECT_THAT(Cells(finding), ElementsAre("base a\\n", "original a\\n", "client a\\n[" + cut + "]"));
}

}  // namespace
}  // namespace metareview::page
