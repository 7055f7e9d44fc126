#include "comparison/Report.h"

#include <sys/utsname.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace bench {
namespace {

std::string CpuModel() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("model name", 0) == 0) {
      return line.substr(line.find(':') + 2);
    }
  }
  return "unknown processor";
}

std::string CaseName(const SCaseResult& result) {
  return std::string(result.size.name) + " " + std::string(result.variant.name);
}

void PrintRow(const std::string& name, const SResult& result, const SResult& floor) {
  if (result.rounds.empty()) {
    std::printf("| %s | %s | failed: %s |||||\n", name.c_str(), result.name.c_str(), result.failure.c_str());
    return;
  }
  std::printf("| %s | %s | %.3f s | %.2f | %.3f s | %.2f | %.0f MiB | %.2f |\n", name.c_str(), result.name.c_str(),
              result.Wall(), PairedRatio(result, floor, &SUsage::wallSeconds), result.Cpu(),
              PairedRatio(result, floor, &SUsage::cpuSeconds), result.Peak(),
              PairedRatio(result, floor, &SUsage::peakMebibytes));
}

const SResult* Find(const SCaseResult& result, const std::string& program) {
  for (const SResult& each : result.results) {
    if (each.name == program && !each.rounds.empty()) {
      return &each;
    }
  }
  return nullptr;
}

}  // namespace

std::string DescribeMachine() {
  utsname system{};
  uname(&system);
  double load = 0;
  getloadavg(&load, 1);
  char loadText[32];
  std::snprintf(loadText, sizeof(loadText), "%.2f", load);
  return CpuModel() + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores, Linux " + system.release +
         ", load " + loadText + " before the start";
}

void PrintTable(const std::vector<SCaseResult>& cases, const std::string& measure) {
  const char* const name = measure.c_str();
  std::printf("| case | program | wall | to %s | CPU | to %s | peak memory | to %s |\n", name, name, name);
  std::puts("|---|---|---:|---:|---:|---:|---:|---:|");
  for (const SCaseResult& each : cases) {
    for (const SResult& result : each.results) {
      PrintRow(CaseName(each), result, each.results.front());
    }
  }
}

void PrintRatios(const std::vector<SCaseResult>& cases, const std::string& program, const std::string& measure) {
  for (const SCaseResult& each : cases) {
    const SResult* const result = Find(each, program);
    const SResult* const other = Find(each, measure);
    if (result != nullptr && other != nullptr) {
      std::printf("- %s, %s against %s: %.2f times the wall time, %.2f times the CPU time, %.2f times the memory\n",
                  CaseName(each).c_str(), program.c_str(), measure.c_str(),
                  PairedRatio(*result, *other, &SUsage::wallSeconds), PairedRatio(*result, *other, &SUsage::cpuSeconds),
                  PairedRatio(*result, *other, &SUsage::peakMebibytes));
    }
  }
}

void PrintGrowth(const std::vector<SCaseResult>& cases) {
  for (std::size_t i = 0; i < cases.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (cases[i].variant.name != cases[j].variant.name) {
        continue;
      }
      for (const SResult& large : cases[i].results) {
        const SResult* const small = Find(cases[j], large.name);
        if (small != nullptr && !large.rounds.empty()) {
          std::printf(
              "- %s, %s against %s: %.1f times the properties, %.2f times the wall time, %.2f times the CPU time, "
              "%.2f times the memory\n",
              large.name.c_str(), CaseName(cases[i]).c_str(), CaseName(cases[j]).c_str(),
              static_cast<double>(cases[i].size.Properties()) / static_cast<double>(cases[j].size.Properties()),
              large.Wall() / small->Wall(), large.Cpu() / small->Cpu(), large.Peak() / small->Peak());
        }
      }
    }
  }
}

}  // namespace bench
