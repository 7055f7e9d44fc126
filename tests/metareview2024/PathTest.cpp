#include "metareview2024/Path.h"

#include <gmock/gmock.h>

#include <ostream>

namespace {

using metareview::EAttribute;
using metareview::EKind;
using metareview::EThing;
using metareview::FormatPath;
using metareview::IsAboutAttributes;
using metareview::KindsOfPattern;
using metareview::MatchesPath;
using metareview::ParsePath;
using metareview::ProblemOfPattern;
using metareview::SPath;
using testing::ElementsAre;
using testing::IsEmpty;

struct SRow {
  const char* text;
  SPath path;
};

void PrintTo(const SRow& row, std::ostream* output) {
  *output << row.text;
}

class PathTest : public testing::TestWithParam<SRow> {};

INSTANTIATE_TEST_SUITE_P(
    EachForm, PathTest,
    testing::Values(
        SRow{"class/Part", {EKind::kClass, EThing::kClass, EAttribute::kNone, "Part", ""}},
        SRow{"link/Near", {EKind::kLink, EThing::kLink, EAttribute::kNone, "Near", ""}},
        SRow{"behavior/Locked", {EKind::kBehavior, EThing::kBehavior, EAttribute::kNone, "Locked", ""}},
        SRow{"class/Part/internal_name", {EKind::kClass, EThing::kClass, EAttribute::kInternalName, "Part", ""}},
        SRow{"class/Part/class_id", {EKind::kClass, EThing::kClass, EAttribute::kClassId, "Part", ""}},
        SRow{"link/Near/table_name", {EKind::kLink, EThing::kLink, EAttribute::kTableName, "Near", ""}},
        SRow{"behavior/Locked/display_name",
             {EKind::kBehavior, EThing::kBehavior, EAttribute::kDisplayName, "Locked", ""}},
        SRow{"class/Part/behavior/Locked",
             {EKind::kClass, EThing::kListedBehavior, EAttribute::kNone, "Part", "Locked"}},
        SRow{"link/Near/behavior/Locked", {EKind::kLink, EThing::kListedBehavior, EAttribute::kNone, "Near", "Locked"}},
        SRow{"behavior/Locked/method/Lock", {EKind::kBehavior, EThing::kMethod, EAttribute::kNone, "Locked", "Lock"}},
        SRow{"behavior/Locked/method/Lock/internal_name",
             {EKind::kBehavior, EThing::kMethod, EAttribute::kInternalName, "Locked", "Lock"}},
        SRow{"link/Near/property/Code", {EKind::kLink, EThing::kProperty, EAttribute::kNone, "Near", "Code"}},
        SRow{"class/Part/property/Code/lookup_internal_name",
             {EKind::kClass, EThing::kProperty, EAttribute::kLookupInternalName, "Part", "Code"}},
        SRow{"behavior/Locked/property/By/field",
             {EKind::kBehavior, EThing::kProperty, EAttribute::kField, "Locked", "By"}},
        SRow{"class/a~1b~0c~2~01/property/~2",
             {EKind::kClass, EThing::kProperty, EAttribute::kNone, "a/b~c*~1", "*"}}));

TEST_P(PathTest, IsFormattedAndParsed) {
  const SPath& path = GetParam().path;
  EXPECT_EQ(FormatPath(path), GetParam().text);
  const auto parsed = ParsePath(GetParam().text);
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->kind, path.kind);
  EXPECT_EQ(parsed->thing, path.thing);
  EXPECT_EQ(parsed->attribute, path.attribute);
  EXPECT_EQ(parsed->element, path.element);
  EXPECT_EQ(parsed->part, path.part);
}

TEST_P(PathTest, IsAPatternOfItsKindOnly) {
  EXPECT_THAT(KindsOfPattern(GetParam().text), ElementsAre(GetParam().path.kind));
  EXPECT_EQ(IsAboutAttributes(GetParam().text), GetParam().path.attribute != EAttribute::kNone);
}

TEST_P(PathTest, NamesTheThingByItsOwnName) {
  const SPath& path = GetParam().path;
  EXPECT_EQ(path.Name(), path.part.empty() ? path.element : path.part);
}

TEST(PathTextTest, WhatIsNoPathOfADifferenceIsNotParsed) {
  for (const char* text : {"",
                           "/",
                           "class",
                           "class/",
                           "Class/Part",
                           "part/Part",
                           "/class/Part",
                           "class/Part/",
                           "class//",
                           "class/Part/length",
                           "class/Part/Internal_name",
                           "behavior/Locked/class_id",
                           "class/Part/property",
                           "class/Part/property/",
                           "class/Part/properties/Code",
                           "class/Part/method/Lock",
                           "behavior/Locked/behavior/Other",
                           "class/Part/behavior/Locked/internal_name",
                           "class/Part/behavior/Locked/display_name",
                           "behavior/Locked/method/Lock/length",
                           "class/Part/property/Code/class_id",
                           "class/Part/property/Code/length/",
                           "class/Part/property/Code/length/max",
                           "class/a~",
                           "class/a~3",
                           "class/a*",
                           "class/*",
                           "*/Part"}) {
    EXPECT_FALSE(ParsePath(text)) << text;
  }
}

TEST(PathPatternTest, AStarStandsForOneWholeSegment) {
  EXPECT_TRUE(MatchesPath("class/*/behavior/Locked", "class/Part/behavior/Locked"));
  EXPECT_TRUE(MatchesPath("*/*/*/*", "link/Near/property/Code"));
  EXPECT_FALSE(MatchesPath("class/*", "class/Part/behavior/Locked"));
  EXPECT_FALSE(MatchesPath("class/*/Locked", "class/Part/behavior/Locked"));
  EXPECT_FALSE(MatchesPath("class/*/behavior/Locked", "link/Near/behavior/Locked"));
}

TEST(PathPatternTest, AsciiCaseIsIgnored) {
  EXPECT_TRUE(MatchesPath("class/PART/behavior/fha_ErpTransfer", "class/Part/behavior/FHA_erptransfer"));
  EXPECT_FALSE(MatchesPath("class/Größe", "class/GRÖßE"));
}

TEST(PathPatternTest, ItsKindsAreThoseOfWhichItMayBe) {
  EXPECT_THAT(KindsOfPattern("*/X"), ElementsAre(EKind::kClass, EKind::kLink, EKind::kBehavior));
  EXPECT_THAT(KindsOfPattern("*/X/behavior/Y"), ElementsAre(EKind::kClass, EKind::kLink));
  EXPECT_THAT(KindsOfPattern("*/X/method/Y"), ElementsAre(EKind::kBehavior));
  EXPECT_THAT(KindsOfPattern("*/X/*/Y"), ElementsAre(EKind::kClass, EKind::kLink, EKind::kBehavior));
  EXPECT_THAT(KindsOfPattern("*/X/table_name"), ElementsAre(EKind::kClass, EKind::kLink));
  EXPECT_THAT(KindsOfPattern("*/X/*/Y/length"), ElementsAre(EKind::kClass, EKind::kLink, EKind::kBehavior));
  EXPECT_THAT(KindsOfPattern("*/X/method/Y/length"), IsEmpty());
  EXPECT_THAT(KindsOfPattern("class/*/behavior/*/*"), IsEmpty());
  EXPECT_THAT(KindsOfPattern("*"), IsEmpty());
}

TEST(PathPatternTest, WhatIsNoneHasAProblemThatSaysWhy) {
  EXPECT_FALSE(ProblemOfPattern("class/*/behavior/FHA_ErpTransfer"));
  EXPECT_EQ(ProblemOfPattern("class/FHA_*"), "\"*\" can only stand for one whole segment; in a name it is written ~2");
  EXPECT_EQ(ProblemOfPattern("class/**"), "\"*\" can only stand for one whole segment; in a name it is written ~2");
  EXPECT_EQ(ProblemOfPattern("class/Part/length"), "no difference has a path of this form");
}

}  // namespace
