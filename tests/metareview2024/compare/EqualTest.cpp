#include <gmock/gmock.h>

#include "metareview2024/Metamodels.h"
#include "metareview2024/ReviewSteps.h"

// Which elements are the same on both sides.
namespace {

using test::Property;
using test::Review;
using test::SModel;
using testing::ElementsAre;

TEST(EqualElementsTest, AreThoseOfBothSidesWithoutAFindingInTheClientsOrder) {
  const SModel client = {
      {{"Same", {"B"}, {Property("P")}}, {"Own", {}, {}}, {"Other", {}, {Property("P")}}, {"Also", {}, {}}},
      {{"L", {}, {}}},
      {{"Equal", {}, {}}}};
  const SModel original = {{{"Also", {}, {}}, {"Same", {"B"}, {Property("P")}}, {"Other", {}, {}}, {"Missing", {}, {}}},
                           {{"L", {"B"}, {}}},
                           {{"Equal", {}, {}}}};
  EXPECT_THAT(Review(client, original).equal, ElementsAre("class/Same", "class/Also", "behavior/Equal"));
}

TEST(EqualElementsTest, AreNoneOfKindsThatAreNotCompared) {
  const SModel model = {{{"C", {}, {}}}, {{"L", {}, {}}}, {}};
  const metareview::SReview review = metareview::CompareMetamodels(
      {test::MakeMetamodel(model), test::MakeMetamodel(model), nullptr}, {metareview::EKind::kLink});
  EXPECT_THAT(review.equal, ElementsAre("link/L"));
}

}  // namespace
