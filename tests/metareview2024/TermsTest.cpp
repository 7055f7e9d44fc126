#include "metareview2024/Terms.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using metareview::EAttribute;
using metareview::EKind;
using metareview::EThing;

/// The names of the words, each of which must be found by its name.
template <typename Term, typename Find>
std::vector<std::string> NamesOf(const std::vector<Term>& terms, Find find) {
  std::vector<std::string> names;
  for (const Term term : terms) {
    names.emplace_back(NameOf(term));
    EXPECT_EQ(find(names.back()), term) << names.back();
  }
  return names;
}

TEST(TermsTest, EachWordIsFoundByItsName) {
  using metareview::EChange;
  using metareview::EOrigin;
  using metareview::ERisk;
  using metareview::ESince;
  using testing::ElementsAre;
  EXPECT_THAT(NamesOf<EKind>({EKind::kClass, EKind::kLink, EKind::kBehavior}, metareview::KindOf),
              ElementsAre("class", "link", "behavior"));
  EXPECT_THAT(NamesOf<EChange>({EChange::kInserted, EChange::kDeleted, EChange::kChanged}, metareview::ChangeOf),
              ElementsAre("inserted", "deleted", "changed"));
  EXPECT_THAT(NamesOf<ERisk>({ERisk::kLoss, ERisk::kBlock, ERisk::kAttention, ERisk::kSafe}, metareview::RiskOf),
              ElementsAre("loss", "block", "attention", "safe"));
  EXPECT_THAT(
      NamesOf<EOrigin>({EOrigin::kUnknown, EOrigin::kCustomer, EOrigin::kVendor, EOrigin::kBoth}, metareview::OriginOf),
      ElementsAre("unknown", "customer", "vendor", "both"));
  EXPECT_THAT(NamesOf<ESince>({ESince::kNew, ESince::kKnown, ESince::kChanged}, metareview::SinceOf),
              ElementsAre("new", "known", "changed"));
  EXPECT_THAT(NamesOf<EAttribute>(AttributesOf(EThing::kProperty), metareview::AttributeOf),
              ElementsAre("internal_name", "display_name", "field", "type", "length", "default_value", "precision",
                          "max", "min", "lookup_internal_name"));
  EXPECT_THAT(NamesOf<EAttribute>(AttributesOf(EThing::kClass), metareview::AttributeOf),
              ElementsAre("internal_name", "display_name", "class_id", "table_name"));
}

TEST(TermsTest, ThingsAreCalledAsRulesBegin) {
  EXPECT_EQ(NameOf(EThing::kClass), "class");
  EXPECT_EQ(NameOf(EThing::kLink), "link");
  EXPECT_EQ(NameOf(EThing::kBehavior), "behavior");
  EXPECT_EQ(NameOf(EThing::kListedBehavior), "listed-behavior");
  EXPECT_EQ(NameOf(EThing::kMethod), "method");
  EXPECT_EQ(NameOf(EThing::kProperty), "property");
}

TEST(TermsTest, OtherNamesAreNoWords) {
  EXPECT_FALSE(metareview::KindOf("Class"));
  EXPECT_FALSE(metareview::KindOf("listed-behavior"));
  EXPECT_FALSE(metareview::ChangeOf("updated"));
  EXPECT_FALSE(metareview::RiskOf("never"));
  EXPECT_FALSE(metareview::OriginOf(""));
  EXPECT_FALSE(metareview::SinceOf("gone"));
  EXPECT_FALSE(metareview::AttributeOf(""));
}

TEST(TermsTest, ClassIdLengthAndPrecisionAreNumbers) {
  for (const EAttribute attribute : AttributesOf(EThing::kProperty)) {
    EXPECT_EQ(IsNumeric(attribute), attribute == EAttribute::kLength || attribute == EAttribute::kPrecision);
  }
  EXPECT_TRUE(IsNumeric(EAttribute::kClassId));
  EXPECT_FALSE(IsNumeric(EAttribute::kTableName));
}

}  // namespace
