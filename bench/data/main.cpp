#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>

#include "data/InstallationData.h"
#include "metareview2024/data/CountStored.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

constexpr std::chrono::minutes kLimit(10);
constexpr int kRounds = 3;

/// The shortest of some rounds, in seconds.
double Measure(const std::function<void()>& run) {
  double best = 1e9;
  for (int i = 0; i < kRounds; ++i) {
    const auto start = std::chrono::steady_clock::now();
    run();
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

/// One query on each table.
void Scan(const std::string& location, std::size_t tables, const std::string& counts) {
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(location);
  const std::unique_ptr<CDatabaseQueries> queries = storage->OpenQueries(kLimit);
  for (std::size_t i = 0; i < tables; ++i) {
    const std::string query = "SELECT " + counts + " FROM \"" + bench::CInstallationData::TableName(i) + "\"";
    if (const SDatabaseAnswer answer = queries->Query(query); answer.outcome != SDatabaseAnswer::kRows) {
      throw std::runtime_error(answer.problem);
    }
  }
}

void Count(const std::string& location, const metareview::SLookups& lookups) {
  for (const metareview::SCount& count : CountStored(location, lookups, kLimit).counts) {
    if (!count.data.problem.empty()) {
      throw std::runtime_error(count.data.problem);
    }
  }
}

void Run(const std::string& database, std::size_t tables, std::size_t rows, std::size_t findings) {
  const auto data =
      database == "sqlite" ? bench::MakeSqliteData(tables, rows) : bench::MakePostgresqlData(tables, rows);
  std::string columns = "count(*)";
  for (const std::string& column : bench::LookedUpColumns()) {
    columns += ", count(" + column + ")";
  }
  const metareview::SLookups lookups = {bench::MakeLookups(tables, findings), {}, {}};
  const double rowScan = Measure([&] { Scan(data->Location(), tables, "count(*)"); });
  const double columnScan = Measure([&] { Scan(data->Location(), tables, columns); });
  const double counting = Measure([&] { Count(data->Location(), lookups); });
  std::printf(
      "%s, %zu tables of %zu rows, %zu findings: count(*) of each table %.3f s, count of each column looked at "
      "%.3f s, all findings %.3f s (%.2f and %.2f times as long)\n",
      database.c_str(), tables, rows, findings, rowScan, columnScan, counting, counting / rowScan,
      counting / columnScan);
}

}  // namespace

/// What counting for the findings of a review costs, against reading every table once.
int main(int argumentCount, char** arguments) {
  const std::string database = argumentCount > 1 ? arguments[1] : "";
  if (argumentCount != 5 || (database != "sqlite" && database != "postgresql")) {
    std::fprintf(stderr, "usage: %s sqlite|postgresql TABLES ROWS FINDINGS\n", arguments[0]);
    return 2;
  }
  try {
    Run(database, std::stoul(arguments[2]), std::stoul(arguments[3]), std::stoul(arguments[4]));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 2;
  }
}
