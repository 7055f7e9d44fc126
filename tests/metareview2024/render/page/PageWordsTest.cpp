#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/render/page/Assets.h"
#include "metareview2024/words/Words.h"

namespace metareview::page {
namespace {

const std::string_view kTemplates[] = {assets::page, assets::place, assets::element, assets::row};

/// What the templates have between these two marks, every time.
std::vector<std::string> Between(const std::string_view begin, const std::string_view end) {
  std::vector<std::string> texts;
  for (const std::string_view text : kTemplates) {
    for (std::size_t at = text.find(begin); at != std::string_view::npos; at = text.find(begin, at)) {
      at += begin.size();
      texts.emplace_back(text.substr(at, text.find(end, at) - at));
    }
  }
  return texts;
}

TEST(PageWordsTest, EveryWordOfTheTemplatesIsInTheCatalogues) {
  const std::vector<std::string> words = Between("{{words.", "}}");
  for (const std::string& word : words) {
    const std::string key = "page." + word;
    EXPECT_NE(CWords::English().Text(key), key);
  }
  EXPECT_GT(words.size(), 50U);
}

TEST(PageWordsTest, OnlyHtmlThatIsMadeHereIsWrittenUnescaped) {
  const std::vector<std::string> texts = Between("{{{", "}}}");
  const std::set<std::string> names(texts.begin(), texts.end());
  // "." is the text of a remark, or the HTML of a place, an element or a row.
  EXPECT_EQ(names, (std::set<std::string>{".", "acceptance", "footer", "from", "legend", "rulesIntro", "script",
                                          "sentence", "staleIntro", "style", "text", "to"}));
}

TEST(PageWordsTest, TheScriptEndsWhereItsElementEnds) {
  EXPECT_EQ(assets::script.find("</"), std::string_view::npos);
  EXPECT_EQ(assets::script.find("<!--"), std::string_view::npos);
  EXPECT_EQ(assets::style.find("</"), std::string_view::npos);
}

}  // namespace
}  // namespace metareview::page
