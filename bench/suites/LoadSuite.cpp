#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "kvxsptexception/KVXException.h"
#include "storages/ServerSchema.h"
#include "storages/SqliteScan.h"
#include "suites/SuiteData.h"
#include "support/UpgradeRun.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

/// The same metamodel at another place, whose ending decides on the storage.
std::string Copy(const std::string& document, const std::string& ending) {
  std::string target = document + ending;
  if (!std::filesystem::exists(target)) {
    OpenMetaStorage(target)->Save(*OpenMetaStorage(document)->Load());
  }
  return target;
}

/// The same metamodel in a schema of its own.
std::string CopyToServer(const std::string& document, std::int64_t elements) {
  static std::map<std::int64_t, bench::CServerSchema> schemas = [] {
    bench::RequireServer();
    return std::map<std::int64_t, bench::CServerSchema>();
  }();
  const auto [schema, isNew] = schemas.try_emplace(elements, std::to_string(elements));
  std::string target = schema->second.Location();
  if (isNew) {
    OpenMetaStorage(target)->Save(*OpenMetaStorage(document)->Load());
  }
  return target;
}

std::string Document(const benchmark::State& state) {
  return bench::SuiteDirectory(state.range(0), "same") + "/installation.json";
}

void Load(benchmark::State& state, const std::string& location) {
  const std::size_t properties = bench::CountProperties(*OpenMetaStorage(location)->Load());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(OpenMetaStorage(location)->Load());
  }
  bench::CountProperties(state, properties);
}

void LoadFile(benchmark::State& state, const std::string& ending) {
  Load(state, Copy(Document(state), ending));
}

void LoadFromServer(benchmark::State& state) {
  Load(state, CopyToServer(Document(state), state.range(0)));
}

/// What loading from a database cannot be faster than, whatever it does.
void Scan(benchmark::State& state) {
  const std::string document = Document(state);
  const std::string location = Copy(document, ".db");
  const std::size_t properties = bench::CountProperties(*OpenMetaStorage(document)->Load());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(bench::ScanSqlite(location));
  }
  bench::CountProperties(state, properties);
}

bool IsStorage(const std::string& ending) {
  try {
    OpenMetaStorage("x" + ending);
    return true;
  } catch (const CKVXException&) {
    return false;
  }
}

const bool kRegistered = [] {
  for (const std::string ending : {".json", ".db"}) {
    if (IsStorage(ending)) {
      benchmark::RegisterBenchmark(("Load/" + ending.substr(1)).c_str(), &LoadFile, ending)
          ->Apply(&bench::OverElements);
    }
  }
  if (bench::HasServer()) {
    benchmark::RegisterBenchmark("Load/postgresql", &LoadFromServer)->Apply(&bench::OverElements);
  }
  benchmark::RegisterBenchmark("Scan/db", &Scan)->Apply(&bench::OverElements);
  return true;
}();

}  // namespace
