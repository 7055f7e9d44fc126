#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/words/Words.h"

namespace metareview {
namespace {

using testing::ElementsAre;

class LanguagesTest : public testing::Test {
 protected:
  static CCatalogue CatalogueOf(const SLanguage& language) { return CCatalogue(language.catalogue); }

  static std::vector<std::string> KeysOf(const SLanguage& language) {
    const CCatalogue catalogue = CatalogueOf(language);
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < catalogue.Size(); ++i) {
      keys.emplace_back(catalogue.Key(i));
    }
    return keys;
  }

  /// The forms of a message, one for a message without plural.
  static std::vector<std::string> FormsOf(const CCatalogue& catalogue, const std::string& key) {
    const std::string_view text = catalogue.Find(key);
    std::vector<std::string> forms(1);
    for (const char c : text) {
      if (c == '\0') {
        forms.emplace_back();
      } else {
        forms.back() += c;
      }
    }
    return forms;
  }

  /// The names in braces. "{Element}" and "{element.of}" are forms of "{element}".
  static std::set<std::string> PlaceholdersOf(const std::string& text) {
    std::set<std::string> names;
    for (std::size_t open = text.find('{'); open != std::string::npos; open = text.find('{', open + 1)) {
      std::string name = text.substr(open + 1, text.find('}', open) - open - 1);
      name.resize(std::min(name.find('.'), name.size()));
      name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
      names.insert(name);
    }
    return names;
  }
};

TEST_F(LanguagesTest, AreSixWithEnglishFirst) {
  std::vector<std::string> codes;
  for (const SLanguage& language : Languages()) {
    codes.emplace_back(language.code);
  }
  EXPECT_THAT(codes, ElementsAre("en", "zh", "de", "fr", "ja", "es"));
}

TEST_F(LanguagesTest, HaveTheSameKeys) {
  const std::vector<std::string> keys = KeysOf(Languages().front());
  EXPECT_GT(keys.size(), 300U);
  for (const SLanguage& language : Languages()) {
    EXPECT_EQ(KeysOf(language), keys) << language.code;
  }
}

TEST_F(LanguagesTest, SayInTheHeaderWhichLanguageTheyAre) {
  for (const SLanguage& language : Languages()) {
    EXPECT_THAT(std::string(CatalogueOf(language).Find("")),
                testing::HasSubstr("Language: " + std::string(language.code) + "\n"));
  }
}

TEST_F(LanguagesTest, HaveTheSamePlaceholders) {
  const CCatalogue english = CatalogueOf(Languages().front());
  for (const SLanguage& language : Languages()) {
    const CCatalogue catalogue = CatalogueOf(language);
    for (const std::string& key : KeysOf(language)) {
      // The last form is the one for many.
      const std::string text = FormsOf(catalogue, key).back();
      EXPECT_EQ(PlaceholdersOf(text), PlaceholdersOf(FormsOf(english, key).back())) << language.code << ": " << key;
    }
  }
}

TEST_F(LanguagesTest, LeaveOutOnlyTheNumberInASingular) {
  const std::set<std::string> numbers = {"n", "rows"};
  for (const SLanguage& language : Languages()) {
    const CCatalogue catalogue = CatalogueOf(language);
    for (const std::string& key : KeysOf(language)) {
      const std::vector<std::string> forms = FormsOf(catalogue, key);
      std::set<std::string> expected = PlaceholdersOf(forms.back());
      for (const std::string& name : numbers) {
        if (PlaceholdersOf(forms.front()).count(name) == 0) {
          expected.erase(name);
        }
      }
      EXPECT_EQ(PlaceholdersOf(forms.front()), expected) << language.code << ": " << key;
    }
  }
}

TEST_F(LanguagesTest, HaveAsManyPluralFormsAsTheLanguage) {
  for (const SLanguage& language : Languages()) {
    const std::size_t expected = language.pluralForms.find("nplurals=1;") == 0 ? 1 : 2;
    EXPECT_EQ(FormsOf(CatalogueOf(language), "verdict.decide").size(), expected) << language.code;
  }
}

TEST_F(LanguagesTest, ChoosePluralFormsAsTheCatalogueSays) {
  for (const SLanguage& language : Languages()) {
    EXPECT_THAT(std::string(CatalogueOf(language).Find("")),
                testing::HasSubstr("Plural-Forms: " + std::string(language.pluralForms) + "\n"))
        << language.code;
    for (std::uint64_t n = 0; n < 200; ++n) {
      const std::size_t expected = language.pluralForms == "nplurals=1; plural=0;"          ? 0
                                   : language.pluralForms == "nplurals=2; plural=(n != 1);" ? (n != 1 ? 1 : 0)
                                   : language.pluralForms == "nplurals=2; plural=(n > 1);"  ? (n > 1 ? 1 : 0)
                                                                                            : 99;
      EXPECT_EQ(language.pluralForm(n), expected) << language.code << " " << n;
    }
  }
}

TEST_F(LanguagesTest, AreTranslated) {
  const CCatalogue english = CatalogueOf(Languages().front());
  for (const SLanguage& language : Languages()) {
    if (language.code == "en") {
      continue;
    }
    const CCatalogue catalogue = CatalogueOf(language);
    for (const std::string& key : KeysOf(language)) {
      const std::string text(catalogue.Find(key));
      EXPECT_FALSE(text.empty()) << language.code << ": " << key;
      // A sentence that is the same in two languages was forgotten.
      if (text.size() > 60) {
        EXPECT_NE(text, english.Find(key)) << language.code << ": " << key;
      }
    }
  }
}

}  // namespace
}  // namespace metareview
