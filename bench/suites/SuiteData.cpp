#include "suites/SuiteData.h"

#include <unistd.h>

#include <filesystem>

#include "generator/Metamodel.h"
#include "generator/UpgradeDirectory.h"

namespace bench {
namespace {

/// A directory that lives as long as the process.
class CDirectory {
 public:
  CDirectory() : path_(std::filesystem::temp_directory_path() / ("upgradesrv-suites-" + std::to_string(getpid()))) {}
  ~CDirectory() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  CDirectory(const CDirectory&) = delete;
  CDirectory& operator=(const CDirectory&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

std::string SuiteDirectory(std::int64_t elements, const std::string& variant) {
  static const CDirectory root;
  std::filesystem::path directory = root.Path() / (variant + "-" + std::to_string(elements));
  if (!std::filesystem::exists(directory)) {
    // The proportions of size M.
    const auto eighth = static_cast<std::uint32_t>(elements / 8);
    const SSize size = {"", 5 * eighth, 2 * eighth, eighth, 40};
    WriteUpgradeDirectory(size, *FindNamed(kVariants, variant), kDefaultSeed, directory);
  }
  return directory;
}

void CountProperties(benchmark::State& state, std::size_t properties) {
  const auto count = static_cast<std::int64_t>(properties);
  state.SetComplexityN(count);
  state.SetItemsProcessed(state.iterations() * count);
  state.counters["s/property"] = benchmark::Counter(
      static_cast<double>(count), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void OverElements(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(4)->Range(kFewestElements, kMostElements)->Unit(benchmark::kMillisecond)->Complexity();
}

}  // namespace bench
