#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdio>
#include <exception>

#include "comparison/DataCache.h"
#include "comparison/Report.h"

namespace {

using Path = std::filesystem::path;

struct SOptions {
  std::string tool;
  std::string floor;
  std::string scan;
  std::string load;
  std::string cache;
  std::vector<std::string> sizes = {"S", "M"};
  std::vector<std::string> variants = {"same", "usual", "worst"};
  std::string peers;
  std::string keyedDiff;
  unsigned rounds = 5;
  bool storagesOnly = false;
};

constexpr const char* kRun = "upgradesrv run";
constexpr const char* kReview = "upgradesrv review";
constexpr const char* kReviewOfThree = "upgradesrv review, with a base";
constexpr const char* kPeers[] = {"jsondiffpatch", "microdiff", "fast-json-patch"};

class CComparison {
 public:
  explicit CComparison(const SOptions& options) : options_(options), cache_(options.cache) {}

  void Run(const bench::SSize& size, const bench::SVariant& variant) {
    std::fprintf(stderr, "%s %s ...\n", size.name.data(), variant.name.data());
    const Path directory = cache_.Provide(size, variant);
    const std::string original = directory / "2024" / "metamodel.json";
    const std::string client = directory / "installation.json";
    const int status = variant.name == "same" ? 0 : 1;

    std::vector<bench::SContestant> contestants;
    contestants.push_back({"floor", {options_.floor, original, client}});
    contestants.push_back({kRun, {options_.tool, "run", directory}, status});
    const std::vector<std::string> review = {options_.tool, "review", "-o", "json", directory};
    contestants.push_back({kReview, review, status});
    // The original once more: what a base takes does not depend on what is in it.
    std::vector<std::string> reviewOfThree = review;
    reviewOfThree.insert(reviewOfThree.end(), {"--base", original});
    contestants.push_back({kReviewOfThree, reviewOfThree, status});
    if (const std::string originalDb = ToDatabase(original), clientDb = ToDatabase(client); hasDatabases_) {
      bench::CDataCache::WriteOut();
      contestants.push_back({"upgradesrv run, from SQLite",
                             {options_.tool, "run", "--original", originalDb, "--client", clientDb, directory},
                             status});
    }
    if (!options_.keyedDiff.empty()) {
      contestants.push_back({"keyed differ on simdjson", {options_.keyedDiff, original, client}});
      contestants.push_back(
          {"keyed differ on simdjson, one thread", {options_.keyedDiff, original, client, "--one-thread"}});
    }
    if (!options_.peers.empty()) {
      for (const char* const peer : kPeers) {
        contestants.push_back({peer, {"node", Path(options_.peers) / (std::string(peer) + ".mjs"), original, client}});
      }
    }
    cases_.push_back({size, variant, bench::Compete(contestants, options_.rounds, cache_.Logs())});
    Watch(cases_.back().results);
  }

  /// Loading one metamodel from each storage beside a scan of the database that does nothing else.
  void RunStorages(const bench::SSize& size, const bench::SVariant& variant) {
    std::fprintf(stderr, "%s %s, storages ...\n", size.name.data(), variant.name.data());
    const std::string document = cache_.Provide(size, variant) / "installation.json";
    const std::string database = ToDatabase(document);
    if (!hasDatabases_) {
      return;
    }
    bench::CDataCache::WriteOut();
    const std::vector<bench::SContestant> contestants = {{"scan", {options_.scan, database}},
                                                         {"load, from SQLite", {options_.load, database}},
                                                         {"load, from a document", {options_.load, document}}};
    storages_.push_back({size, variant, bench::Compete(contestants, options_.rounds, cache_.Logs())});
    Watch(storages_.back().results);
  }

  void Print() {
    bench::PrintTable(storages_, "scan");
    if (options_.storagesOnly) {
      return;
    }
    std::puts("");
    bench::PrintTable(cases_, "floor");
    std::puts("");
    for (const char* const review : {kReview, kReviewOfThree}) {
      bench::PrintRatios(cases_, review, kRun);
    }
    bench::PrintGrowth(cases_);
    PrintSmall();
  }

  bool HasFailures() const { return hasFailures_; }

 private:
  /// The same metamodel in a database, when the tool can write one; written anew, since its form may have changed.
  std::string ToDatabase(const std::string& document) {
    std::string database = Path(document).replace_extension(".db");
    const Path log = cache_.Logs() / "copy";
    if (hasDatabases_ &&
        bench::RunToEnd({options_.tool, "metamodel", "copy", "--replace", document, database}, log).status != 0) {
      hasDatabases_ = false;
      std::fprintf(stderr, "nothing from SQLite: %s\n", bench::FirstErrorLine(log).c_str());
    }
    return database;
  }

  void Watch(const std::vector<bench::SResult>& results) {
    for (const bench::SResult& result : results) {
      hasFailures_ = hasFailures_ || !result.failure.empty();
    }
  }

  void PrintSmall() {
    // One run takes a few milliseconds only.
    constexpr unsigned kRuns = 21;
    const std::string example = cache_.ProvideExample();
    const std::vector<bench::SContestant> contestants = {{"upgradesrv --version", {options_.tool, "--version"}},
                                                         {"the example", {options_.tool, "run", example}, 1}};
    const auto results = bench::Compete(contestants, kRuns, cache_.Logs());
    Watch(results);
    for (const bench::SResult& result : results) {
      std::printf("- %s: %.1f ms wall, %.1f ms CPU, %.0f MiB %s\n", result.name.c_str(), result.Wall() * 1e3,
                  result.Cpu() * 1e3, result.Peak(), result.failure.c_str());
    }
  }

  const SOptions& options_;
  bench::CDataCache cache_;
  bool hasDatabases_ = true;
  bool hasFailures_ = false;
  std::vector<bench::SCaseResult> cases_;
  std::vector<bench::SCaseResult> storages_;
};

template <typename Rows>
CLI::IsMember OneOf(const Rows& rows) {
  std::vector<std::string> names;
  for (const auto& row : rows) {
    names.emplace_back(row.name);
  }
  return CLI::IsMember(names);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  SOptions options;
  CLI::App app("Runs the floor, upgradesrv and generic differs on the same metamodels, as whole processes in turn.");
  app.add_option("--tool", options.tool, "upgradesrv")->required();
  app.add_option("--floor", options.floor, "the floor")->required();
  app.add_option("--scan", options.scan, "the scan of a database")->required();
  app.add_option("--load", options.load, "what loads one metamodel")->required();
  app.add_option("--cache", options.cache, "directory for what is generated")->required();
  app.add_option("--sizes", options.sizes, "S, M, L")->delimiter(',')->check(OneOf(bench::kSizes));
  app.add_option("--variants", options.variants, "same, usual, worst")->delimiter(',')->check(OneOf(bench::kVariants));
  app.add_option("--rounds", options.rounds, "how often")->capture_default_str();
  app.add_option("--peers-dir", options.peers, "directory with the generic differs, which then take part");
  app.add_option("--keyed-diff", options.keyedDiff, "a differ that matches by name, which then takes part");
  app.add_flag("--storages", options.storagesOnly, "only loading from each storage, no whole runs");
  CLI11_PARSE(app, argumentCount, arguments);
  try {
    const std::string machine = bench::DescribeMachine();
    CComparison comparison(options);
    for (const std::string& sizeName : options.sizes) {
      const bench::SSize& size = *bench::FindNamed(bench::kSizes, sizeName);
      comparison.RunStorages(size, *bench::FindNamed(bench::kVariants, options.variants.front()));
      for (const std::string& variant : options.variants) {
        if (!options.storagesOnly) {
          comparison.Run(size, *bench::FindNamed(bench::kVariants, variant));
        }
      }
    }
    std::printf("%s; %u rounds\n\n", machine.c_str(), options.rounds);
    comparison.Print();
    return comparison.HasFailures() ? 1 : 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 2;
  }
}
