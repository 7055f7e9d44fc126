#include "metareview2024/render/page/Template.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace metareview::page {
namespace {

View With(const std::string& name, const View& value) {
  return View(name, value);
}

TEST(TemplateTest, NamesStandForTexts) {
  EXPECT_EQ(CTemplate("Hello {{name}}.").Render(View(), With("name", "Part")), "Hello Part.");
}

TEST(TemplateTest, ATextIsNoMarkup) {
  EXPECT_EQ(CTemplate("{{name}}").Render(View(), With("name", "<b>\"&'")), "&lt;b&gt;&quot;&amp;&apos;");
}

TEST(TemplateTest, ATextIsNoTemplate) {
  EXPECT_EQ(CTemplate("{{name}}{{{name}}}").Render(With("secret", "s"), With("name", "{{secret}}")),
            "{{secret}}{{secret}}");
}

TEST(TemplateTest, OwnNamesComeBeforeSharedOnes) {
  const CTemplate both("{{a}}{{b}}");
  View shared = With("a", "shared");
  shared["b"] = "shared";
  EXPECT_EQ(both.Render(shared, With("a", "own ")), "own shared");
}

TEST(TemplateTest, ThreeBracesLeaveATextAsItIs) {
  EXPECT_EQ(CTemplate("{{{html}}}").Render(View(), With("html", "<b>")), "<b>");
}

TEST(TemplateTest, TheLastLineEndIsLeftOut) {
  EXPECT_EQ(CTemplate("a\nb\n").Render(View(), View()), "a\nb");
}

TEST(TemplateTest, ATextThatIsNoTemplateIsRefused) {
  EXPECT_THAT([] { CTemplate("{{#open}}"); },
              testing::ThrowsMessage<std::logic_error>(testing::StartsWith("this is no template: Unclosed")));
}

}  // namespace
}  // namespace metareview::page
