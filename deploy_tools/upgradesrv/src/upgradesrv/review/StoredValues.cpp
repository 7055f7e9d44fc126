#include "upgradesrv/review/StoredValues.h"

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptstring/StringHelper.h"
#include "metareview2024/data/ApplyCounts.h"
#include "metareview2024/data/CountStored.h"
#include "metareview2024/render/CountsReader.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/storage/MetaLocation.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

using metareview::EDialect;

constexpr std::chrono::seconds kTimeout{30};

bool IsCountsFile(std::string location) {
  constexpr std::string_view kEnd = ".csv";
  CStringHelper::ToLower(location);
  return location.find("://") == std::string::npos && location.size() > kEnd.size() &&
         location.compare(location.size() - kEnd.size(), kEnd.size(), kEnd) == 0;
}

std::optional<EDialect> DialectOf(const std::string& location) {
  switch (ParseMetaLocation(location).kind) {
    case SMetaLocation::kSqlite:
      return EDialect::kSqlite;
    case SMetaLocation::kPostgresql:
      return EDialect::kPostgresql;
    default:
      return std::nullopt;
  }
}

EDialect ParseDialect(const std::string& name) {
  if (name == "sqlite") {
    return EDialect::kSqlite;
  }
  if (name == "postgresql") {
    return EDialect::kPostgresql;
  }
  throw CTrouble("--dialect: unknown dialect \"" + name + "\"; the dialects are sqlite, postgresql");
}

std::string SearchedInVain(const std::string& location, const std::vector<std::string>& schemas) {
  const std::string note =
      OpenMetaStorage(location)->Describe() + ": there is none of the tables in which something is to be counted";
  if (DialectOf(location) == EDialect::kSqlite) {
    return note + "; is it the right database?";
  }
  std::string names;
  for (const std::string& schema : schemas) {
    names.append(names.empty() ? "" : ", ").append(schema);
  }
  return note + (names.empty() ? ", and no schema in which to look for them" : " in the schemas searched: " + names) +
         "; is it the right database, and the right search_path?";
}

}  // namespace

CStoredValues::CStoredValues(const SStoredValues& values, const std::string& client)
    : location_(values.location), timeout_(values.timeout.value_or(kTimeout)) {
  std::optional<EDialect> dialect;
  if (location_) {
    isFile_ = IsCountsFile(*location_);
    dialect = DialectOf(*location_);
    if (!isFile_ && !dialect) {
      throw CTrouble(
          "--data " + *location_ +
          ": give the path of a .db or .sqlite database, sqlite3://PATH or postgresql://CONNECTION, or the path of "
          "a .csv file with what the script of -o sql has counted");
    }
  }
  if (!dialect) {
    dialect = DialectOf(client);
  }
  dialect_ = values.dialect ? ParseDialect(*values.dialect) : dialect.value_or(EDialect::kPostgresql);
}

std::vector<std::string> CStoredValues::GetFiles() const {
  if (!location_) {
    return {};
  }
  return isFile_ ? std::vector<std::string>{*location_} : OpenMetaStorage(*location_)->GetFiles();
}

void CStoredValues::Count(const metareview::SLookups& lookups, metareview::SReview& review) const {
  ApplyCounts(isFile_ ? ReadFromFile(lookups, review) : ReadFromDatabase(lookups), review);
  review.data = isFile_ ? *location_ : OpenMetaStorage(*location_)->Describe();
}

std::vector<metareview::SCount> CStoredValues::ReadFromFile(const metareview::SLookups& lookups,
                                                            const metareview::SReview& review) const {
  const metareview::SReadCounts read = metareview::ReadCounts(kvx::ReadFile(*location_), *location_, review, lookups);
  if (read.gone != 0) {
    WriteNote(*location_ + ": " + std::to_string(read.gone) +
              (read.gone == 1 ? " row is about a difference" : " rows are about differences") +
              " of which there is nothing to count any more");
  }
  return read.counts;
}

std::vector<metareview::SCount> CStoredValues::ReadFromDatabase(const metareview::SLookups& lookups) const {
  std::optional<CLoadProgress> progress;
  const auto show = [&progress](const metareview::SCountProgress& count) {
    progress.emplace(count.table, CLoadProgress::kTables);
    progress->SetTotal(count.total);
    progress->SetDone(count.done);
  };
  try {
    metareview::SStoredCounts stored = metareview::CountStored(*location_, lookups, timeout_, show);
    progress.reset();
    if (stored.searchedInVain) {
      WriteNote(SearchedInVain(*location_, *stored.searchedInVain));
    }
    return std::move(stored.counts);
  } catch (const CKVXException& error) {
    throw CKVXException(error.GetCode(), std::string("stored values: ") + error.what());
  }
}

}  // namespace upgradesrv
