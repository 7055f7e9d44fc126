#include "metareview2024/render/ExplainText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace metareview {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string All(const SDecisions& decisions = {}, const char* language = "en") {
  std::string text;
  WriteRules(*CWords::Find(language), decisions, [&](std::string_view part) { text += part; });
  return text;
}

std::string One(const char* rule, const SDecisions& decisions = {}, const char* language = "en") {
  std::string text;
  WriteRule(*FindRule(rule), *CWords::Find(language), decisions, [&](std::string_view part) { text += part; });
  return text;
}

SDecisions DefaultsAreSafe() {
  SDecisions decisions;
  decisions.rules.push_back({FindRule("default-changes"), ERisk::kSafe, {}});
  return decisions;
}

TEST(ExplainTextTest, ListsEveryRuleWithItsRisk) {
  const std::string text = All();
  for (const SRule* rule : Rules()) {
    EXPECT_THAT("\n" + text, HasSubstr("\n" + std::string(rule->name) + " "));
  }
  EXPECT_THAT(text, HasSubstr("\nlength-shrinks                     loss       Length shrinks\n"));
  EXPECT_THAT(text, HasSubstr("\ndefault-changes                    attention  Default changes\n"));
  EXPECT_THAT(text, EndsWith("\n\nupgradesrv explain RULE says what a rule means.\n"));
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<std::ptrdiff_t>(Rules().size()) + 2);
}

TEST(ExplainTextTest, SaysWhatDecisionsMakeOfARule) {
  EXPECT_THAT(All(DefaultsAreSafe()),
              HasSubstr("\ndefault-changes                    safe       Default changes (set by a decision; otherwise "
                        "attention)\n"));
  EXPECT_THAT(One("default-changes", DefaultsAreSafe()), HasSubstr("\nRisk\n"
                                                                   "  safe: nothing stored is touched\n"
                                                                   "  set by a decision; otherwise attention\n"));
}

TEST(ExplainTextTest, ADecisionIsAboutItsRuleOnly) {
  SDecisions decisions = DefaultsAreSafe();
  decisions.rules.push_back({FindRule("class-new"), ERisk::kAttention, {}});
  const std::string text = All(decisions);
  EXPECT_THAT(text, HasSubstr("\ndefault-changes                    safe       Default changes (set by a decision; "
                              "otherwise attention)\n"));
  EXPECT_THAT(text, HasSubstr("\nclass-new                          attention  New class (set by a decision; otherwise "
                              "safe)\n"));
  EXPECT_THAT(text, HasSubstr("\nlength-shrinks                     loss       Length shrinks\n"));
}

TEST(ExplainTextTest, ExplainsARule) {
  EXPECT_EQ(One("length-shrinks"), R"(length-shrinks: Length shrinks

Risk
  loss: stored values may be lost or altered

What happens
  The upgrade shortens NAME from CLIENT to ORIGINAL characters.

When stored values are counted
  N of M stored values are longer and would be cut or refused.
  None of M stored values is longer.

Why
  A value that is longer than its column is cut off, or the upgrade stops at it.

What to do
  Shorten the longer values, or set your own length again before anybody works with it. Accept it if
  no value is longer and none will be.
)");
}

TEST(ExplainTextTest, SaysWhatHappensInEveryCase) {
  EXPECT_THAT(One("method-deleted"),
              HasSubstr("What happens\n"
                        "  Method NAME was removed from class ELEMENT here. The upgrade adds it again.\n"
                        "  Method NAME was removed from class ELEMENT here, and the upgrade ships a changed one. The "
                        "upgrade\n"
                        "  adds it again.\n"
                        "  Only the upgrade has method NAME of class ELEMENT, and adds it. Without a base nobody can "
                        "tell\n"
                        "  whether it is new or was removed here.\n\n"));
}

TEST(ExplainTextTest, ASentenceBeginsWithACapital) {
  EXPECT_THAT(One("listed-behavior-withdrawn"),
              HasSubstr("\n  Class ELEMENT was shipped with behavior NAME and no longer is. "));
}

TEST(ExplainTextTest, ExplainsEveryRuleInEveryLanguage) {
  for (const SLanguage& language : Languages()) {
    for (const SRule* rule : Rules()) {
      const std::string text = One(std::string(rule->name).c_str(), {}, std::string(language.code).c_str());
      EXPECT_THAT(text, StartsWith(std::string(rule->name) + ": "));
      EXPECT_EQ(text.find('{'), std::string::npos) << text;
      EXPECT_EQ(text.find("sample."), std::string::npos) << text;
      EXPECT_EQ(text.find(std::string(rule->name) + "."), std::string::npos) << text;
    }
  }
}

}  // namespace
}  // namespace metareview
