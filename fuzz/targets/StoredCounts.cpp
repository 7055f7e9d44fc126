// A text in place of what a script has counted is refused on one line that names it and the line, or read: for each
// finding that is counted there is a count that adds up or a problem, and only what touches nothing becomes less bad.
#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "metareview2024/Path.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/render/CountsReader.h"
#include "metareview2024/render/LookupsDigest.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/render/ReviewReader.h"
#include "support/MetaMaker.h"

namespace {

using fuzz::Require;
using metareview::SCount;
using metareview::SFinding;
using metareview::SReadCounts;
using metareview::SReview;

const char* const kName = "counts.csv";

struct SCountedReview {
  SReview review;
  metareview::SLookups lookups;
};

/// A class with a shorter length and another table, and a lower maximum of a behavior that two classes list.
const SCountedReview& Counted() {
  static const SCountedReview counted = [] {
    const auto make = [](std::uint32_t length, const std::string& max, const std::string& table) {
      test::SProperty code = test::Property("Code");
      code.field = "F_CODE";
      code.length = length;
      test::SProperty rating = test::Property("Rating");
      rating.field = "F_RATING";
      rating.type = "int32";
      rating.max = max;
      const test::SClass part = {"Part", {"Rated"}, {code}};
      const test::SClass plant = {"Plant", {"Rated"}, {}, "Plant", 9, table};
      return test::MakeMetamodel({{part, plant}, {{"Uses", {}, {code}, "Uses", 8}}, {{"Rated", {}, {rating}}}});
    };
    const auto client = make(48, "20", "T_OLD");
    const std::vector<metareview::EKind> kinds(metareview::kKinds.begin(), metareview::kKinds.end());
    SReview review = metareview::CompareMetamodels({client, make(32, "10", "T_NEW"), nullptr}, kinds);
    metareview::SLookups lookups = MakeLookups(review, *client);
    return SCountedReview{std::move(review), std::move(lookups)};
  }();
  return counted;
}

/// An input cannot know what tells this script from others: it names it by the kind.
std::string WithDigests(std::string text) {
  for (const metareview::EKind kind : metareview::kKinds) {
    const std::string name = "DIGEST-" + std::string(NameOf(kind));
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at)) {
      text.replace(at, name.size(), LookupsDigest(Counted().lookups, kind));
    }
  }
  return text;
}

std::string Shown(const std::vector<SCount>& counts) {
  std::string text;
  for (const SCount& count : counts) {
    text += std::to_string(count.finding) + ": " + std::to_string(count.data.rows) + " of " +
            std::to_string(count.data.of) + " in " + std::to_string(count.data.tables.size()) + " tables " +
            count.data.problem + "\n";
  }
  return text;
}

void RequireSums(const std::vector<SCount>& counts) {
  const metareview::SLookups& lookups = Counted().lookups;
  std::vector<std::size_t> tables(Counted().review.findings.size());
  for (const metareview::SLookup& lookup : lookups.lookups) {
    ++tables.at(lookup.finding);
  }
  const auto counted = std::count_if(tables.begin(), tables.end(), [](std::size_t number) { return number != 0; });
  Require(counts.size() == static_cast<std::size_t>(counted), "each finding is counted once", Shown(counts));
  for (const SCount& count : counts) {
    Require(count.data.rows <= count.data.of, "no more rows are touched than there are", Shown(counts));
    Require(count.data.problem.empty() == (count.data.tables.size() == tables.at(count.finding)),
            "a finding of which a table was not counted has a problem", Shown(counts));
  }
}

std::string Saved(const SReview& review) {
  std::string text;
  metareview::SRenderOptions options;
  options.words = &metareview::CWords::English();
  metareview::FindFormat("json")->write(review, options, [&](std::string_view part) { text += part; });
  return text;
}

void RequireApplied(const std::vector<SCount>& counts) {
  SReview review = Counted().review;
  ApplyCounts(counts, review);
  for (std::size_t i = 0; i < review.findings.size(); ++i) {
    const SFinding& finding = review.findings[i];
    const metareview::ERisk before = Counted().review.findings[i].risk;
    const bool isUntouched = finding.data != nullptr && finding.data->rows == 0 && finding.data->problem.empty();
    Require(isUntouched ? finding.risk > before : finding.risk == before, "only what touches nothing is less bad",
            finding.path);
  }
  review.data = kName;
  const std::string saved = Saved(review);
  Require(Saved(metareview::ReadReview(saved, "saved")) == saved, "a review that is read again is the same", saved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = WithDigests(fuzz::Text(data, size));
  SReadCounts read;
  const auto readCounts = [](const std::string& counts) {
    return metareview::ReadCounts(counts, kName, Counted().review, Counted().lookups);
  };
  const test::SError error = test::ErrorOf([&] { read = readCounts(text); });
  if (!fuzz::Succeeded(error)) {
    fuzz::RequireOneLine(error.message);
    Require(error.message.find(std::string(kName) + ":") == 0, "a fault has a line", error.message);
    return 0;
  }
  RequireSums(read.counts);
  RequireApplied(read.counts);
  if (text.find_first_of("\"\r") == std::string::npos) {
    std::string lines;
    for (const char c : text) {
      lines += c == '\n' ? "\r\n" : std::string(1, c);
    }
    const SReadCounts again = readCounts(lines);
    Require(Shown(again.counts) == Shown(read.counts) && again.gone == read.gone, "it does not matter how lines end",
            text);
  }
  return 0;
}
