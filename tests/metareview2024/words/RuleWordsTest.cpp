#include "metareview2024/words/RuleWords.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "metareview2024/Rule.h"
#include "metareview2024/words/Words.h"

namespace metareview {
namespace {

bool HasText(const std::string& key) {
  return !CCatalogue(Languages().front().catalogue).Find(key).empty();
}

TEST(RuleWordsTest, EveryRuleHasWords) {
  std::set<std::string_view> rules;
  for (const SRule* rule : Rules()) {
    EXPECT_NE(FindRuleWords(rule->name), nullptr) << rule->name;
    rules.insert(rule->name);
  }
  for (const SRuleWords& words : AllRuleWords()) {
    EXPECT_EQ(rules.count(words.rule), 1U) << words.rule;
  }
  EXPECT_EQ(AllRuleWords().size(), rules.size());
}

TEST(RuleWordsTest, NoOtherRuleHasWords) {
  EXPECT_EQ(FindRuleWords("class"), nullptr);
}

TEST(RuleWordsTest, EverySentenceIsInTheCatalogue) {
  for (const SRuleWords& words : AllRuleWords()) {
    const std::string rule(words.rule);
    for (const char* part : {".name", ".why", ".todo"}) {
      EXPECT_TRUE(HasText(rule + part)) << rule << part;
    }
    for (const SVariant* variant : words.variants) {
      EXPECT_TRUE(HasText(rule + ".happens" + std::string(variant->suffix))) << rule << variant->suffix;
    }
    EXPECT_EQ(HasText(rule + ".counted"), words.isCounted) << rule;
    EXPECT_EQ(HasText(rule + ".counted.none"), words.isCounted) << rule;
  }
}

TEST(RuleWordsTest, EverySentenceOfTheCatalogueIsInTheTable) {
  std::set<std::string> keys;
  for (const SRuleWords& words : AllRuleWords()) {
    for (const SVariant* variant : words.variants) {
      keys.insert(std::string(words.rule) + ".happens" + std::string(variant->suffix));
    }
  }
  const CCatalogue catalogue(Languages().front().catalogue);
  for (std::size_t i = 0; i < catalogue.Size(); ++i) {
    const std::string key(catalogue.Key(i));
    if (key.find(".happens") != std::string::npos && key.find("explain.") != 0) {
      EXPECT_EQ(keys.count(key), 1U) << key;
    }
  }
}

TEST(RuleWordsTest, OnlySentencesWithANumberHavePluralForms) {
  const CCatalogue catalogue(Languages().front().catalogue);
  for (const SRuleWords& words : AllRuleWords()) {
    for (const SVariant* variant : words.variants) {
      const std::string key = std::string(words.rule) + ".happens" + std::string(variant->suffix);
      const bool hasForms = catalogue.Find(key).find('\0') != std::string_view::npos;
      EXPECT_EQ(hasForms, words.plural != nullptr) << key;
    }
  }
}

}  // namespace
}  // namespace metareview
