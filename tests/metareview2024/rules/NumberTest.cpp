#include "metareview2024/rules/Number.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using metareview::CompareNumbers;

/// -1, 0 or 1; nothing where one is not a number.
std::optional<int> Compare(const std::string& a, const std::string& b) {
  const std::optional<int> order = CompareNumbers(a, b);
  if (!order) {
    return std::nullopt;
  }
  return *order < 0 ? -1 : *order > 0 ? 1 : 0;
}

TEST(NumberTest, NumbersAreComparedByTheirValueBothWays) {
  const std::pair<const char*, const char*> ascending[] = {
      {"1", "2"},      {"9", "10"},       {"-10", "-9"},  {"-1", "0"},    {"-1", "1"},     {"0", "0.1"},
      {"0.09", "0.1"}, {"1.09", "1.1"},   {"1", "1.001"}, {"-1.1", "-1"}, {"-0.1", "0"},   {"-0.1", "0.1"},
      {"002", "10"},   {"2.50", "2.501"}, {"0.9", "1"},   {"-2", "-1.9"}, {"-0.2", "-0.1"}};
  for (const auto& [less, greater] : ascending) {
    EXPECT_EQ(Compare(less, greater), -1) << less << " " << greater;
    EXPECT_EQ(Compare(greater, less), 1) << greater << " " << less;
  }
}

TEST(NumberTest, TheSameNumberMayBeWrittenInSeveralWays) {
  const std::pair<const char*, const char*> equal[] = {{"1", "1"},       {"1", "1.0"},        {"1", "001.000"},
                                                       {"0", "-0"},      {"0", "0.000"},      {"-0.0", "00"},
                                                       {"0.5", "00.50"}, {"-2.5", "-02.500"}, {"100", "100.0"}};
  for (const auto& [a, b] : equal) {
    EXPECT_EQ(Compare(a, b), 0) << a << " " << b;
    EXPECT_EQ(Compare(b, a), 0) << b << " " << a;
  }
}

TEST(NumberTest, NumbersOfAnyLengthAreComparedExactly) {
  const std::string digits(1000, '9');
  EXPECT_EQ(Compare(digits + "8", digits + "9"), -1);
  EXPECT_EQ(Compare("0." + digits + "8", "0." + digits + "9"), -1);
  EXPECT_EQ(Compare("1" + std::string(1000, '0'), digits), 1);
  EXPECT_EQ(Compare("9007199254740993", "9007199254740992"), 1);
  EXPECT_EQ(Compare("0.1", "0.1000000000000000055511151231257827"), -1);
}

TEST(NumberTest, OtherTextsAreNotNumbers) {
  for (const char* text : {"", "-", ".", "1.", ".5", "-.5", "+1", "1e3", "1,5", " 1", "1 ", "--1", "1.2.3", "0x10",
                           "1-", "x", "inf", "\xEF\xBC\x91", "1\n"}) {
    EXPECT_EQ(Compare(text, "1"), std::nullopt) << text;
    EXPECT_EQ(Compare("1", text), std::nullopt) << text;
    EXPECT_EQ(Compare(text, text), std::nullopt) << text;
  }
  EXPECT_EQ(Compare(std::string("1\0", 2), "1"), std::nullopt);
}

}  // namespace
