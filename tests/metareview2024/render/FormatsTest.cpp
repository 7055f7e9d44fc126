#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/render/RenderedReview.h"

namespace metareview {
namespace {

TEST(FormatsTest, FindsAFormatByItsName) {
  for (const SFormat& format : Formats()) {
    EXPECT_EQ(FindFormat(format.name), &format);
  }
}

TEST(FormatsTest, KnowsNoOther) {
  EXPECT_EQ(FindFormat("xml"), nullptr);
  EXPECT_EQ(FindFormat("JSON"), nullptr);
  EXPECT_EQ(FindFormat(""), nullptr);
}

/// The default is the first; messages name all of them in this order.
TEST(FormatsTest, HasThemInTheOrderOfTheManual) {
  std::string names;
  for (const SFormat& format : Formats()) {
    names.append(names.empty() ? "" : ", ").append(format.name);
  }
  EXPECT_EQ(names, "text, json, ndjson, csv, markdown, html, junit, sarif, sql");
}

TEST(FormatsTest, EveryFormatSaysThatAReviewFailedAndWhy) {
  SReview failed = test::FullReview();
  failed.complete = false;
  failed.problem = "client.json: cannot be read";
  for (const SFormat& format : Formats()) {
    const std::string text = test::Rendered(std::string(format.name), failed);
    EXPECT_THAT(text, testing::HasSubstr("client.json: cannot be read")) << format.name;
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("class/Part"))) << format.name;
  }
}

TEST(FormatsTest, EveryFormatSaysTheReasonOfAnAcceptedFinding) {
  for (const SFormat& format : Formats()) {
    if (format.name == "sql") {
      // A script is no report.
      continue;
    }
    EXPECT_THAT(test::Rendered(std::string(format.name), test::FullReview()), testing::HasSubstr("ours"))
        << format.name;
  }
}

TEST(FormatsTest, OutputsDoNotDependOnWhatWasWrittenBefore) {
  for (const SFormat& format : Formats()) {
    const std::string name(format.name);
    EXPECT_EQ(test::Rendered(name, test::FullReview()), test::Rendered(name, test::FullReview())) << name;
  }
}

TEST(FormatsTest, LargeOutputsComeInParts) {
  SReview review = test::MadeReview({});
  for (int i = 0; i < 2000; ++i) {
    review.findings.push_back(test::Made("class/Own" + std::to_string(i), EChange::kInserted, "class-inserted"));
  }
  for (const char* format : {"json", "ndjson", "csv", "junit", "sarif"}) {
    std::size_t largest = 0;
    std::size_t size = 0;
    FindFormat(format)->write(review, {}, [&](std::string_view part) {
      largest = std::max(largest, part.size());
      size += part.size();
    });
    EXPECT_LT(largest, 70000U) << format;
    EXPECT_GT(size, 200000U) << format;
    EXPECT_EQ(size, test::Rendered(format, review).size()) << format;
  }
}

}  // namespace
}  // namespace metareview
