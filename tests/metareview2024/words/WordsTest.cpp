#include "metareview2024/words/Words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace metareview {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::string Number(const char* language, std::uint64_t number) {
  return CWords::Find(language)->Number(number);
}

TEST(WordsTest, KnowsNoOtherLanguage) {
  EXPECT_EQ(CWords::Find("it"), nullptr);
  EXPECT_EQ(CWords::Find("EN"), nullptr);
  EXPECT_EQ(CWords::Find(""), nullptr);
}

TEST(WordsTest, FindsALanguageByItsCode) {
  EXPECT_EQ(CWords::Find("de")->Code(), "de");
}

TEST(WordsTest, HasEnglishForAnyOther) {
  EXPECT_EQ(CWords::English().Code(), "en");
}

TEST(WordsTest, FindsATextByItsKey) {
  EXPECT_EQ(CWords::English().Text("length-shrinks.name"), "Length shrinks");
  EXPECT_EQ(CWords::Find("de")->Text("length-shrinks.name"), "Länge schrumpft");
}

TEST(WordsTest, TakesAnUnknownKeyForItsText) {
  EXPECT_EQ(CWords::English().Text("no.such.key"), "no.such.key");
  EXPECT_EQ(CWords::English().Text("no.such.key", 2), "no.such.key");
}

TEST(WordsTest, ListsTheMessagesWhoseKeysBeginAlike) {
  EXPECT_THAT(CWords::English().WithPrefix("risk."),
              ElementsAre(Pair("risk.attention", "attention"), Pair("risk.block", "block"), Pair("risk.loss", "loss"),
                          Pair("risk.safe", "safe")));
  EXPECT_THAT(CWords::English().WithPrefix("report.block"), ElementsAre(Pair("report.block", "One may be refused.")));
  EXPECT_THAT(CWords::English().WithPrefix("no.such.key"), ElementsAre());
}

TEST(WordsTest, ListsAllMessagesFromTheHeadOfTheCatalogueOn) {
  const auto messages = CWords::English().WithPrefix("");
  EXPECT_EQ(messages.size(), CCatalogue(Languages().front().catalogue).Size());
  EXPECT_EQ(messages.front().first, "");
}

TEST(WordsTest, ChoosesTheSingularForOneInEnglish) {
  EXPECT_EQ(CWords::English().Text("report.block", 1), "One may be refused.");
  EXPECT_EQ(CWords::English().Text("report.block", 0), "{n} may be refused.");
  EXPECT_EQ(CWords::English().Text("report.block", 2), "{n} may be refused.");
}

TEST(WordsTest, ChoosesTheSingularForZeroAndOneInFrench) {
  const CWords& french = *CWords::Find("fr");
  EXPECT_EQ(french.Text("report.block", 0), "Une peut être refusée.");
  EXPECT_EQ(french.Text("report.block", 1), "Une peut être refusée.");
  EXPECT_EQ(french.Text("report.block", 2), "{n} peuvent être refusées.");
}

TEST(WordsTest, HasOneFormForAllNumbersInChineseAndJapanese) {
  EXPECT_EQ(CWords::Find("zh")->Text("report.block", 1), CWords::Find("zh")->Text("report.block", 7));
  EXPECT_EQ(CWords::Find("ja")->Text("report.block", 1), CWords::Find("ja")->Text("report.block", 7));
}

TEST(WordsTest, SeparatesThousandsAsTheLanguageDoes) {
  EXPECT_EQ(Number("en", 20341), "20,341");
  EXPECT_EQ(Number("zh", 20341), "20,341");
  EXPECT_EQ(Number("de", 20341), "20.341");
  EXPECT_EQ(Number("fr", 20341), "20\u202F341");
  EXPECT_EQ(Number("ja", 20341), "20,341");
  EXPECT_EQ(Number("es", 20341), "20.341");
}

TEST(WordsTest, SeparatesFourDigitsExceptInSpanish) {
  EXPECT_EQ(Number("en", 1593), "1,593");
  EXPECT_EQ(Number("zh", 1593), "1,593");
  EXPECT_EQ(Number("de", 1593), "1.593");
  EXPECT_EQ(Number("fr", 1593), "1\u202F593");
  EXPECT_EQ(Number("ja", 1593), "1,593");
  EXPECT_EQ(Number("es", 1593), "1593");
}

TEST(WordsTest, WritesSmallAndLargeNumbers) {
  EXPECT_EQ(Number("en", 0), "0");
  EXPECT_EQ(Number("en", 999), "999");
  EXPECT_EQ(Number("en", 1000), "1,000");
  EXPECT_EQ(Number("en", 999999), "999,999");
  EXPECT_EQ(Number("en", 18446744073709551615U), "18,446,744,073,709,551,615");
}

}  // namespace
}  // namespace metareview
