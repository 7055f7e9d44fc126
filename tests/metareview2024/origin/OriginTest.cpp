#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"

// What the folders of the rules do not have: values, and the content of things that only one side has.
namespace {

using metareview::EOrigin;
using test::FindingAt;
using test::Property;
using test::Review;
using test::SBehavior;
using test::SClass;
using test::SModel;
using test::SProperty;

SModel Length(std::uint32_t length) {
  SProperty property = Property("Code");
  property.length = length;
  return {{{"Part", {}, {property}}}, {}, {}};
}

metareview::SFinding LengthFinding(const SModel& base) {
  return FindingAt(Review(Length(48), Length(32), base), "class/Part/property/Code/length");
}

TEST(OriginTest, WithoutABaseItIsUnknown) {
  const auto review = Review({{{"Part", {"A"}, {Property("P")}}}, {}, {}},
                             {{{"Part", {"B"}, {Property("Q")}}, {"New", {}, {}}}, {}, {}});
  EXPECT_EQ(review.findings.size(), 5U);
  for (const metareview::SFinding& finding : review.findings) {
    EXPECT_EQ(finding.origin, EOrigin::kUnknown) << finding.path;
    EXPECT_EQ(finding.base, std::nullopt) << finding.path;
  }
}

TEST(OriginTest, AChangeIsTheCustomersWhereTheBaseHasTheOriginalsValue) {
  EXPECT_EQ(LengthFinding(Length(32)).origin, EOrigin::kCustomer);
}

TEST(OriginTest, AChangeIsTheVendorsWhereTheBaseHasTheClientsValue) {
  EXPECT_EQ(LengthFinding(Length(48)).origin, EOrigin::kVendor);
}

TEST(OriginTest, AChangeIsAConflictWhereTheBaseHasAThirdValue) {
  const metareview::SFinding finding = LengthFinding(Length(40));
  EXPECT_EQ(finding.origin, EOrigin::kBoth);
  EXPECT_EQ(finding.base, metareview::Value(40U));
}

TEST(OriginTest, AChangeIsAConflictWithoutAValueWhereTheBaseHasNoSuchThing) {
  for (const SModel& base : {SModel{}, SModel{{{"Part", {}, {}}}, {}, {}}}) {
    const metareview::SFinding finding = LengthFinding(base);
    EXPECT_EQ(finding.origin, EOrigin::kBoth);
    EXPECT_EQ(finding.base, std::nullopt);
  }
}

TEST(OriginTest, TheBasesThingsAreFoundWhateverTheirSpelling) {
  SModel base = Length(32);
  base.classes[0].internalName = "PART";
  base.classes[0].properties[0].internalName = "CODE";
  EXPECT_EQ(LengthFinding(base).origin, EOrigin::kCustomer);
}

using Limit = std::string SProperty::*;

EOrigin LimitOrigin(Limit limit, const std::string& base, const std::string& original, const std::string& client) {
  const auto model = [limit](const std::string& value) {
    SProperty property = Property("Code");
    property.*limit = value;
    return SModel{{{"Part", {}, {property}}}, {}, {}};
  };
  return Review(model(client), model(original), model(base)).findings.at(0).origin;
}

TEST(OriginTest, MaximumMinimumAndDefaultAreTheSameWhereTheyAreEqualAsNumbers) {
  for (const Limit limit : {&SProperty::max, &SProperty::min, &SProperty::defaultValue}) {
    EXPECT_EQ(LimitOrigin(limit, "1.0", "1", "2"), EOrigin::kCustomer);
    EXPECT_EQ(LimitOrigin(limit, "2.0", "1", "2"), EOrigin::kVendor);
    EXPECT_EQ(LimitOrigin(limit, "3.0", "1", "2"), EOrigin::kBoth);
  }
}

TEST(OriginTest, OtherTextsAreTheSameWhereTheyAreEqualExactly) {
  EXPECT_EQ(LimitOrigin(&SProperty::displayName, "1.0", "1", "2"), EOrigin::kBoth);
  EXPECT_EQ(LimitOrigin(&SProperty::field, "1.0", "1", "2"), EOrigin::kBoth);
  EXPECT_EQ(LimitOrigin(&SProperty::max, "x ", "x", "y"), EOrigin::kBoth);
}

TEST(OriginTest, EqualExactlyGoesBeforeEqualAsNumbersAndTheOriginalBeforeTheClient) {
  EXPECT_EQ(LimitOrigin(&SProperty::max, "1.0", "1", "1.0"), EOrigin::kVendor);
  EXPECT_EQ(LimitOrigin(&SProperty::max, "1", "1", "1.0"), EOrigin::kCustomer);
  EXPECT_EQ(LimitOrigin(&SProperty::max, "1.00", "1", "1.0"), EOrigin::kCustomer);
}

const SClass kPart = {"Part", {"A", "B"}, {Property("P"), Property("Q")}, "Part", 1, "T_PART"};
const SBehavior kLocked = {"Locked", {"M", "N"}, {Property("P")}, "Locked"};

/// The origin of a class that only the client has.
EOrigin InsertedOrigin(const SClass& base) {
  return Review({{kPart}, {}, {}}, {}, {{base}, {}, {}}).findings.at(0).origin;
}

EOrigin InsertedOrigin(const SBehavior& base) {
  return Review({{}, {}, {kLocked}}, {}, {{}, {}, {base}}).findings.at(0).origin;
}

TEST(ContentTest, OrderAndSpellingAreNoContent) {
  EXPECT_EQ(InsertedOrigin(kPart), EOrigin::kVendor);
  SProperty p = Property("P");
  p.internalName = "p";
  EXPECT_EQ(InsertedOrigin(SClass{"PART", {"b", "a", "A"}, {Property("Q"), p}, "Part", 1, "T_PART"}), EOrigin::kVendor);
  EXPECT_EQ(InsertedOrigin(SBehavior{"locked", {"N", "M"}, {p}, "Locked"}), EOrigin::kVendor);
}

TEST(ContentTest, EachAttributeOfAnElementIsContent) {
  EXPECT_EQ(InsertedOrigin(SClass{"Part", kPart.behaviors, kPart.properties, "part", 1, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", kPart.behaviors, kPart.properties, "Part", 2, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", kPart.behaviors, kPart.properties, "Part", 1, "T_part"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SBehavior{"Locked", kLocked.methods, kLocked.properties, "locked"}), EOrigin::kBoth);
}

TEST(ContentTest, WhatAnElementListsIsContent) {
  EXPECT_EQ(InsertedOrigin(SClass{"Part", {"A"}, kPart.properties, "Part", 1, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", {"A", "C"}, kPart.properties, "Part", 1, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", {"A", "B", "C"}, kPart.properties, "Part", 1, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", kPart.behaviors, {Property("P")}, "Part", 1, "T_PART"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SClass{"Part", kPart.behaviors, {Property("P"), Property("R")}, "Part", 1, "T_PART"}),
            EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SBehavior{"Locked", {"M"}, kLocked.properties, "Locked"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SBehavior{"Locked", {"M", "O"}, kLocked.properties, "Locked"}), EOrigin::kBoth);
  EXPECT_EQ(InsertedOrigin(SBehavior{"Locked", kLocked.methods, {}, "Locked"}), EOrigin::kBoth);
}

TEST(ContentTest, TheDisplayNamesOfMethodsAreContent) {
  // The display name of a method is its name, in that spelling, and "()".
  EXPECT_EQ(InsertedOrigin(SBehavior{"Locked", {"M", "n"}, kLocked.properties, "Locked"}), EOrigin::kBoth);
}

TEST(ContentTest, NumbersInContentAreComparedExactly) {
  SClass base = kPart;
  SClass client = kPart;
  base.properties[0].max = "1";
  client.properties[0].max = "1.0";
  EXPECT_EQ(Review({{client}, {}, {}}, {}, {{base}, {}, {}}).findings.at(0).origin, EOrigin::kBoth);
}

TEST(ContentTest, APartThatOnlyOneSideHasIsComparedWithTheBasesPart) {
  const SModel none = {{{"Part", {}, {}}}, {}, {}};
  const SModel with = {{{"Part", {}, {Property("P")}}}, {}, {}};
  EXPECT_EQ(Review(with, none, none).findings.at(0).origin, EOrigin::kCustomer);
  EXPECT_EQ(Review(with, none, {}).findings.at(0).origin, EOrigin::kCustomer);
  EXPECT_EQ(Review(with, none, with).findings.at(0).origin, EOrigin::kVendor);
  EXPECT_EQ(Review(none, with, none).findings.at(0).origin, EOrigin::kVendor);
  EXPECT_EQ(Review(none, with, {}).findings.at(0).origin, EOrigin::kVendor);
  EXPECT_EQ(Review(none, with, with).findings.at(0).origin, EOrigin::kCustomer);
}

}  // namespace
