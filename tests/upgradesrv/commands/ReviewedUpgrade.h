#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace test {

// Part.Code is longer here than shipped, and Part has a property of its own.
constexpr const char* kReviewedClient = R"({"generation": 2024, "classes": [{"internal_name": "Part", "properties": [
  {"internal_name": "Code", "type": "string", "length": 48}, {"internal_name": "Own", "type": "string"}]}]})";
constexpr const char* kReviewedOriginal = R"({"generation": 2024, "classes": [{"internal_name": "Part", "properties": [
  {"internal_name": "Code", "type": "string", "length": 32}]}]})";

/// An upgrade directory of these metamodels, for the command "review".
class CReviewedUpgrade : public testing::Test {
 protected:
  CReviewedUpgrade() {
    upgrade_.Write("installation.json", kReviewedClient);
    upgrade_.Write("2024/metamodel.json", kReviewedOriginal);
  }

  SProcessResult Review(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), "review");
    options.push_back(upgrade_.Path());
    return RunTool(options);
  }
  std::string Trouble(const std::vector<std::string>& options) const { return TroubleOf(Review(options)); }
  /// "FORMAT=FILE" below the directory.
  std::string Into(const std::string& format, const std::string& file) const {
    return format + "=" + upgrade_.File(file);
  }
  std::string Output(const std::string& file) const { return ReadFile(upgrade_.File(file)); }

  CUpgradeDirectory upgrade_;
};

}  // namespace test
