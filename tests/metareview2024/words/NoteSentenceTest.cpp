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

TEST(NoteSentenceTest, SaysThatThereAreNoWordsInALanguage) {
  EXPECT_EQ(LanguageNote("it\x1B"), "There are no words for language it\\x1B; the review is in English.");
}

}  // namespace
}  // namespace metareview
