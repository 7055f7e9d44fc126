#include "metareview2024/render/GeneratedReview.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/Path.h"

namespace test {

using namespace metareview;

namespace {

/// A difference in an element; "N" in the path is a number of its own.
struct SDifferenceRow {
  const char* path;
  EChange change;
  const char* rule;
  Value client;
  Value original;
  EOrigin origin;
};

const std::vector<SDifferenceRow>& ClassRows() {
  using C = EChange;
  using O = EOrigin;
  static const std::vector<SDifferenceRow> rows = {
      {"/property/CodeN/length", C::kChanged, "length-shrinks", 48U, 32U, O::kCustomer},
      {"/behavior/ListedN", C::kInserted, "listed-behavior-inserted", {}, {}, O::kCustomer},
      {"/property/LimitN/max", C::kChanged, "max-tightens", "730", "365", O::kVendor},
      {"/property/NoteN", C::kDeleted, "property-new", {}, {}, O::kVendor},
      {"/property/StartN/default_value", C::kChanged, "default-changes", "de", "en", O::kBoth},
      {"/property/LabelN/display_name", C::kChanged, "display-name", "Teilenummer", "Part number", O::kCustomer},
      {"/property/KindN/type", C::kChanged, "type-changed", "date", "boolean", O::kVendor},
      {"/property/OldN", C::kInserted, "property-withdrawn", {}, {}, O::kBoth},
      {"/property/FormN/type", C::kChanged, "type-relaxed", "url", "string", O::kVendor},
      {"/property/UserN/lookup_internal_name", C::kChanged, "lookup-unset", "User", "", O::kCustomer},
      {"/property/OwnN", C::kInserted, "property-inserted", {}, {}, O::kCustomer}};
  return rows;
}

const std::vector<SDifferenceRow>& BehaviorRows() {
  using C = EChange;
  using O = EOrigin;
  static const std::vector<SDifferenceRow> rows = {
      {"/method/CallN", C::kDeleted, "method-deleted", {}, {}, O::kCustomer},
      {"/property/SumN/precision", C::kChanged, "precision-shrinks", 6U, 3U, O::kCustomer},
      {"/method/RunN/display_name", C::kChanged, "display-name", "Ausführen", "Run", O::kVendor},
      {"/property/CountN/min", C::kChanged, "min-relaxes", "10", "1", O::kVendor},
      {"/method/OwnCallN", C::kInserted, "method-inserted", {}, {}, O::kCustomer}};
  return rows;
}

class CGenerator {
 public:
  explicit CGenerator(std::size_t count) : count_(count) {}

  SReview Make() {
    review_ = MadeReview({});
    review_.against = "yesterday.json";
    review_.data = "data.db";
    AddKind("class/Class", ClassRows(), count_ * 7 / 10);
    AddKind("link/Link", ClassRows(), count_ * 8 / 10);
    AddKind("behavior/Behavior", BehaviorRows(), count_);
    AddDecisions();
    return review_;
  }

 private:
  void AddKind(const std::string& name, const std::vector<SDifferenceRow>& rows, std::size_t end) {
    for (std::size_t element = 0; review_.findings.size() < end; ++element) {
      const std::size_t size = 1 + element % 4;
      const std::string path = name + std::to_string(element);
      for (std::size_t i = 0; i < size && review_.findings.size() < end; ++i) {
        Add(path, rows.at((element * 3 + i) % rows.size()));
      }
    }
  }

  void Add(const std::string& element, const SDifferenceRow& row) {
    const std::size_t number = review_.findings.size();
    std::string path = row.path;
    path.replace(path.find('N', path.find('/', 1) + 2), 1, std::to_string(number) + "x");
    path.insert(0, element);
    SFinding finding = row.change == EChange::kChanged
                           ? MadeChange(path, row.rule, row.client, row.original, row.origin)
                           : Made(path, row.change, row.rule, row.origin);
    if (row.origin == EOrigin::kBoth && row.change == EChange::kChanged) {
      finding.base = "fr";
    }
    constexpr std::array<ESince, 3> kSince = {ESince::kNew, ESince::kKnown, ESince::kChanged};
    finding.since = kSince.at(number % kSince.size());
    finding.reported = number % 5 != 0;
    if (number % 4 == 0 && finding.thing == EThing::kProperty) {
      finding.displayName = "Label " + std::to_string(number) + "y";
    }
    if (finding.risk == ERisk::kLoss && number % 2 == 0) {
      finding = Counted(finding, number % 7, 20341 + number, "T_PART");
    }
    if (number % 11 == 3) {
      finding = Accepted(finding, {"agreed " + std::to_string(number), "m.keller", "2027-06-30"});
    }
    review_.findings.push_back(finding);
  }

  /// The first two that nobody accepted had been, for other values and until a day that has passed.
  void AddDecisions() {
    for (const SFinding& finding : review_.findings) {
      if (finding.accepted != nullptr || finding.change != EChange::kChanged) {
        continue;
      }
      SDecision decision{finding.path, EChange::kChanged, finding.original, finding.client, {"at the time", {}, {}}};
      if (review_.outdated.empty()) {
        decision.client = Value("other");
        review_.outdated.push_back({decision, *finding.original, *finding.client});
      } else if (review_.expired.empty()) {
        decision.acceptance.until = "2026-10-31";
        review_.expired.push_back(decision);
      }
    }
    review_.stale.push_back({"class/Stale/behavior/Gone", EChange::kInserted, {}, {}, {"add-on", "jo", {}}});
    const std::string path = "behavior/Rated";
    review_.gone.push_back({FindingId(path, EChange::kDeleted), path, EChange::kDeleted});
  }

  std::size_t count_;
  SReview review_;
};

std::vector<std::string> HostileTexts() {
  return {"<script>alert(1)</script>",
          "\"><img src=x onerror=alert(1)>",
          "</style></table><h1>Yes.</h1>",
          "]]><x/>",
          "--><!--",
          "&lt;&amp;&#0;",
          "'\"`\\",
          std::string("nul\0nul", 7),
          "line\nline\r\n\ttab",
          "\x1B[2J\x1B]0;title\x07",
          "c1\u0085\u009B2J",
          "left\u202Etfel\u2066\u200F",
          "עברית العربية",
          "\u0301lone",
          "wide\U0001F468\u200D\U0001F469",
          "no\uFFFEcharacter\uFFFF",
          "{{words.title}}{{{style}}}",
          "{0} {client} [x](http://127.0.0.1/)",
          "|a|b|\n|--|--|",
          "``` `x` ~~~",
          "# @all #1 https://127.0.0.1/",
          "=1+1",
          "-n --help",
          "$(reboot) `reboot` ; reboot",
          "~/*?",
          " ",
          "javascript:alert(1)",
          std::string(1000000, 'M') + "<b>"};
}

}  // namespace

SReview GeneratedReview(std::size_t findings) {
  return CGenerator(findings).Make();
}

SReview HostileReview() {
  SReview review = MadeReview({});
  for (const std::string& text : HostileTexts()) {
    SPath path;
    path.element = text;
    SFinding withdrawn = Made(FormatPath(path), EChange::kInserted, "class-withdrawn", EOrigin::kVendor);
    withdrawn.displayName = text;
    review.findings.push_back(withdrawn);
    path.element = "In" + text;
    path.attribute = EAttribute::kDisplayName;
    review.findings.push_back(MadeChange(FormatPath(path), "display-name", text, "plain"));
    path.thing = EThing::kProperty;
    path.part = text;
    path.attribute = EAttribute::kField;
    SFinding moved = MadeChange(FormatPath(path), "field-moved", "F_" + text, text);
    moved.displayName = text;
    moved.data = std::make_shared<const SData>(SData{0, 0, {}, text});
    review.findings.push_back(moved);
    path.thing = EThing::kListedBehavior;
    path.attribute = EAttribute::kNone;
    review.findings.push_back(
        Accepted(Made(FormatPath(path), EChange::kInserted, "listed-behavior-inserted"), {text, text, "2027-06-30"}));
    review.outdated.push_back({{moved.path, EChange::kChanged, Value(text), Value("F" + text), {text, text, {}}},
                               *moved.original,
                               *moved.client});
    path.thing = EThing::kMethod;
    review.stale.push_back({FormatPath(path), EChange::kDeleted, {}, {}, {text, {}, {}}});
    review.gone.push_back({FindingId(FormatPath(path), EChange::kDeleted), FormatPath(path), EChange::kDeleted});
  }
  review.client = "<i>client</i>\u202E.json";
  review.original = "]]>\x1B[31m.json";
  review.against = "&yesterday.json";
  review.directory = "$(reboot)'\n";
  return review;
}

}  // namespace test
