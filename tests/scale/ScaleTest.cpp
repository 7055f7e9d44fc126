// Metamodels of sizes that nobody has: a run's time grows with the size and hardly faster.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "scale/Shapes.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

using test::ERelation;

constexpr std::size_t kLargeSize = 100000;
constexpr std::size_t kFactor = 10;
/// Growth as n log n is a factor of 12.5 between the sizes, growth as the square one of 100.
constexpr double kLargestGrowth = 20;

struct SScale {
  const char* name;
  test::Shape shape;
  ERelation relation;
  /// What is in the document once for each unit of size, or in all when that is fixed.
  const char* finding;
  bool findingsGrow = true;
};

void PrintTo(const SScale& scale, std::ostream* output) {
  *output << scale.name;
}

/// Processor time of all processes that this one has waited for, in seconds.
double ChildrenTime() {
  rusage usage{};
  EXPECT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

class ScaleTest : public testing::TestWithParam<SScale> {
 protected:
  /// The processor time of a run that finds all there is to find.
  static double RunTime(std::size_t size) {
    const SScale& scale = GetParam();
    const bool changed = scale.relation == ERelation::kChanged;
    const test::CUpgradeDirectory upgrade;
    upgrade.Write("2024/metamodel.json", scale.shape(size, "Name", 1));
    upgrade.Write("installation.json", scale.shape(size, changed ? "Name" : "Other", 2));
    const double before = ChildrenTime();
    const test::SProcessResult result = upgrade.Run();
    const double time = ChildrenTime() - before;
    EXPECT_EQ(result.status, 1) << result.errors.substr(0, 1000);
    EXPECT_EQ(Count(upgrade.Document(), scale.finding), scale.findingsGrow ? size : 3);
    return time;
  }
};

TEST_P(ScaleTest, TimeGrowsNoFasterThanTheSizeTimesItsLogarithm) {
  const double small = RunTime(kLargeSize / kFactor);
  double large = RunTime(kLargeSize);
  // What else the machine does can slow one run down, but not speed it up.
  for (int attempt = 0; attempt < 2 && large > small * kLargestGrowth; ++attempt) {
    large = std::min(large, RunTime(kLargeSize));
  }
  EXPECT_LE(large, small * kLargestGrowth) << "factor " << large / small;
  RecordProperty("milliseconds", static_cast<int>(large * 1000));
  RecordProperty("factor_in_hundredths", static_cast<int>(large / small * 100));
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, ScaleTest,
    testing::Values(
        SScale{"ClassesChanged", test::ClassesOfOneProperty, ERelation::kChanged, "\"updated_field\""},
        SScale{"ClassesReplaced", test::ClassesOfOneProperty, ERelation::kReplaced, "\"internal_name\": \"Other"},
        SScale{"PropertiesChanged", test::PropertiesOfOneClass, ERelation::kChanged, "\"updated_field\""},
        SScale{"PropertiesReplaced", test::PropertiesOfOneClass, ERelation::kReplaced, "\"internal_name\": \"Other"},
        SScale{"MethodsReplaced", test::MethodsOfOneBehavior, ERelation::kReplaced, "\"internal_name\": \"Other"},
        SScale{"BehaviorNamesReplaced", test::BehaviorNamesOfOneClass, ERelation::kReplaced, "\"other"},
        SScale{"LongNamesChanged", test::LongNames, ERelation::kChanged, "\"updated_field\"", false},
        SScale{"LongNamesReplaced", test::LongNames, ERelation::kReplaced, "\"internal_name\": \"Other", false}),
    [](const auto& test) { return test.param.name; });

}  // namespace
