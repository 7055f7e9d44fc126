#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "comparison/ChildProcess.h"

namespace bench {

/// A program that takes part in a comparison.
struct SContestant {
  std::string name;
  std::vector<std::string> command;
  int expectedStatus = 0;
};

/// What one contestant took, over all rounds.
struct SResult {
  std::string name;
  /// One per round; empty when the program failed.
  std::vector<SUsage> rounds;
  std::string failure;

  double Wall() const;
  double Cpu() const;
  double Peak() const;
};

double Median(std::vector<double> values);
/// The median of the quotients of each round, so that what slows a whole round down does not count.
double PairedRatio(const SResult& result, const SResult& base, double SUsage::*what);

/// Runs all contestants once for nothing, then `rounds` times one after the other, every other round backwards.
/// A contestant that ends with another status than expected takes no further part.
std::vector<SResult> Compete(const std::vector<SContestant>& contestants, unsigned rounds,
                             const std::filesystem::path& logs);

}  // namespace bench
