#include "metareview2024/render/page/SentenceHtml.h"

#include <gtest/gtest.h>

namespace metareview::page {
namespace {

TEST(SentenceHtmlTest, ValuesStandApartFromTheWords) {
  EXPECT_EQ(SentenceHtml(FillIn("Class {name} goes.", {{"name", AsValue("Part")}})), "Class <bdi>Part</bdi> goes.");
}

TEST(SentenceHtmlTest, NothingInAValueIsMarkup) {
  EXPECT_EQ(SentenceHtml(AsValue("<script>alert('&\")</script>")),
            "<bdi>&lt;script&gt;alert(&apos;&amp;&quot;)&lt;/script&gt;</bdi>");
}

TEST(SentenceHtmlTest, NothingInTheWordsIsMarkup) {
  EXPECT_EQ(SentenceHtml(AsWords("a < b & c")), "a &lt; b &amp; c");
}

TEST(SentenceHtmlTest, ControlsInAValueAreVisible) {
  EXPECT_EQ(SentenceHtml(AsValue("a\u202Eb\x1B")), "<bdi>a\\u202Eb\\x1B</bdi>");
}

}  // namespace
}  // namespace metareview::page
