#include <memory>

#include "checkmeta2024/CheckProperty2024Interface.h"
#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "generator/ElementSource.h"
#include "generator/Metamodel.h"
#include "generator/PropertyTemplates.h"
#include "kvxsptjson/JsonObject.h"
#include "suites/SuiteData.h"
#include "upgrademeta2024/MetaClass2024.h"

namespace {

enum class EClient { kSame, kChanged };

/// A class with that many properties, each changed in one attribute or none.
CMetaClass2024 MakeClass(std::int64_t properties, EClient client) {
  const bench::SElement element =
      bench::CElementSource(bench::kDefaultSeed, static_cast<std::uint32_t>(properties)).Make(bench::kClasses, 0);
  SMetaClassValues2024 values;
  values.internalName = element.name.internalName;
  values.displayName = element.name.displayName;
  values.classId = element.classId;
  values.tableName = element.name.storedName;
  std::uint32_t draw = 0;
  for (SMetaPropertyValues2024 property : element.properties) {
    if (client == EClient::kChanged) {
      bench::ChangeOneAttribute(property, draw++);
    }
    values.properties.Add(property);
  }
  return CMetaClass2024(std::move(values));
}

void CompareProperties(benchmark::State& state, EClient client) {
  const CMetaClass2024 clientClass = MakeClass(state.range(0), client);
  const CMetaClass2024 originalClass = MakeClass(state.range(0), EClient::kSame);
  const auto clientList = clientClass.GetProperties();
  const auto originalList = originalClass.GetProperties();
  const auto clientDict = clientClass.GetPropertyDict();
  const auto originalDict = originalClass.GetPropertyDict();
  for ([[maybe_unused]] auto _ : state) {
    auto entry = std::make_shared<CJsonObject>();
    CCheckProperty2024Interface::CheckProperties(clientList, originalList, clientDict, originalDict, entry);
    benchmark::DoNotOptimize(entry);
  }
  bench::CountProperties(state, clientList.size());
}

/// What a comparison of a class takes from it.
void FetchProperties(benchmark::State& state) {
  const CMetaClass2024 element = MakeClass(state.range(0), EClient::kSame);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(element.GetProperties());
    benchmark::DoNotOptimize(element.GetPropertyDict());
  }
  bench::CountProperties(state, element.GetValues().properties.GetSize());
}

void PropertyJson(benchmark::State& state) {
  const CMetaClass2024 element = MakeClass(state.range(0), EClient::kSame);
  const auto properties = element.GetProperties();
  for ([[maybe_unused]] auto _ : state) {
    for (const auto& property : properties) {
      std::shared_ptr<CJsonObject> json;
      CMeta2024ToJsonConverter::ConversionProperty2024ToJson(*property, json);
      benchmark::DoNotOptimize(json);
    }
  }
  bench::CountProperties(state, properties.size());
}

void ClassJson(benchmark::State& state) {
  const CMetaClass2024 element = MakeClass(1, EClient::kSame);
  for ([[maybe_unused]] auto _ : state) {
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      std::shared_ptr<CJsonObject> json;
      CMeta2024ToJsonConverter::ConversionClass2024ToJson(element, json);
      benchmark::DoNotOptimize(json);
    }
  }
  state.SetComplexityN(state.range(0));
}

/// An element has no more properties than there are names.
void OverProperties(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(4)->Range(7, 1792)->Unit(benchmark::kMicrosecond)->Complexity();
}

BENCHMARK_CAPTURE(CompareProperties, same, EClient::kSame)->Apply(&OverProperties);
BENCHMARK_CAPTURE(CompareProperties, changed, EClient::kChanged)->Apply(&OverProperties);
BENCHMARK(FetchProperties)->Apply(&OverProperties);
BENCHMARK(PropertyJson)->Apply(&OverProperties);
BENCHMARK(ClassJson)->Apply(&OverProperties);

}  // namespace
