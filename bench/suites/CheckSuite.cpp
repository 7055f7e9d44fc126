#include <string>

#include "kvxsptjson/JsonObject.h"
#include "suites/SuiteData.h"
#include "support/UpgradeRun.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace {

/// Does what comes before the step that is measured, and counts the client's properties.
class CPrepared {
 public:
  CPrepared(benchmark::State& state, const std::string& variant)
      : state_(state), run_(bench::SuiteDirectory(state.range(0), variant)) {
    run_.Prepare();
  }
  ~CPrepared() { bench::CountProperties(state_, bench::CountProperties(*run_.Load().client)); }
  CPrepared(const CPrepared&) = delete;
  CPrepared& operator=(const CPrepared&) = delete;

  bench::CUpgradeRun& Run() { return run_; }

 private:
  benchmark::State& state_;
  bench::CUpgradeRun run_;
};

void Compare(benchmark::State& state, const std::string& variant) {
  CPrepared prepared(state, variant);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(prepared.Run().Compare());
  }
}

void Save(benchmark::State& state, const std::string& variant) {
  CPrepared prepared(state, variant);
  const auto checkResult = prepared.Run().Compare();
  for ([[maybe_unused]] auto _ : state) {
    prepared.Run().Save(*checkResult);
  }
}

void Text(benchmark::State& state, const std::string& variant) {
  CPrepared prepared(state, variant);
  const auto checkResult = prepared.Run().Compare();
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(prepared.Run().ToText(checkResult));
  }
}

BENCHMARK_CAPTURE(Compare, same, "same")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Compare, usual, "usual")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Compare, worst, "worst")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Save, usual, "usual")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Save, worst, "worst")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Text, usual, "usual")->Apply(&bench::OverElements);
BENCHMARK_CAPTURE(Text, worst, "worst")->Apply(&bench::OverElements);

}  // namespace
