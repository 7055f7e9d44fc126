#include "upgrademeta2024/MetaClass2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/MetaMaker.h"

namespace {

using test::Property;
using testing::ElementsAre;
using testing::IsEmpty;

test::SClass PartValues() {
  test::SClass part;
  part.internalName = "Part";
  part.displayName = "\u96F6\u4EF6";
  part.classId = 4294967295U;
  part.tableName = "T_PART";
  part.behaviors = {"Versioned", "Approvable", "versioned", "Versioned"};
  part.properties = {Property("Name"), Property("Code")};
  return part;
}

TEST(MetaClass2024Test, EachGetterGivesItsValue) {
  const auto part = test::MakeClass(PartValues());
  EXPECT_EQ(part->GetInternalName(), "Part");
  EXPECT_EQ(part->GetDisplayName(), "\u96F6\u4EF6");
  EXPECT_EQ(part->GetClassId(), 4294967295U);
  EXPECT_EQ(part->GetTableName(), "T_PART");
}

TEST(MetaClass2024Test, BehaviorNamesKeepOrderSpellingAndRepetitions) {
  EXPECT_THAT(test::MakeClass(PartValues())->GetBehaviors(),
              ElementsAre("Versioned", "Approvable", "versioned", "Versioned"));
}

TEST(MetaClass2024Test, PropertiesAreInTheElementsOrder) {
  const auto properties = test::MakeClass(PartValues())->GetProperties();
  ASSERT_EQ(properties.size(), 2U);
  EXPECT_EQ(properties.front()->GetInternalName(), "Name");
  EXPECT_EQ(properties.back()->GetInternalName(), "Code");
}

TEST(MetaClass2024Test, PropertyDictIsKeyedByTheLowerCasedName) {
  const auto part = test::MakeClass(PartValues());
  const auto dict = part->GetPropertyDict();
  ASSERT_EQ(dict.size(), 2U);
  EXPECT_EQ(dict.at("name"), part->GetProperties().front());
  EXPECT_EQ(dict.at("code"), part->GetProperties().back());
  EXPECT_EQ(dict.count("Name"), 0U);
}

TEST(MetaClass2024Test, PropertyTableIsThatOfTheProperties) {
  const auto part = test::MakeClass(PartValues());
  EXPECT_EQ(part->GetValues().properties.GetSize(), 2U);
  EXPECT_EQ(&part->GetValues().properties.At(0), part->GetProperties().front().get());
}

TEST(MetaClass2024Test, ClassOfNothingIsEmpty) {
  const CMetaClass2024 element({});
  EXPECT_EQ(element.GetInternalName(), "");
  EXPECT_EQ(element.GetDisplayName(), "");
  EXPECT_EQ(element.GetTableName(), "");
  EXPECT_EQ(element.GetClassId(), 0U);
  EXPECT_THAT(element.GetBehaviors(), IsEmpty());
  EXPECT_THAT(element.GetProperties(), IsEmpty());
  EXPECT_THAT(element.GetPropertyDict(), IsEmpty());
}

TEST(MetaClass2024Test, PropertiesOutliveTheClass) {
  const auto property = test::MakeClass(PartValues())->GetProperties().back();
  EXPECT_EQ(property->GetField(), "F_Code");
}

TEST(MetaLink2024Test, LinkIsUsedAsAClass) {
  const std::shared_ptr<CMetaClass2024> link = test::MakeLink(PartValues());
  EXPECT_EQ(link->GetInternalName(), "Part");
  EXPECT_EQ(link->GetDisplayName(), "\u96F6\u4EF6");
  EXPECT_EQ(link->GetClassId(), 4294967295U);
  EXPECT_EQ(link->GetTableName(), "T_PART");
  EXPECT_EQ(link->GetBehaviors().size(), 4U);
  EXPECT_EQ(link->GetProperties().size(), 2U);
  EXPECT_EQ(link->GetPropertyDict().count("code"), 1U);
}

}  // namespace
