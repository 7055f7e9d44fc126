#include <gmock/gmock.h>

#include <ostream>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "metareview2024/DecisionsFile.h"
#include "support/Error.h"

namespace {

using metareview::EChange;
using metareview::ERisk;
using metareview::IsDate;
using metareview::ParseDecisions;
using metareview::SDecision;
using metareview::SDecisions;
using metareview::Value;
using test::ErrorOf;

TEST(ParseDecisionsTest, EachMemberIsRead) {
  const SDecisions decisions = ParseDecisions(R"({
    "rules": [ { "rule": "default-changes", "risk": "safe", "reason": "reset by our own script" },
               { "rule": "spelling", "risk": "loss" } ],
    "accepted": [
      { "path": "class/Part/property/Code/length", "change": "changed", "original": 32, "client": 4294967295,
        "reason": "longest number in use has 31", "by": "m.keller", "until": "2027-06-30" },
      { "path": "class/*/behavior/fha_erptransfer", "change": "inserted", "reason": "ERP add-on" },
      { "path": "behavior/Locked/display_name", "change": "changed", "original": "", "client": "Gesperrt", "reason": "ok" },
      { "path": "*/*/property/*/display_name", "change": "changed", "reason": "our words" } ] })",
                                              "FILE");
  ASSERT_EQ(decisions.rules.size(), 2U);
  EXPECT_EQ(decisions.rules[0].rule, metareview::FindRule("default-changes"));
  EXPECT_EQ(decisions.rules[0].risk, ERisk::kSafe);
  EXPECT_EQ(decisions.rules[0].reason, "reset by our own script");
  EXPECT_EQ(decisions.rules[1].risk, ERisk::kLoss);
  EXPECT_EQ(decisions.rules[1].reason, std::nullopt);

  ASSERT_EQ(decisions.accepted.size(), 4U);
  const SDecision& length = decisions.accepted[0];
  EXPECT_EQ(length.path, "class/Part/property/Code/length");
  EXPECT_EQ(length.change, EChange::kChanged);
  EXPECT_EQ(length.original, Value(32U));
  EXPECT_EQ(length.client, Value(4294967295U));
  EXPECT_EQ(length.acceptance.reason, "longest number in use has 31");
  EXPECT_EQ(length.acceptance.by, "m.keller");
  EXPECT_EQ(length.acceptance.until, "2027-06-30");
  const SDecision& listed = decisions.accepted[1];
  EXPECT_EQ(listed.change, EChange::kInserted);
  EXPECT_FALSE(listed.original || listed.client || listed.acceptance.by || listed.acceptance.until);
  EXPECT_EQ(decisions.accepted[2].original, Value(std::string()));
  EXPECT_EQ(decisions.accepted[2].client, Value(std::string("Gesperrt")));
  EXPECT_FALSE(decisions.accepted[3].original || decisions.accepted[3].client);
}

TEST(ParseDecisionsTest, BothListsMayBeLeftOutOrEmpty) {
  for (const char* text : {"{}", R"({"rules": []})", R"({"accepted": [], "rules": []})", "\xEF\xBB\xBF{}"}) {
    const SDecisions decisions = ParseDecisions(text, "FILE");
    EXPECT_TRUE(decisions.rules.empty() && decisions.accepted.empty()) << text;
  }
}

TEST(ParseDecisionsTest, OnePathMayHaveAnEntryForEachChange) {
  EXPECT_EQ(ParseDecisions(R"({"accepted": [ { "path": "class/*", "change": "inserted", "reason": "x" },
                                             { "path": "class/*", "change": "deleted", "reason": "x" } ]})",
                           "FILE")
                .accepted.size(),
            2U);
}

struct SFault {
  const char* name;
  std::string text;
  /// What follows the name of the file.
  const char* message;
};

void PrintTo(const SFault& fault, std::ostream* output) {
  *output << fault.name;
}

class DecisionsFaultTest : public testing::TestWithParam<SFault> {};

TEST_P(DecisionsFaultTest, IsSaidWithItsPlace) {
  EXPECT_EQ(ErrorOf([] { ParseDecisions(GetParam().text, "d.json"); }),
            (test::SError{kvx::kMalformedDocument, std::string("d.json:") + GetParam().message}));
}

/// A file with one entry that accepts; the entry begins in the first column of line 2.
std::string Entry(const std::string& members) {
  return "{\"accepted\": [\n{ " + members + " }\n]}";
}

/// The same with a rule.
std::string Rule(const std::string& members) {
  return "{\"rules\": [\n{ " + members + " }\n]}";
}

const SFault kForm[] = {
    {"NotJson", "{ \"accepted\": [ }", "1:17: Invalid value."},
    {"CutOff", "{ \"accepted\": [", "1:16: Invalid value."},
    {"Empty", "", "1:1: The document is empty."},
    {"RootIsNoObject", "[]", "1:1: /: expected an object"},
    {"UnknownMember", "{\n  \"version\": 1 }", "2:14: /version: unknown member; known here: rules, accepted"},
    {"CommentMember", R"({ "//": "ours" })", "1:9: /~1~1: unknown member; known here: rules, accepted"},
    {"DuplicateList", R"({ "rules": [], "rules": [] })", "1:25: /rules: duplicate member"},
    {"RulesAreNoArray", R"({ "rules": {} })", "1:12: /rules: expected an array"},
    {"AcceptedIsNull", R"({ "accepted": null })", "1:15: /accepted: expected an array"},
    {"RuleIsNoObject", R"({ "rules": [ "spelling" ] })", "1:14: /rules/0: expected an object"},
    {"EntryIsNoObject", R"({ "accepted": [ true ] })", "1:17: /accepted/0: expected an object"},
};

const SFault kRules[] = {
    {"WithoutRule", Rule(R"("risk": "safe")"), "2:1: /rules/0: the member \"rule\" is missing"},
    {"WithoutRisk", Rule(R"("rule": "spelling")"), "2:1: /rules/0: the member \"risk\" is missing"},
    {"MistypedRule", Rule(R"("rule": "lenght-shrinks", "risk": "safe")"),
     "2:11: /rules/0/rule: there is no rule \"lenght-shrinks\"; did you mean length-shrinks?"},
    {"UnknownRule", Rule(R"("rule": "length", "risk": "safe")"), "2:11: /rules/0/rule: there is no rule \"length\""},
    {"RuleIsNoString", Rule(R"("rule": 1, "risk": "safe")"), "2:11: /rules/0/rule: expected a string"},
    {"UnknownRisk", Rule(R"("rule": "spelling", "risk": "never")"),
     "2:31: /rules/0/risk: \"never\" is not one of loss, block, attention, safe"},
    {"RiskIsNoString", Rule(R"("rule": "spelling", "risk": [])"), "2:31: /rules/0/risk: expected a string"},
    {"UnknownMember", Rule(R"("rule": "spelling", "risk": "safe", "by": "me")"),
     "2:45: /rules/0/by: unknown member; known here: rule, risk, reason"},
    {"DuplicateMember", Rule(R"("rule": "spelling", "risk": "safe", "risk": "safe")"),
     "2:47: /rules/0/risk: duplicate member"},
    {"EmptyReason", Rule(R"("rule": "spelling", "risk": "safe", "reason": " ")"),
     "2:49: /rules/0/reason: the reason is empty"},
    {"RuleTwice", Rule(R"("rule": "spelling", "risk": "safe" }, { "rule": "spelling", "risk": "loss")"),
     "2:51: /rules/1/rule: the rule has an entry already"},
};

const SFault kPaths[] = {
    {"WithoutPath", Entry(R"("change": "inserted", "reason": "x")"),
     "2:1: /accepted/0: the member \"path\" is missing"},
    {"PathIsNoString", Entry(R"("path": 1, "change": "inserted", "reason": "x")"),
     "2:11: /accepted/0/path: expected a string"},
    {"StarInsideASegment", Entry(R"("path": "class/FHA_*", "change": "inserted", "reason": "x")"),
     "2:11: /accepted/0/path: \"*\" can only stand for one whole segment; in a name it is written ~2"},
    {"NoPath", Entry(R"("path": "class/Part/length", "change": "changed", "reason": "x")"),
     "2:11: /accepted/0/path: no difference has a path of this form"},
    {"EmptyPath", Entry(R"("path": "", "change": "inserted", "reason": "x")"),
     "2:11: /accepted/0/path: no difference has a path of this form"},
    {"PathTwice", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x" },
{ "path": "class/OWN", "change": "inserted", "reason": "y")"),
     "3:11: /accepted/1/path: the path has an entry for this change already"},
};

const SFault kChanges[] = {
    {"WithoutChange", Entry(R"("path": "class/Own", "reason": "x")"),
     "2:1: /accepted/0: the member \"change\" is missing"},
    {"UnknownChange", Entry(R"("path": "class/Own", "change": "updated", "reason": "x")"),
     "2:34: /accepted/0/change: \"updated\" is not one of inserted, deleted, changed"},
    {"AttributeInserted", Entry(R"("path": "class/Own/table_name", "change": "inserted", "reason": "x")"),
     "2:45: /accepted/0/change: an attribute can only be changed"},
    {"ElementChanged", Entry(R"("path": "class/Own", "change": "changed", "reason": "x")"),
     "2:34: /accepted/0/change: what is not an attribute can only be inserted or deleted"},
};

const SFault kValues[] = {
    {"WithoutOriginal", Entry(R"("path": "class/A/class_id", "change": "changed", "client": 1, "reason": "x")"),
     "2:1: /accepted/0: the member \"original\" is missing"},
    {"WithoutClient", Entry(R"("path": "class/A/class_id", "change": "changed", "original": 1, "reason": "x")"),
     "2:1: /accepted/0: the member \"client\" is missing"},
    {"TextForANumber",
     Entry(R"("path": "class/A/class_id", "change": "changed", "original": "1", "client": 2, "reason": "x")"),
     "2:64: /accepted/0/original: expected a whole number from 0 to 4294967295"},
    {"NumberForAText",
     Entry(R"("path": "class/A/property/B/max", "change": "changed", "original": "1", "client": 2, "reason": "x")"),
     "2:85: /accepted/0/client: expected a string"},
    {"NegativeNumber",
     Entry(R"("path": "class/A/class_id", "change": "changed", "original": -1, "client": 2, "reason": "x")"),
     "2:64: /accepted/0/original: expected a whole number from 0 to 4294967295"},
    {"NumberTooGreat",
     Entry(R"("path": "class/A/class_id", "change": "changed", "original": 4294967296, "client": 2, "reason": "x")"),
     "2:64: /accepted/0/original: expected a whole number from 0 to 4294967295"},
    {"Fraction",
     Entry(R"("path": "class/A/class_id", "change": "changed", "original": 1.0, "client": 2, "reason": "x")"),
     "2:64: /accepted/0/original: expected a whole number from 0 to 4294967295"},
    {"ValueOfAWildcard", Entry(R"("path": "class/*/class_id", "change": "changed", "client": 2, "reason": "x")"),
     "2:62: /accepted/0/client: only an entry for one changed attribute has values"},
    {"ValueOfAnElement", Entry(R"("path": "class/Own", "change": "inserted", "original": "", "reason": "x")"),
     "2:58: /accepted/0/original: only an entry for one changed attribute has values"},
};

const SFault kAcceptances[] = {
    {"WithoutReason", Entry(R"("path": "class/Own", "change": "inserted")"),
     "2:1: /accepted/0: the member \"reason\" is missing"},
    {"EmptyReason", Entry(R"("path": "class/Own", "change": "inserted", "reason": "")"),
     "2:56: /accepted/0/reason: the reason is empty"},
    {"BlankReason", Entry(R"("path": "class/Own", "change": "inserted", "reason": " \t\n")"),
     "2:56: /accepted/0/reason: the reason is empty"},
    {"ReasonIsNoString", Entry(R"("path": "class/Own", "change": "inserted", "reason": null)"),
     "2:56: /accepted/0/reason: expected a string"},
    {"ByIsNoString", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x", "by": 7)"),
     "2:67: /accepted/0/by: expected a string"},
    {"UntilIsNoString", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x", "until": 20270630)"),
     "2:70: /accepted/0/until: expected a string"},
    {"UntilIsNoDay", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x", "until": "2027-02-29")"),
     "2:70: /accepted/0/until: \"2027-02-29\" is not a day; write YYYY-MM-DD"},
    {"UnknownMember", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x", "note": "y")"),
     "2:69: /accepted/0/note: unknown member; known here: path, change, original, client, reason, by, until"},
    {"DuplicateMember", Entry(R"("path": "class/Own", "change": "inserted", "reason": "x", "reason": "y")"),
     "2:71: /accepted/0/reason: duplicate member"},
};

const auto kFaultName = [](const testing::TestParamInfo<SFault>& info) { return std::string(info.param.name); };
INSTANTIATE_TEST_SUITE_P(Form, DecisionsFaultTest, testing::ValuesIn(kForm), kFaultName);
INSTANTIATE_TEST_SUITE_P(Rule, DecisionsFaultTest, testing::ValuesIn(kRules), kFaultName);
INSTANTIATE_TEST_SUITE_P(Path, DecisionsFaultTest, testing::ValuesIn(kPaths), kFaultName);
INSTANTIATE_TEST_SUITE_P(Change, DecisionsFaultTest, testing::ValuesIn(kChanges), kFaultName);
INSTANTIATE_TEST_SUITE_P(Value, DecisionsFaultTest, testing::ValuesIn(kValues), kFaultName);
INSTANTIATE_TEST_SUITE_P(Acceptance, DecisionsFaultTest, testing::ValuesIn(kAcceptances), kFaultName);

TEST(ParseDecisionsTest, OneSignIsAReason) {
  for (char sign = '!'; sign <= '~'; ++sign) {
    const std::string reason = (sign == '"' || sign == '\\' ? "\\" : "") + std::string(1, sign);
    const SDecisions decisions = ParseDecisions(
        R"({"accepted": [ { "path": "class/Own", "change": "inserted", "reason": ")" + reason + "\" } ]}", "FILE");
    ASSERT_EQ(decisions.accepted.size(), 1U) << sign;
    EXPECT_EQ(decisions.accepted.front().acceptance.reason, std::string(1, sign));
  }
}

TEST(DateTest, ADayIsWrittenWithYearMonthAndDay) {
  for (const char* text : {"2026-01-01", "2026-12-31", "2024-02-29", "2000-02-29", "2026-04-30", "0001-01-01"}) {
    EXPECT_TRUE(IsDate(text)) << text;
  }
}

TEST(DateTest, OtherTextsAreNoDays) {
  for (const char* text : {"", "2026", "2026-1-1", "26-01-01", "2026/01/01", "2026-13-01", "2026-00-01", "2026-01-00",
                           "2026-01-32", "2026-04-31", "2025-02-29", "1900-02-29", "2026-01-01 ", " 2026-01-01",
                           "2026-01-01T00:00", "-026-01-01", "2026-0x-01"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
}

TEST(DateTest, EachMonthEndsWithItsLastDay) {
  for (const char* last : {"2026-01-31", "2026-02-28", "2026-03-31", "2026-04-30", "2026-05-31", "2026-06-30",
                           "2026-07-31", "2026-08-31", "2026-09-30", "2026-10-31", "2026-11-30", "2026-12-31"}) {
    EXPECT_TRUE(IsDate(last)) << last;
    std::string next = last;
    ++next.back();
    EXPECT_FALSE(IsDate(next)) << next;
  }
}

TEST(DateTest, FebruaryHasADayMoreInLeapYears) {
  for (const char* year : {"2024", "2028", "1600", "2000", "2400", "0004"}) {
    EXPECT_TRUE(IsDate(std::string(year) + "-02-29")) << year;
    EXPECT_FALSE(IsDate(std::string(year) + "-02-30")) << year;
  }
  for (const char* year : {"2023", "2025", "2026", "1900", "2100", "2005"}) {
    EXPECT_FALSE(IsDate(std::string(year) + "-02-29")) << year;
  }
}

}  // namespace
