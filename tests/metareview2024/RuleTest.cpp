#include "metareview2024/Rule.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using metareview::FindRule;
using metareview::Rules;
using metareview::SRule;

TEST(RuleTest, EachRuleIsThereOnceAndFoundByItsName) {
  std::set<std::string_view> names;
  for (const SRule* rule : Rules()) {
    EXPECT_TRUE(names.insert(rule->name).second) << rule->name;
    EXPECT_EQ(FindRule(rule->name), rule);
  }
  EXPECT_EQ(names.size(), 56U);
}

TEST(RuleTest, OtherNamesAreNoRules) {
  EXPECT_EQ(FindRule(""), nullptr);
  EXPECT_EQ(FindRule("Length-shrinks"), nullptr);
  EXPECT_EQ(FindRule("length"), nullptr);
}

}  // namespace
