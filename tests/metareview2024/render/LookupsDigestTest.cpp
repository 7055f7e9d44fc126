#include "metareview2024/render/LookupsDigest.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace metareview {
namespace {

SLookups Lookups() {
  SLookups lookups;
  lookups.lookups = {
      {0, "class/Part/property/Code/length", "length-shrinks", "T", {"F", "G"}, EMeasure::kNotNull, "3"}};
  return lookups;
}

/// Each text with its length before it: the first 16 digits of
/// `printf 31:class/Part/property/Code/length14:length-shrinks1:T1:21:F1:G1:11:3 | sha256sum`.
TEST(LookupsDigestTest, IsMadeOfAllThatIsCountedInItsOrder) {
  EXPECT_EQ(LookupsDigest(Lookups(), EKind::kClass), "94c585ec6d5bdef6");
}

TEST(LookupsDigestTest, IsAnotherForWhateverIsCountedInAnotherWay) {
  const std::string digest = LookupsDigest(Lookups(), EKind::kClass);
  EXPECT_EQ(digest.size(), 16U);
  EXPECT_EQ(LookupsDigest(Lookups(), EKind::kClass), digest);
  const std::function<void(SLookup&)> changes[] = {
      [](SLookup& lookup) { lookup.path = "class/Part/property/Name/length"; },
      [](SLookup& lookup) { lookup.rule = "length-grows"; },
      [](SLookup& lookup) { lookup.table = "T2"; },
      [](SLookup& lookup) { lookup.columns = {"F"}; },
      [](SLookup& lookup) { lookup.columns = {"FG"}; },
      [](SLookup& lookup) { lookup.measure = EMeasure::kAbove; },
      [](SLookup& lookup) { lookup.limit = "4"; }};
  for (const auto& change : changes) {
    SLookups lookups = Lookups();
    change(lookups.lookups.front());
    EXPECT_NE(LookupsDigest(lookups, EKind::kClass), digest);
  }
}

TEST(LookupsDigestTest, IsOfOneKind) {
  SLookups lookups = Lookups();
  const std::string link = LookupsDigest(lookups, EKind::kLink);
  lookups.lookups.clear();
  EXPECT_EQ(LookupsDigest(lookups, EKind::kLink), link);
}

TEST(LookupsDigestTest, DoesNotDependOnTheFindingsBefore) {
  SLookups lookups = Lookups();
  lookups.lookups.front().finding = 7;
  EXPECT_EQ(LookupsDigest(lookups, EKind::kClass), LookupsDigest(Lookups(), EKind::kClass));
}

}  // namespace
}  // namespace metareview
