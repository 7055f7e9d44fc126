#include <filesystem>
#include <string>

#include "kvxsptexception/KVXException.h"
#include "storages/SqliteScan.h"
#include "suites/SuiteData.h"
#include "support/UpgradeRun.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaStorage2024.h"

namespace {

/// The same metamodel at another place, whose ending decides on the storage.
std::string Copy(const std::string& document, const std::string& ending) {
  std::string target = document + ending;
  if (!std::filesystem::exists(target)) {
    CMetaStorage2024::Open(target)->Save(*CMetaStorage2024::Open(document)->Load());
  }
  return target;
}

void Load(benchmark::State& state, const std::string& ending) {
  const std::string document = bench::SuiteDirectory(state.range(0), "same") + "/installation.json";
  const std::string location = Copy(document, ending);
  const std::size_t properties = bench::CountProperties(*CMetaStorage2024::Open(location)->Load());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(CMetaStorage2024::Open(location)->Load());
  }
  bench::CountProperties(state, properties);
}

/// What loading from a database cannot be faster than, whatever it does.
void Scan(benchmark::State& state) {
  const std::string document = bench::SuiteDirectory(state.range(0), "same") + "/installation.json";
  const std::string location = Copy(document, ".db");
  const std::size_t properties = bench::CountProperties(*CMetaStorage2024::Open(document)->Load());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(bench::ScanSqlite(location));
  }
  bench::CountProperties(state, properties);
}

bool IsStorage(const std::string& ending) {
  try {
    CMetaStorage2024::Open("x" + ending);
    return true;
  } catch (const CKVXException&) {
    return false;
  }
}

const bool kRegistered = [] {
  for (const std::string ending : {".json", ".db"}) {
    if (IsStorage(ending)) {
      benchmark::RegisterBenchmark(("Load/" + ending.substr(1)).c_str(), &Load, ending)->Apply(&bench::OverElements);
    }
  }
  benchmark::RegisterBenchmark("Scan/db", &Scan)->Apply(&bench::OverElements);
  return true;
}();

}  // namespace
