#include "upgrademeta2024/MetaBehavior2024.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/MetaMaker.h"

namespace {

using test::Property;
using testing::IsEmpty;

test::SBehavior VersionedValues() {
  test::SBehavior versioned;
  versioned.internalName = "Versioned";
  versioned.displayName = "\u7248\u672C";
  versioned.methods = {"Revise", "\u00C4ndern", "approve"};
  versioned.properties = {Property("Revision"), Property("Iteration")};
  return versioned;
}

TEST(MetaMethod2024Test, EachGetterGivesItsValue) {
  const CMetaMethod2024 method("Revise", "New revision");
  EXPECT_EQ(method.GetInternalName(), "Revise");
  EXPECT_EQ(method.GetDisplayName(), "New revision");
}

TEST(MetaBehavior2024Test, EachGetterGivesItsValue) {
  const auto versioned = test::MakeBehavior(VersionedValues());
  EXPECT_EQ(versioned->GetInternalName(), "Versioned");
  EXPECT_EQ(versioned->GetDisplayName(), "\u7248\u672C");
}

TEST(MetaBehavior2024Test, MethodsAreInTheElementsOrder) {
  const auto methods = test::MakeBehavior(VersionedValues())->GetMethods();
  ASSERT_EQ(methods.size(), 3U);
  EXPECT_EQ(methods.front()->GetInternalName(), "Revise");
  EXPECT_EQ(methods.front()->GetDisplayName(), "Revise()");
  EXPECT_EQ(methods.back()->GetInternalName(), "approve");
}

TEST(MetaBehavior2024Test, ExistMethodIgnoresAsciiCase) {
  const auto versioned = test::MakeBehavior(VersionedValues());
  for (const char* name : {"Revise", "REVISE", "revise", "Approve", "\u00C4NDERN"}) {
    EXPECT_TRUE(versioned->ExistMethod(name)) << name;
  }
}

TEST(MetaBehavior2024Test, ExistMethodSeesEveryOtherDifference) {
  const auto versioned = test::MakeBehavior(VersionedValues());
  for (const char* name : {"", "Revis", "Revise ", "\u00E4ndern", "Revise()", "Versioned"}) {
    EXPECT_FALSE(versioned->ExistMethod(name)) << name;
  }
}

TEST(MetaBehavior2024Test, PropertiesAreInTheElementsOrderAndKeyedByTheLowerCasedName) {
  const auto versioned = test::MakeBehavior(VersionedValues());
  const auto properties = versioned->GetProperties();
  ASSERT_EQ(properties.size(), 2U);
  EXPECT_EQ(properties.front()->GetInternalName(), "Revision");
  EXPECT_EQ(properties.back()->GetInternalName(), "Iteration");
  EXPECT_EQ(versioned->GetPropertyDict().size(), 2U);
  EXPECT_EQ(versioned->GetPropertyDict().at("iteration"), properties.back());
  EXPECT_EQ(versioned->GetValues().properties.GetSize(), 2U);
}

TEST(MetaBehavior2024Test, BehaviorOfNothingIsEmpty) {
  const CMetaBehavior2024 behavior({});
  EXPECT_EQ(behavior.GetInternalName(), "");
  EXPECT_EQ(behavior.GetDisplayName(), "");
  EXPECT_THAT(behavior.GetMethods(), IsEmpty());
  EXPECT_THAT(behavior.GetProperties(), IsEmpty());
  EXPECT_THAT(behavior.GetPropertyDict(), IsEmpty());
  EXPECT_FALSE(behavior.ExistMethod(""));
}

TEST(MetaBehavior2024Test, MethodsAndPropertiesOutliveTheBehavior) {
  auto versioned = test::MakeBehavior(VersionedValues());
  const auto method = versioned->GetMethods().front();
  const auto property = versioned->GetProperties().front();
  versioned.reset();
  EXPECT_EQ(method->GetInternalName(), "Revise");
  EXPECT_EQ(property->GetInternalName(), "Revision");
}

}  // namespace
