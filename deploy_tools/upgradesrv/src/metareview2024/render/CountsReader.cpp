#include "metareview2024/render/CountsReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <system_error>
#include <unordered_map>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/IsUtf16.h"
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

SLookupCount NotCounted(const std::string& problem) {
  SLookupCount count;
  count.problem = problem;
  return count;
}

/// The lookups of a finding; a row is read for each of them, in their order.
struct SCountable {
  std::vector<std::size_t> lookups;
  std::size_t read = 0;
};

class CCountsReader {
 public:
  CCountsReader(std::string_view text, const std::string& name, const SReview& review, const SLookups& lookups)
      : text_(text), csv_(text, name), name_(name), review_(review), lookups_(lookups) {
    for (std::size_t i = 0; i < lookups.lookups.size(); ++i) {
      const SLookup& lookup = lookups.lookups[i];
      countables_[KeyOf(lookup.path, lookup.rule)].lookups.push_back(i);
    }
    counts_.resize(lookups.lookups.size(), NotCounted("not in " + name));
  }

  SReadCounts Read() {
    RequireColumns();
    while (csv_.Next()) {
      ReadRow();
    }
    RequireDigests();
    NoteTablesLeftOut();
    return {AddUp(lookups_, counts_), gone_};
  }

 private:
  void RequireColumns() {
    if (!csv_.Next()) {
      csv_.Fail("there is nothing in it; the script that counts may have failed");
    }
    if (kvx::IsUtf16(text_)) {
      csv_.Fail(kvx::kUtf16Problem);
    }
    const std::vector<std::string>& fields = csv_.Fields();
    if (!std::equal(fields.begin(), fields.end(), kCountColumns.begin(), kCountColumns.end())) {
      csv_.Fail("expected the columns path,rule,rows,of, found " + Quoted(fields.front()) +
                (fields.size() > 1 ? " and others" : "") + "; run the script as it says at its beginning");
    }
    RequireEnd();
  }

  /// Programs that save such a result end its last line, too.
  void RequireEnd() const {
    if (!csv_.IsEnded()) {
      csv_.Fail("the line has no end, so that some of it may be missing; run the script again");
    }
  }

  void ReadRow() {
    RequireEnd();
    const std::vector<std::string>& fields = csv_.Fields();
    if (fields.size() != kCountColumns.size()) {
      csv_.Fail("expected 4 fields, found " + std::to_string(fields.size()));
    }
    if (const std::optional<EKind> kind = KindOf(fields[kPath]); kind.has_value()) {
      RequireDigest(*kind, fields[kRule]);
      withDigest_.insert(*kind);
      return;
    }
    const std::optional<SPath> path = ParsePath(fields[kPath]);
    if (!path.has_value()) {
      csv_.Fail(Quoted(fields[kPath]) + " is not a path of a difference");
    }
    if (FindRule(fields[kRule]) == nullptr) {
      csv_.Fail(Quoted(fields[kRule]) + " is not a rule");
    }
    const SLookupCount count = ReadCount();
    if (IsCompared(path->kind)) {
      counted_.insert(path->kind);
    }
    const auto found = countables_.find(KeyOf(fields[kPath], fields[kRule]));
    if (found == countables_.end()) {
      gone_ += IsCompared(path->kind) ? 1 : 0;
      return;
    }
    SCountable& countable = found->second;
    if (countable.read == countable.lookups.size()) {
      csv_.Fail("there is a row too many for " + Quoted(fields[kPath]) + " and the rule " + fields[kRule]);
    }
    counts_[countable.lookups[countable.read]] = count;
    ++countable.read;
  }

  /// Databases leave the number of rows empty where a column holds something else than numbers.
  SLookupCount ReadCount() const {
    const std::vector<std::string>& fields = csv_.Fields();
    const std::uint64_t of = Number(kOf);
    if (fields[kRows].empty()) {
      return NotCounted(kNotNumbers);
    }
    const std::uint64_t rows = Number(kRows);
    if (rows > of) {
      csv_.Fail("rows is greater than of: " + fields[kRows] + " of " + fields[kOf]);
    }
    return {rows, of, true, ""};
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

  /// Rows may come in any order.
  void RequireDigests() const {
    for (const EKind kind : counted_) {
      if (withDigest_.count(kind) == 0) {
        throw CKVXException(kvx::kMalformedDocument,
                            name_ + ": the row of the kind " + std::string(NameOf(kind)) +
                                " is missing, which tells which script has counted; run the script again and leave "
                                "its result whole");
      }
    }
  }

  /// Rows name no tables: of a finding with too few of them the ones that are there are taken for the first.
  void NoteTablesLeftOut() {
    for (const auto& [key, countable] : countables_) {
      const std::size_t missing = countable.lookups.size() - countable.read;
      if (countable.read == 0 || missing == 0) {
        continue;
      }
      const std::string problem = std::to_string(missing) + " of its " + std::to_string(countable.lookups.size()) +
                                  (missing == 1 ? " tables is not in " : " tables are not in ") + name_ +
                                  (missing == 1 ? ", which does not say which one" : ", which does not say which ones");
      for (std::size_t i = countable.read; i < countable.lookups.size(); ++i) {
        counts_[countable.lookups[i]].problem = problem;
      }
    }
  }

  bool IsCompared(EKind kind) const {
    return std::find(review_.elements.begin(), review_.elements.end(), kind) != review_.elements.end();
  }

  std::string_view text_;
  CCsvRows csv_;
  std::string name_;
  const SReview& review_;
  const SLookups& lookups_;
  std::vector<SLookupCount> counts_;
  std::unordered_map<std::string, SCountable> countables_;
  /// Compared kinds of which there are counts, and those of whose script it is known that it is this one's.
  std::set<EKind> counted_;
  std::set<EKind> withDigest_;
  std::size_t gone_ = 0;
};

}  // namespace

SReadCounts ReadCounts(std::string_view text, const std::string& name, const SReview& review, const SLookups& lookups) {
  return CCountsReader(text, name, review, lookups).Read();
}

}  // namespace metareview
