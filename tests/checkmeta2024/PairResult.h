#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "kvxsptjson/JsonObject.h"
#include "support/LogCapture.h"

namespace test {

/// What the two operations of an element comparer answer for one pair.
struct SPairResult {
  std::shared_ptr<CJsonObject> entry = std::make_shared<CJsonObject>();
  bool entryPassed = false;
  bool logPassed = false;
  /// What the operation without an entry logged.
  std::vector<SLogLine> lines;
};

/// Runs both operations, each on a comparer of its own, and fails the test when the one with an entry logs anything.
template <typename Comparer, typename Element>
SPairResult ComparePair(const Element& client, const Element& original,
                        bool (Comparer::*checkWithEntry)(std::shared_ptr<CJsonObject>&), bool (Comparer::*check)()) {
  SPairResult result;
  const CLogCapture log;
  Comparer withEntry(client, original);
  result.entryPassed = (withEntry.*checkWithEntry)(result.entry);
  EXPECT_THAT(log.Lines(), testing::IsEmpty());
  Comparer withoutEntry(client, original);
  result.logPassed = (withoutEntry.*check)();
  result.lines = log.Lines();
  return result;
}

inline void ExpectNoDifference(const SPairResult& result) {
  EXPECT_TRUE(result.entryPassed);
  EXPECT_EQ(result.entry->ToText(), "{}");
  EXPECT_TRUE(result.logPassed);
  EXPECT_THAT(result.lines, testing::IsEmpty());
}

}  // namespace test
