#pragma once

#include <string>
#include <vector>

#include "comparison/Contest.h"
#include "generator/Sizes.h"

namespace bench {

/// The results of one size and variant. The first is what the others are measured by.
struct SCaseResult {
  SSize size;
  SVariant variant;
  std::vector<SResult> results;
};

/// Processor, number of cores, kernel and load, as a line.
std::string DescribeMachine();

/// A table in Markdown, one row per program. `measure` names the first.
void PrintTable(const std::vector<SCaseResult>& cases, const std::string& measure);
/// What one program takes against another, for each case in which both ran.
void PrintRatios(const std::vector<SCaseResult>& cases, const std::string& program, const std::string& measure);
/// How the times grow from one size to the next, for each program and variant that ran at both.
void PrintGrowth(const std::vector<SCaseResult>& cases);

}  // namespace bench
