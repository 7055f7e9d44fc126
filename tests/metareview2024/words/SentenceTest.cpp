#include "metareview2024/words/Sentence.h"

#include <gtest/gtest.h>

namespace metareview {
namespace {

TEST(SentenceTest, FillsInPlaceholdersByName) {
  const Sentence sentence = FillIn("{a} and {b}, {a}", {{"a", AsValue("one")}, {"b", AsWords("two")}});
  EXPECT_EQ(Plain(sentence), "one and two, one");
}

TEST(SentenceTest, DoesNotFillInWhatAValueSays) {
  EXPECT_EQ(Plain(FillIn("{a} {b}", {{"a", AsValue("{b}")}, {"b", AsValue("{a}")}})), "{b} {a}");
}

TEST(SentenceTest, TellsValuesFromWords) {
  const Sentence sentence = FillIn("is {a}.", {{"a", AsValue("one")}});
  ASSERT_EQ(sentence.size(), 3U);
  EXPECT_FALSE(sentence[0].isValue);
  EXPECT_TRUE(sentence[1].isValue);
  EXPECT_FALSE(sentence[2].isValue);
}

TEST(SentenceTest, HasNoPieceWhereThereIsNothing) {
  EXPECT_EQ(FillIn("{a}{b}", {{"a", AsValue("one")}, {"b", AsValue("two")}}).size(), 2U);
  EXPECT_TRUE(FillIn("{x}", Placeholders()).empty());
  EXPECT_TRUE(FillIn("", Placeholders()).empty());
}

TEST(SentenceTest, LeavesOutWhatIsNotKnown) {
  EXPECT_EQ(Plain(FillIn("a{x}b", Placeholders())), "ab");
}

TEST(SentenceTest, KeepsABraceThatIsNotClosed) {
  EXPECT_EQ(Plain(FillIn("a {b", Placeholders())), "a {b");
}

TEST(SentenceTest, MakesControlsInValuesVisible) {
  EXPECT_EQ(ToVisible(FillIn("{a}", {{"a", AsValue("\x1B[31mred\n")}})), "\\x1B[31mred\\n");
}

}  // namespace
}  // namespace metareview
