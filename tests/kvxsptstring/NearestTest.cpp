#include "kvxsptstring/Nearest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string Question(const std::string& text, const std::vector<std::string>& candidates) {
  kvx::CNearest nearest(text);
  for (const std::string& candidate : candidates) {
    nearest.Offer(candidate);
  }
  return nearest.Question();
}

TEST(NearestTest, FindsWhatDiffersByTwoBytesInAShortText) {
  EXPECT_EQ(Question("Cod", {"Code"}), "; did you mean Code?");
  EXPECT_EQ(Question("Coode", {"Code"}), "; did you mean Code?");
  EXPECT_EQ(Question("Cide", {"Code"}), "; did you mean Code?");
  EXPECT_EQ(Question("Cdoe", {"Code"}), "; did you mean Code?");
  EXPECT_EQ(Question("xCodex", {"Code"}), "; did you mean Code?");
  EXPECT_EQ(Question("xCodexy", {"Code"}), "");
  EXPECT_EQ(Question("Coxyz", {"Code"}), "");
}

TEST(NearestTest, FindsWhatDiffersByAQuarterOfALongText) {
  EXPECT_EQ(Question("abcdefghijkl", {"abcdefghi"}), "; did you mean abcdefghi?");
  EXPECT_EQ(Question("abcdefghijkl", {"abcdefgh"}), "");
  EXPECT_EQ(Question("abcdefghijkl", {"abcdefghi123"}), "; did you mean abcdefghi123?");
  EXPECT_EQ(Question("abcdefghijkl", {"abcdefgh1234"}), "");
  EXPECT_EQ(Question("abcdefghijk", {"abcdefgh123"}), "");
}

TEST(NearestTest, TakesTheNearestAndTheFirstOfSeveral) {
  EXPECT_EQ(Question("Code", {"Coxy", "Codx", "Cod"}), "; did you mean Codx?");
  EXPECT_EQ(Question("Code", {"Coxy", "Coyx"}), "; did you mean Coxy?");
  EXPECT_EQ(Question("code", {"Codx", "CODE"}), "; did you mean CODE?");
}

TEST(NearestTest, TakesNothingThatSharesNoByte) {
  EXPECT_EQ(Question("a", {"b", ""}), "");
  EXPECT_EQ(Question("ab", {"cd"}), "");
  EXPECT_EQ(Question("", {"", "a"}), "");
}

TEST(NearestTest, ShowsControlCharacters) {
  EXPECT_EQ(Question("a\n", {"a\nb"}), "; did you mean a\\nb?");
}

}  // namespace
