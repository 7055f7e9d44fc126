#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"

namespace {

using metareview::ENote;
using test::Property;
using test::Review;
using test::SModel;
using testing::ElementsAre;
using testing::IsEmpty;

/// A class with this many properties, the first of them with another length.
SModel Changed(std::size_t properties, std::size_t changed, std::uint32_t length = 64) {
  SModel model = {{{"Part", {}, {}}}, {}, {}};
  for (std::size_t i = 0; i < properties; ++i) {
    model.classes[0].properties.push_back(Property("P" + std::to_string(i)));
    if (i < changed) {
      model.classes[0].properties.back().length = length;
    }
  }
  return model;
}

TEST(BaseNotesTest, WithoutABaseThereIsNone) {
  EXPECT_THAT(Review(Changed(1, 0), Changed(1, 0)).notes, IsEmpty());
}

TEST(BaseNotesTest, ABaseOfItsOwnIsNotNoted) {
  EXPECT_THAT(Review(Changed(3, 1), Changed(3, 2), Changed(3, 0)).notes, IsEmpty());
}

TEST(BaseNotesTest, ABaseThatEqualsTheClientIsNoted) {
  EXPECT_THAT(Review(Changed(3, 1), Changed(3, 2), Changed(3, 1)).notes, ElementsAre(ENote::kBaseEqualsClient));
}

TEST(BaseNotesTest, ABaseThatEqualsTheOriginalIsNoted) {
  EXPECT_THAT(Review(Changed(3, 1), Changed(3, 2), Changed(3, 2)).notes, ElementsAre(ENote::kBaseEqualsOriginal));
}

TEST(BaseNotesTest, ABaseThatEqualsBothIsNotedTwice) {
  EXPECT_THAT(Review(Changed(3, 1), Changed(3, 1), Changed(3, 1)).notes,
              ElementsAre(ENote::kBaseEqualsClient, ENote::kBaseEqualsOriginal));
}

TEST(BaseNotesTest, OtherSpellingsAreNotEqual) {
  SModel base = Changed(1, 0);
  base.classes[0].internalName = "PART";
  EXPECT_THAT(Review(Changed(1, 0), Changed(1, 1), base).notes, IsEmpty());
}

TEST(BaseNotesTest, AClientWithMoreThanNineTenthsOfTwentyVendorChangesIsNoted) {
  // Of 20 vendor changes the client has 19.
  EXPECT_THAT(Review(Changed(20, 19), Changed(20, 20), Changed(20, 0)).notes,
              ElementsAre(ENote::kClientHasVendorChanges));
}

TEST(BaseNotesTest, NineTenthsAreNotEnough) {
  EXPECT_THAT(Review(Changed(20, 18), Changed(20, 20), Changed(20, 0)).notes, IsEmpty());
  EXPECT_THAT(Review(Changed(30, 27), Changed(30, 30), Changed(30, 0)).notes, IsEmpty());
}

TEST(BaseNotesTest, NineteenVendorChangesAreNotEnough) {
  EXPECT_THAT(Review(Changed(20, 19), Changed(20, 19), Changed(20, 0)).notes, IsEmpty());
}

TEST(BaseNotesTest, OtherChangesOfTheClientDoNotCount) {
  EXPECT_THAT(Review(Changed(20, 20, 65), Changed(20, 20), Changed(20, 0)).notes, IsEmpty());
  SModel client = Changed(20, 20);
  client.classes.push_back({"Own", {}, {}});
  EXPECT_THAT(Review(client, Changed(20, 20), Changed(20, 0)).notes, ElementsAre(ENote::kClientHasVendorChanges));
}

TEST(BaseNotesTest, AddedAndRemovedThingsAreVendorChangesToo) {
  SModel base = {{{"Part", {}, {}}}, {}, {}};
  SModel original = base;
  for (int i = 0; i < 10; ++i) {
    base.classes[0].properties.push_back(Property("Old" + std::to_string(i)));
    original.classes[0].properties.push_back(Property("New" + std::to_string(i)));
  }
  EXPECT_THAT(Review(original, original, base).notes, ElementsAre(ENote::kClientHasVendorChanges));
  SModel client = original;
  client.classes[0].properties[0].length = 1;
  client.classes[0].properties.push_back(Property("Old0"));
  EXPECT_THAT(Review(client, original, base).notes, IsEmpty());
}

TEST(BaseNotesTest, OnlyTheKindsThatAreComparedCount) {
  metareview::SMetamodels metamodels;
  metamodels.client = test::MakeMetamodel({{{"Part", {}, {}}}, {}, {{"Locked", {}, {}}}});
  metamodels.original = test::MakeMetamodel({});
  metamodels.base = test::MakeMetamodel({{{"Part", {}, {}}}, {}, {}});
  EXPECT_THAT(CompareMetamodels(metamodels, {metareview::EKind::kClass}).notes, ElementsAre(ENote::kBaseEqualsClient));
  EXPECT_THAT(CompareMetamodels(metamodels, {metareview::EKind::kBehavior}).notes,
              ElementsAre(ENote::kBaseEqualsOriginal));
}

}  // namespace
