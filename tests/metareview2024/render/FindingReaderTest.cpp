#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/RenderedReview.h"
#include "metareview2024/render/ReviewReader.h"

namespace metareview {
namespace {

/// What is wrong with a saved review in which the first occurrence of a text is another; without line and column.
std::string FaultWith(const std::string& from, const std::string& to) {
  std::string text = test::Rendered("json", test::FullReview());
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) {
    text.replace(at, from.size(), to);
  }
  try {
    ReadReview(text, "r.json");
  } catch (const CKVXException& error) {
    EXPECT_EQ(error.GetCode(), kvx::kMalformedDocument);
    const std::string fault = error.what();
    return fault.substr(fault.find(": ") + 2);
  }
  return "no fault";
}

void ExpectReadAgain(const SFinding& finding) {
  const std::string text = test::Rendered("json", test::MadeReview({finding}));
  EXPECT_EQ(test::Rendered("json", ReadReview(text, "r.json")), text);
}

TEST(FindingReaderTest, RefusesWhatLacksAMember) {
  struct SMissing {
    const char* place;
    const char* member;
    const char* from;
    const char* to;
  };
  const std::vector<SMissing> rows = {
      {"/findings/0", "id", R"("id":"e4f333239954eb46",)", ""},
      {"/findings/0", "path", R"("path":"class/Part/property/Code/length",)", ""},
      {"/findings/0", "change", R"("change":"changed",)", ""},
      {"/findings/0", "rule", R"("rule":"length-shrinks",)", ""},
      {"/findings/0", "risk", R"("risk":"loss",)", ""},
      {"/findings/0", "origin", R"("origin":"customer",)", ""},
      {"/findings/0", "reported", R"("reported":true,)", ""},
      {"/findings/0", "original", R"("original":32,)", ""},
      {"/findings/0", "client", R"("client":48,)", ""},
      {"/findings/3/accepted", "reason", R"("reason":"ours",)", ""},
      {"/findings/4/taken", "by", R"("by":"class/Own",)", ""},
      {"/outdated/0", "path", R"("path":"class/Part/property/Code/length","change":"changed","accepted_original")",
       R"("change":"changed","accepted_original")"},
      {"/outdated/0", "change", R"("change":"changed","accepted_original")", R"("accepted_original")"},
      {"/outdated/0", "accepted_original", R"("accepted_original":32,)", ""},
      {"/outdated/0", "accepted_client", R"("accepted_client":40,)", ""},
      {"/outdated/0", "original", R"("original":32,"client":48,"reason")", R"("client":48,"reason")"},
      {"/outdated/0", "client", R"("client":48,"reason")", R"("reason")"},
      {"/outdated/0", "reason", R"(,"reason":"longest has 31")", ""},
      {"/expired/0", "path", R"("path":"class/Part/property/Code/length","change":"changed","original")",
       R"("change":"changed","original")"},
      {"/expired/0", "change", R"("change":"changed","original")", R"("original")"},
      {"/expired/0", "reason", R"("reason":"until later",)", ""},
      {"/gone/0", "id", R"("id":"6cecdcdccd7c7a40",)", ""},
      {"/gone/0", "path", R"("path":"behavior/Rated",)", ""},
      {"/gone/0", "change", R"("path":"behavior/Rated","change":"deleted")", R"("path":"behavior/Rated")"}};
  for (const SMissing& row : rows) {
    EXPECT_EQ(FaultWith(row.from, row.to), std::string(row.place) + ": the member \"" + row.member + "\" is missing");
  }
}

TEST(FindingReaderTest, RefusesMembersThatAreUnknownEvenWithoutAName) {
  struct SUnknown {
    const char* place;
    const char* begin;
    const char* known;
  };
  const std::vector<SUnknown> rows = {
      {"/findings/0/", R"({"id":"e4f333239954eb46")",
       "id, path, change, rule, risk, origin, reported, display_name, type, taken, base, original, client, data, "
       "risk_without_data, accepted, since"},
      {"/findings/0/data/", R"({"rows")", "rows, of, tables, problem"},
      {"/findings/3/accepted/", R"({"reason":"ours")", "reason, by, until"},
      {"/findings/4/taken/", R"({"by":"class/Own")", "by, class_id, table_name, field"},
      {"/outdated/0/", R"({"path":"class/Part/property/Code/length","change":"changed","accepted_original")",
       "path, change, accepted_original, accepted_client, original, client, reason, by, until"},
      {"/expired/0/", R"({"path":"class/Part/property/Code/length","change":"changed","original")",
       "path, change, original, client, reason, by, until"},
      {"/gone/0/", R"({"id":"6cecdcdccd7c7a40")", "id, path, change"}};
  for (const SUnknown& row : rows) {
    EXPECT_EQ(FaultWith(row.begin, "{\"\":1," + std::string(row.begin).substr(1)),
              std::string(row.place) + ": unknown member; known here: " + row.known);
  }
}

TEST(FindingReaderTest, ReadsWhateverIsHeldOfWhatIsTaken) {
  SFinding finding = test::Made("class/Part", EChange::kDeleted, "class-identity-taken");
  for (const STaken& taken : {STaken{"class/Own", 1001, {}, {}}, STaken{"class/Own", {}, "T_OWN", {}}}) {
    finding.taken = std::make_shared<const STaken>(taken);
    ExpectReadAgain(finding);
  }
  finding = test::Made("class/Part/property/Code", EChange::kDeleted, "property-field-taken");
  finding.taken = std::make_shared<const STaken>(STaken{"class/Part/property/Own", {}, {}, "F_CODE"});
  ExpectReadAgain(finding);
}

TEST(FindingReaderTest, ReadsWhateverIsKnownOfAnAcceptance) {
  const SFinding own = test::Made("class/Own", EChange::kInserted, "class-inserted");
  ExpectReadAgain(test::Accepted(own, {"ours", {}, {}}));
  ExpectReadAgain(test::Accepted(own, {"ours", "jo", {}}));
  ExpectReadAgain(test::Accepted(own, {"ours", {}, "2027-06-30"}));
}

TEST(FindingReaderTest, RefusesAPartOfWhatWasCounted) {
  for (const char* part : {R"("rows":0)", R"("of":0)", R"("tables":["T"])", R"("rows":0,"of":0)",
                           R"("rows":0,"tables":["T"])", R"("of":0,"tables":["T"])"}) {
    EXPECT_EQ(FaultWith(R"({"problem":)", "{" + std::string(part) + R"(,"problem":)"),
              R"(/findings/2/data: expected "rows", "of" and "tables", or "problem", or all four)")
        << part;
  }
}

TEST(FindingReaderTest, RefusesValuesOfWhatHasNone) {
  const std::string fault = ": only an attribute that differs has values";
  const std::string from = R"("display_name":"")";
  EXPECT_EQ(FaultWith(from, R"("client":"c","original":"b","base":"a")"), "/findings/3/base" + fault);
  EXPECT_EQ(FaultWith(from, R"("client":"c","original":"b")"), "/findings/3/original" + fault);
}

TEST(FindingReaderTest, RefusesABaseThatDoesNotFitTheAttribute) {
  EXPECT_EQ(FaultWith(R"("base":32)", R"("base":"32")"), "/findings/0/base: expected a number");
}

TEST(FindingReaderTest, RefusesIdentifiersWithOtherCharactersThanDigits) {
  for (const char* id : {"e4f333239954eb4~", "e4f333239954eb4g", "e4f333239954eb4G"}) {
    EXPECT_EQ(FaultWith("e4f333239954eb46", id), "/findings/0/id: expected 16 hexadecimal digits");
  }
}

TEST(FindingReaderTest, RefusesAnOutdatedDecisionAboutAnUnknownChange) {
  EXPECT_EQ(FaultWith(R"("change":"changed","accepted_original")", R"("change":"lost","accepted_original")"),
            "/outdated/0/change: \"lost\" is not known here");
}

TEST(FindingReaderTest, RefusesWhatIsGoneWithoutAPathOfADifference) {
  EXPECT_EQ(FaultWith("\"behavior/Rated\"", "\"behavior\""), "/gone/0/path: this is not a path of a difference");
  EXPECT_EQ(FaultWith("\"behavior/Rated\"", "\"behavior/Other\""),
            "/gone/0/id: it does not belong to this path and change");
}

}  // namespace
}  // namespace metareview
