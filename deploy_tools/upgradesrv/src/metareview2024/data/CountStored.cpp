#include "metareview2024/data/CountStored.h"

#include <algorithm>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/data/Sql.h"
#include "metareview2024/data/StoredTables.h"
#include "upgrademeta2024/storage/DatabaseQueries.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace metareview {
namespace {

/// Lookups that one query counts.
struct SQueryPlan {
  /// As the client names it.
  std::string name;
  std::string table;
  std::vector<std::size_t> lookups;
};

/// Counts on one connection, or on two with two tables at a time.
class CCounter {
 public:
  CCounter(EDialect dialect, const std::vector<SLookup>& lookups, const CountObserver& observer)
      : dialect_(dialect), lookups_(lookups), observer_(observer), counts_(lookups.size()) {}

  /// To be called once. `second` may be null.
  void Run(CDatabaseQueries& first, CDatabaseQueries* second) {
    places_ = FindPlaces(first, lookups_);
    if (!places_.empty() &&
        std::all_of(places_.begin(), places_.end(), [](const SPlace& place) { return place.isTableMissing; })) {
      searchedInVain_ = SchemasSearched(first);
    }
    plans_ = Plan();
    std::future<void> other;
    if (second != nullptr && plans_.size() > 1) {
      try {
        other = std::async(std::launch::async, [this, second] { CountTables(*second); });
      } catch (const std::system_error&) {
        // There is no thread.
      }
    }
    CountTables(first);
    if (other.valid()) {
      other.get();
    }
    // What is left when both connections are lost: the answer is why.
    while (const std::optional<std::size_t> plan = Take()) {
      Count(first, plans_[*plan]);
    }
  }

  const std::vector<SLookupCount>& Counts() const { return counts_; }
  const std::optional<std::vector<std::string>>& SearchedInVain() const { return searchedInVain_; }

 private:
  std::vector<SQueryPlan> Plan() {
    std::vector<SQueryPlan> plans;
    // The last plan of each table.
    std::unordered_map<std::string, std::size_t> ofTable;
    for (std::size_t i = 0; i < lookups_.size(); ++i) {
      const SPlace& place = places_[i];
      if (!place.problem.empty()) {
        counts_[i].problem = place.problem;
        continue;
      }
      const auto [plan, isNew] = ofTable.emplace(place.table, plans.size());
      if (!isNew && plans[plan->second].lookups.size() == kMostCounts) {
        plan->second = plans.size();
      }
      if (plan->second == plans.size()) {
        plans.push_back({lookups_[i].table, place.table, {}});
      }
      plans[plan->second].lookups.push_back(i);
    }
    return plans;
  }

  /// Until there are no more, or the connection is lost.
  void CountTables(CDatabaseQueries& queries) {
    for (const std::string& setting : ReadingSettings(dialect_)) {
      queries.Query(setting);
    }
    bool isConnected = true;
    while (isConnected) {
      const std::optional<std::size_t> plan = Take();
      if (!plan) {
        return;
      }
      isConnected = Count(queries, plans_[*plan]);
      GiveBack(*plan);
    }
  }

  std::optional<std::size_t> Take() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (next_ == plans_.size()) {
      return std::nullopt;
    }
    running_.insert(next_);
    Tell(next_);
    return next_++;
  }

  /// Where no table is left to begin with, the observer is told of the one that is still being read.
  void GiveBack(std::size_t plan) {
    const std::lock_guard<std::mutex> lock(mutex_);
    running_.erase(plan);
    if (next_ == plans_.size() && !running_.empty()) {
      Tell(*running_.begin());
    }
  }

  void Tell(std::size_t plan) const {
    if (observer_) {
      observer_({plans_[plan].name, plan, plans_.size()});
    }
  }

  SDatabaseAnswer Ask(CDatabaseQueries& queries, const SQueryPlan& plan) const {
    std::vector<SSqlCount> counts;
    counts.reserve(plan.lookups.size());
    for (const std::size_t lookup : plan.lookups) {
      counts.push_back({lookups_[lookup].measure, places_[lookup].columns, lookups_[lookup].limit});
    }
    return queries.Query(CountQuery(dialect_, plan.table, counts));
  }

  /// False when the connection is lost.
  bool Count(CDatabaseQueries& queries, const SQueryPlan& plan) {
    SDatabaseAnswer answer = Ask(queries, plan);
    std::string problem;
    if (answer.outcome == SDatabaseAnswer::kDenied && dialect_ == EDialect::kPostgresql) {
      // The server has refused to leave out rows that a policy hides, or the user has no right at all.
      queries.Query("SET LOCAL row_security = on");
      SDatabaseAnswer partial = Ask(queries, plan);
      queries.Query("SET LOCAL row_security = off");
      if (partial.outcome == SDatabaseAnswer::kRows) {
        problem = "row-level security may hide rows of table " + CStringHelper::ToVisible(plan.name);
        answer = std::move(partial);
      }
    }
    if (answer.outcome == SDatabaseAnswer::kRows) {
      Store(plan, answer, problem);
    } else if (answer.outcome != SDatabaseAnswer::kOutOfTime && answer.outcome != SDatabaseAnswer::kLost &&
               plan.lookups.size() > 1) {
      // One of them may be at fault. When time is over each would take about as long.
      bool isConnected = true;
      for (const std::size_t lookup : plan.lookups) {
        isConnected = Count(queries, {plan.name, plan.table, {lookup}});
      }
      return isConnected;
    } else {
      Fail(plan, answer);
    }
    return answer.outcome != SDatabaseAnswer::kLost;
  }

  void Store(const SQueryPlan& plan, const SDatabaseAnswer& answer, const std::string& problem) {
    const auto& row = answer.rows.at(0);
    for (std::size_t i = 0; i < plan.lookups.size(); ++i) {
      SLookupCount& count = counts_[plan.lookups[i]];
      const auto& rows = row.at(i + 1);
      count.isCounted = rows.has_value();
      if (count.isCounted) {
        count.rows = std::stoull(*rows);
        count.of = std::stoull(row.at(0).value());
      }
      count.problem = count.isCounted ? problem : kNotNumbers;
    }
  }

  void Fail(const SQueryPlan& plan, const SDatabaseAnswer& answer) {
    const std::string table = "table " + CStringHelper::ToVisible(plan.name);
    std::string problem = answer.problem;
    if (answer.outcome == SDatabaseAnswer::kOutOfTime) {
      problem = "there was not enough time to count in " + table;
    } else if (answer.outcome != SDatabaseAnswer::kLost) {
      problem = table + " cannot be read: " + answer.problem;
    }
    for (const std::size_t lookup : plan.lookups) {
      counts_[lookup].problem = problem;
    }
  }

  EDialect dialect_;
  const std::vector<SLookup>& lookups_;
  const CountObserver& observer_;
  std::vector<SPlace> places_;
  std::optional<std::vector<std::string>> searchedInVain_;
  std::vector<SQueryPlan> plans_;
  // A thread changes those of the plans that it has taken.
  std::vector<SLookupCount> counts_;

  // Held while the observer is told.
  std::mutex mutex_;
  std::size_t next_ = 0;
  std::set<std::size_t> running_;
};

bool HasSeveralTables(const std::vector<SLookup>& lookups) {
  return std::any_of(lookups.begin(), lookups.end(),
                     [&lookups](const SLookup& lookup) { return lookup.table != lookups.front().table; });
}

}  // namespace

SStoredCounts CountStored(const std::string& location, const SLookups& lookups, std::chrono::milliseconds limit,
                          const CountObserver& observer) {
  constexpr int kTries = 3;
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(location);
  for (int i = 0; i < kTries; ++i) {
    const std::unique_ptr<CDatabaseQueries> queries = storage->OpenQueries(limit);
    const std::unique_ptr<CDatabaseQueries> second =
        HasSeveralTables(lookups.lookups) ? queries->OpenSecond() : nullptr;
    const EDialect dialect =
        queries->GetKind() == CDatabaseQueries::kSqlite ? EDialect::kSqlite : EDialect::kPostgresql;
    CCounter counter(dialect, lookups.lookups, observer);
    counter.Run(*queries, second.get());
    if (queries->IsOfOneMoment()) {
      return {AddUp(lookups, counter.Counts()), counter.SearchedInVain()};
    }
  }
  const SLookupCount notCounted = {0, 0, false, "the database was changed while it was read"};
  return {AddUp(lookups, std::vector<SLookupCount>(lookups.lookups.size(), notCounted)), std::nullopt};
}

}  // namespace metareview
