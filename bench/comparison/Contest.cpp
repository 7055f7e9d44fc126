#include "comparison/Contest.h"

#include <algorithm>
#include <numeric>

namespace bench {
namespace {

std::vector<double> Collect(const std::vector<SUsage>& rounds, double SUsage::*what) {
  std::vector<double> values;
  for (const SUsage& usage : rounds) {
    values.push_back(usage.*what);
  }
  return values;
}

}  // namespace

double Median(std::vector<double> values) {
  if (values.empty()) {
    return 0;
  }
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double PairedRatio(const SResult& result, const SResult& base, double SUsage::*what) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < std::min(result.rounds.size(), base.rounds.size()); ++i) {
    ratios.push_back(result.rounds[i].*what / base.rounds[i].*what);
  }
  return Median(ratios);
}

double SResult::Wall() const {
  return Median(Collect(rounds, &SUsage::wallSeconds));
}

double SResult::Cpu() const {
  return Median(Collect(rounds, &SUsage::cpuSeconds));
}

double SResult::Peak() const {
  const std::vector<double> peaks = Collect(rounds, &SUsage::peakMebibytes);
  return peaks.empty() ? 0 : *std::max_element(peaks.begin(), peaks.end());
}

std::vector<SResult> Compete(const std::vector<SContestant>& contestants, unsigned rounds,
                             const std::filesystem::path& logs) {
  std::vector<SResult> results(contestants.size());
  std::vector<std::size_t> order(contestants.size());
  std::iota(order.begin(), order.end(), 0U);
  for (unsigned round = 0; round <= rounds; ++round) {
    for (const std::size_t i : order) {
      const SContestant& contestant = contestants[i];
      SResult& result = results[i];
      result.name = contestant.name;
      if (!result.failure.empty()) {
        continue;
      }
      const SUsage usage = RunToEnd(contestant.command, logs / "contestant");
      if (usage.status != contestant.expectedStatus) {
        result.failure =
            "ended with status " + std::to_string(usage.status) + ": " + FirstErrorLine(logs / "contestant");
        result.rounds.clear();
      } else if (round != 0) {
        result.rounds.push_back(usage);
      }
    }
    std::reverse(order.begin(), order.end());
  }
  return results;
}

}  // namespace bench
