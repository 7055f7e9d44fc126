#include <valgrind/callgrind.h>

#include <cstdio>
#include <ctime>
#include <exception>
#include <memory>
#include <string>

#include "kvxsptjson/JsonObject.h"
#include "metareview2024/ReviewSteps.h"
#include "storages/SqliteScan.h"
#include "support/UpgradeRun.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

/// Runs one step and prints its CPU time, which other programs disturb less than the wall time. Under callgrind,
/// whatever else runs is not counted, and each step has its costs written out under its name.
template <typename Step>
void Phase(const char* name, std::size_t properties, const Step& step) {
  CALLGRIND_START_INSTRUMENTATION;
  CALLGRIND_ZERO_STATS;
  const std::clock_t start = std::clock();
  step();
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  CALLGRIND_DUMP_STATS_AT(name);
  CALLGRIND_STOP_INSTRUMENTATION;
  std::printf("%-8s %zu properties %10.3f ms %10.1f ns/property\n", name, properties, seconds * 1e3,
              seconds * 1e9 / static_cast<double>(properties));
}

void RunAll(const std::string& directory) {
  bench::CUpgradeRun run(directory);
  run.Prepare();
  bench::CUpgradeRun::SMetamodels metamodels = run.Load();
  const std::size_t client = bench::CountProperties(*metamodels.client);
  const std::size_t original = bench::CountProperties(*metamodels.original);
  Phase("unload", client + original, [&] { metamodels = {}; });
  Phase("load", client + original, [&] { metamodels = run.Load(); });
  metareview::SReview review;
  Phase("review", client, [&] {
    review = metareview::CompareMetamodels({metamodels.client, metamodels.original, nullptr},
                                           {metareview::kKinds.begin(), metareview::kKinds.end()});
  });
  metamodels = {};
  std::shared_ptr<CJsonObject> checkResult;
  Phase("compare", client, [&] { checkResult = run.Compare(); });
  Phase("save", client, [&] { run.Save(*checkResult); });
  Phase("text", client, [&] { run.ToText(checkResult); });
}

/// Loading from a database beside what reading it takes at the least.
void RunDatabase(const std::string& directory) {
  const std::string database = directory + "/installation.db";
  std::shared_ptr<CMetaDictionary2024> metamodel = OpenMetaStorage(directory + "/installation.json")->Load();
  const std::size_t properties = bench::CountProperties(*metamodel);
  OpenMetaStorage(database)->Save(*metamodel);
  metamodel.reset();
  bench::ScanSqlite(database);
  Phase("scan-db", properties, [&] { bench::ScanSqlite(database); });
  Phase("load-db", properties, [&] { metamodel = OpenMetaStorage(database)->Load(); });
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: %s UPGRADE_DIR\n", arguments[0]);
    return 2;
  }
  try {
    RunAll(arguments[1]);
    RunDatabase(arguments[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 2;
  }
  return 0;
}
