#include "metareview2024/words/NoteSentence.h"

#include <gtest/gtest.h>

namespace metareview {
namespace {

TEST(NoteSentenceTest, SaysWhatIsPeculiarAboutTheBase) {
  const CWords& words = CWords::English();
  EXPECT_EQ(NoteSentence(words, ENote::kBaseEqualsClient),
            "Base and client are equal: every difference is the vendor's.");
  EXPECT_EQ(NoteSentence(words, ENote::kBaseEqualsOriginal),
            "Base and original are equal: every difference is the customer's.");
  EXPECT_EQ(NoteSentence(words, ENote::kClientHasVendorChanges),
            "The client already has most of what the vendor changed since the base. The installation seems to be "
            "upgraded already, or the base is not its own.");
  EXPECT_EQ(NoteSentence(*CWords::Find("de"), ENote::kBaseEqualsClient),
            "Basis und Client sind gleich: Jede Abweichung stammt vom Hersteller.");
}

TEST(NoteSentenceTest, SaysHowManyEntriesWereWrittenOrDropped) {
  const CWords& words = CWords::English();
  EXPECT_EQ(WrittenNote(words, 1, "d\x1B.json"), "One entry was written to d\\x1B.json.");
  EXPECT_EQ(WrittenNote(words, 1200, "d.json"), "1,200 entries were written to d.json.");
  EXPECT_EQ(PrunedNote(words, 0, "d.json"), "No entry of d.json is stale; nothing was changed.");
  EXPECT_EQ(PrunedNote(words, 1, "d.json"), "One stale entry was dropped from d.json.");
  EXPECT_EQ(PrunedNote(*CWords::Find("de"), 2, "d.json"), "2 Einträge ohne Bezug wurden aus d.json entfernt.");
}

TEST(NoteSentenceTest, SaysThatThereAreNoWordsInALanguage) {
  EXPECT_EQ(LanguageNote("it\x1B"), "There are no words for language it\\x1B; English ones are used.");
  EXPECT_EQ(LanguageNote("DE"), "There are no words for language DE; English ones are used; did you mean de?");
}

}  // namespace
}  // namespace metareview
