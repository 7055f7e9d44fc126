#include "metareview2024/data/CountStored.h"

#include <memory>
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

class CCounter {
 public:
  CCounter(CDatabaseQueries& queries, const std::vector<SLookup>& lookups)
      : queries_(queries),
        dialect_(queries.GetKind() == CDatabaseQueries::kSqlite ? EDialect::kSqlite : EDialect::kPostgresql),
        lookups_(lookups),
        counts_(lookups.size()) {}

  std::vector<SLookupCount> Run(const CountObserver& observer) {
    for (const std::string& setting : ReadingSettings(dialect_)) {
      queries_.Query(setting);
    }
    places_ = FindPlaces(queries_, lookups_);
    const std::vector<SQueryPlan> plans = Plan();
    for (std::size_t i = 0; i < plans.size(); ++i) {
      if (observer) {
        observer({plans[i].name, i, plans.size()});
      }
      Count(plans[i]);
    }
    return std::move(counts_);
  }

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

  SDatabaseAnswer Ask(const SQueryPlan& plan) {
    std::vector<SSqlCount> counts;
    counts.reserve(plan.lookups.size());
    for (const std::size_t lookup : plan.lookups) {
      counts.push_back({lookups_[lookup].measure, places_[lookup].columns, lookups_[lookup].limit});
    }
    return queries_.Query(CountQuery(dialect_, plan.table, counts));
  }

  void Count(const SQueryPlan& plan) {
    SDatabaseAnswer answer = Ask(plan);
    std::string problem;
    if (answer.outcome == SDatabaseAnswer::kDenied && dialect_ == EDialect::kPostgresql) {
      // The server has refused to leave out rows that a policy hides, or the user has no right at all.
      queries_.Query("SET LOCAL row_security = on");
      SDatabaseAnswer partial = Ask(plan);
      queries_.Query("SET LOCAL row_security = off");
      if (partial.outcome == SDatabaseAnswer::kRows) {
        problem = "row-level security may hide rows of table " + CStringHelper::ToVisible(plan.name);
        answer = std::move(partial);
      }
    }
    if (answer.outcome == SDatabaseAnswer::kRows) {
      Take(plan, answer, problem);
    } else if (answer.outcome != SDatabaseAnswer::kOutOfTime && answer.outcome != SDatabaseAnswer::kLost &&
               plan.lookups.size() > 1) {
      // One of them may be at fault. When time is over each would take about as long.
      for (const std::size_t lookup : plan.lookups) {
        Count({plan.name, plan.table, {lookup}});
      }
    } else {
      Fail(plan, answer);
    }
  }

  void Take(const SQueryPlan& plan, const SDatabaseAnswer& answer, const std::string& problem) {
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
    const std::string problem =
        answer.outcome == SDatabaseAnswer::kOutOfTime
            ? "there was not enough time to count in table " + CStringHelper::ToVisible(plan.name)
            : answer.problem;
    for (const std::size_t lookup : plan.lookups) {
      counts_[lookup].problem = problem;
    }
  }

  CDatabaseQueries& queries_;
  EDialect dialect_;
  const std::vector<SLookup>& lookups_;
  std::vector<SPlace> places_;
  std::vector<SLookupCount> counts_;
};

}  // namespace

std::vector<SCount> CountStored(const std::string& location, const SLookups& lookups, std::chrono::milliseconds limit,
                                const CountObserver& observer) {
  constexpr int kTries = 3;
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(location);
  std::vector<SLookupCount> counts;
  for (int i = 0; i < kTries; ++i) {
    const std::unique_ptr<CDatabaseQueries> queries = storage->OpenQueries(limit);
    counts = CCounter(*queries, lookups.lookups).Run(observer);
    if (queries->IsOfOneMoment()) {
      return AddUp(lookups, counts);
    }
  }
  for (SLookupCount& count : counts) {
    count = {0, 0, false, "the database was changed while it was read"};
  }
  return AddUp(lookups, counts);
}

}  // namespace metareview
