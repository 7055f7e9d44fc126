#include "metareview2024/render/CountsReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <system_error>
#include <unordered_map>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/Path.h"
#include "metareview2024/Rule.h"
#include "metareview2024/render/CsvRows.h"
#include "metareview2024/render/LookupsDigest.h"

namespace metareview {

namespace {

constexpr std::size_t kPath = 0;
constexpr std::size_t kRule = 1;
constexpr std::size_t kRows = 2;
constexpr std::size_t kOf = 3;

/// More than any table has, and few enough to be added up.
constexpr std::uint64_t kMostRows = 1'000'000'000'000'000;

std::string Quoted(const std::string& text) {
  return "\"" + CStringHelper::ToVisible(text) + "\"";
}

/// Paths match whatever the case of A to Z, as those of findings do.
std::string KeyOf(std::string path, std::string_view rule) {
  CStringHelper::ToLower(path);
  return path.append("\n").append(rule);
}

struct SRowCount {
  /// Nothing where the column holds something else than numbers.
  std::optional<std::uint64_t> rows;
  std::uint64_t of = 0;
};

/// A finding of which something is to be counted, and what has been read for it so far.
struct SCountable {
  std::size_t finding = 0;
  std::vector<const SLookup*> lookups;
  std::vector<SRowCount> rows;
};

class CCountsReader {
 public:
  CCountsReader(std::string_view text, const std::string& name, const SReview& review, const SLookups& lookups)
      : csv_(text, name), name_(name), review_(review), lookups_(lookups) {
    for (const SLookup& lookup : lookups.lookups) {
      const auto [place, isNew] = places_.emplace(KeyOf(lookup.path, lookup.rule), countables_.size());
      if (isNew) {
        countables_.push_back({lookup.finding, {}, {}});
      }
      countables_[place->second].lookups.push_back(&lookup);
    }
  }

  SReadCounts Read() {
    RequireColumns();
    while (csv_.Next()) {
      ReadRow();
    }
    AddCounts();
    return std::move(result_);
  }

 private:
  void RequireColumns() {
    if (!csv_.Next()) {
      csv_.Fail("there is nothing in it; the script that counts may have failed");
    }
    const std::vector<std::string>& fields = csv_.Fields();
    if (!std::equal(fields.begin(), fields.end(), kCountColumns.begin(), kCountColumns.end())) {
      csv_.Fail("expected the columns path,rule,rows,of, found " + Quoted(fields.front()) +
                (fields.size() > 1 ? " and others" : "") + "; run the script as it says at its beginning");
    }
  }

  void ReadRow() {
    const std::vector<std::string>& fields = csv_.Fields();
    if (fields.size() != kCountColumns.size()) {
      csv_.Fail("expected 4 fields, found " + std::to_string(fields.size()));
    }
    if (const std::optional<EKind> kind = KindOf(fields[kPath]); kind.has_value()) {
      RequireDigest(*kind, fields[kRule]);
      return;
    }
    const std::optional<SPath> path = ParsePath(fields[kPath]);
    if (!path.has_value()) {
      csv_.Fail(Quoted(fields[kPath]) + " is not a path of a difference");
    }
    if (FindRule(fields[kRule]) == nullptr) {
      csv_.Fail(Quoted(fields[kRule]) + " is not a rule");
    }
    const SRowCount count = ReadCount();
    const auto place = places_.find(KeyOf(fields[kPath], fields[kRule]));
    if (place == places_.end()) {
      result_.gone += IsCompared(path->kind) ? 1 : 0;
      return;
    }
    SCountable& countable = countables_[place->second];
    if (countable.rows.size() == countable.lookups.size()) {
      csv_.Fail("there is a row too many for " + Quoted(fields[kPath]) + " and the rule " + fields[kRule]);
    }
    countable.rows.push_back(count);
  }

  SRowCount ReadCount() const {
    const std::vector<std::string>& fields = csv_.Fields();
    SRowCount count;
    if (!fields[kRows].empty()) {
      count.rows = Number(kRows);
    }
    count.of = Number(kOf);
    if (count.rows.value_or(0) > count.of) {
      csv_.Fail("rows is greater than of: " + fields[kRows] + " of " + fields[kOf]);
    }
    return count;
  }

  std::uint64_t Number(std::size_t field) const {
    const std::string& text = csv_.Fields()[field];
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || stop != text.data() + text.size() || number > kMostRows) {
      csv_.Fail(std::string(kCountColumns.at(field)) + ": " + Quoted(text) + " is not a number of rows");
    }
    return number;
  }

  /// The counts of a script that was made for other lookups look like those of this one's.
  void RequireDigest(EKind kind, const std::string& digest) const {
    if (IsCompared(kind) && digest != LookupsDigest(lookups_, kind)) {
      csv_.Fail("these are the counts of another script: what is to be counted for the kind " +
                std::string(NameOf(kind)) + " has changed since; write the script anew with -o sql and run that");
    }
  }

  bool IsCompared(EKind kind) const {
    return std::find(review_.elements.begin(), review_.elements.end(), kind) != review_.elements.end();
  }

  void AddCounts() {
    for (const SCountable& countable : countables_) {
      result_.counts.push_back({countable.finding, DataOf(countable)});
    }
  }

  SData DataOf(const SCountable& countable) const {
    SData data;
    if (countable.rows.size() < countable.lookups.size()) {
      data.problem = countable.rows.empty() ? "not in " + name_
                                            : "only " + std::to_string(countable.rows.size()) + " of its " +
                                                  std::to_string(countable.lookups.size()) + " rows are in " + name_;
      return data;
    }
    for (std::size_t i = 0; i < countable.lookups.size(); ++i) {
      const SLookup& lookup = *countable.lookups[i];
      const SRowCount& count = countable.rows[i];
      if (count.rows.has_value()) {
        data.rows += *count.rows;
        data.of += count.of;
        data.tables.push_back(lookup.table);
      } else {
        data.problem += data.problem.empty() ? "" : "; ";
        data.problem.append(lookup.table).append(".").append(lookup.columns.front());
        data.problem += " holds values that are not numbers";
      }
    }
    return data;
  }

  CCsvRows csv_;
  const std::string& name_;
  const SReview& review_;
  const SLookups& lookups_;
  std::vector<SCountable> countables_;
  std::unordered_map<std::string, std::size_t> places_;
  SReadCounts result_;
};

}  // namespace

SReadCounts ReadCounts(std::string_view text, const std::string& name, const SReview& review, const SLookups& lookups) {
  return CCountsReader(text, name, review, lookups).Read();
}

}  // namespace metareview
