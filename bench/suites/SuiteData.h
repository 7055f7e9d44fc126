#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace bench {

constexpr std::int64_t kFewestElements = 64;
constexpr std::int64_t kMostElements = 4096;

/// An upgrade configuration directory with that many elements of 40 properties, generated at first and removed at the
/// end of the process.
std::string SuiteDirectory(std::int64_t elements, const std::string& variant);

/// Reports a state's time per property, and lets the growth be fitted against the number of properties.
void CountProperties(benchmark::State& state, std::size_t properties);

/// The settings of every benchmark whose argument is a number of elements.
void OverElements(benchmark::internal::Benchmark* benchmark);

}  // namespace bench
