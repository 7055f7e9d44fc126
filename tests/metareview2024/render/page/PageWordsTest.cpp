#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <string>

#include "metareview2024/render/page/Assets.h"
#include "metareview2024/words/Words.h"

namespace metareview::page {
namespace {

const std::string_view kTemplates[] = {assets::page, assets::place, assets::element, assets::row};

TEST(PageWordsTest, EveryWordOfTheTemplatesIsInTheCatalogues) {
  const std::regex name("\\{\\{words\\.([^}]+)\\}\\}");
  std::size_t count = 0;
  for (const std::string_view text : kTemplates) {
    for (std::regex_iterator<std::string_view::const_iterator> it(text.begin(), text.end(), name), end; it != end;
         ++it) {
      const std::string key = "page." + (*it)[1].str();
      EXPECT_NE(CWords::English().Text(key), key);
      ++count;
    }
  }
  EXPECT_GT(count, 50U);
}

TEST(PageWordsTest, OnlyHtmlThatIsMadeHereIsWrittenUnescaped) {
  const std::regex unescaped("\\{\\{\\{([^}]+)\\}\\}\\}");
  std::set<std::string> names;
  for (const std::string_view text : kTemplates) {
    for (std::regex_iterator<std::string_view::const_iterator> it(text.begin(), text.end(), unescaped), end; it != end;
         ++it) {
      names.insert((*it)[1].str());
    }
  }
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
