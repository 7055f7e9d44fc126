// What the README shows of the example is what the tool says of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "support/TemporaryDirectory.h"
#include "support/TestStorage.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace {

const std::string kExample = UPGRADESRV_SOURCE_DIR "/examples/upgrade";

/// How many lines the README shows below the command, all of which are to be lines of what the tool says.
int LinesShown(const std::string& command, const std::string& said) {
  const std::string readme = test::ReadFile(UPGRADESRV_SOURCE_DIR "/README.md");
  const std::string above = "\n    " + command + "\n\n";
  const std::size_t place = readme.find(above);
  EXPECT_NE(place, std::string::npos) << command;
  if (place == std::string::npos) {
    return 0;
  }
  const std::size_t begin = place + above.size();
  std::istringstream section(readme.substr(begin, readme.find("\n\n", begin) - begin));
  int lines = 0;
  for (std::string line; std::getline(section, line);) {
    line.erase(0, std::string("    ").size());
    if (line != "…") {
      ++lines;
      EXPECT_THAT("\n" + said, testing::HasSubstr("\n" + line + "\n"));
    }
  }
  return lines;
}

TEST(ReadmeTest, ShowsTenLinesOfTheReviewOfTheExample) {
  const test::CTemporaryDirectory directory;
  const std::string database = directory.File("data.db");
  ASSERT_EQ(test::Run({"/bin/sh", "-c", "'" SQLITE3 "' \"$0\" < \"$1\"", database, kExample + "/data.sql"}).status, 0);
  EXPECT_EQ(LinesShown("upgradesrv review --data build/example/data.db examples/upgrade",
                       test::RunTool({"review", "--today", "2026-11-22", "--data", database, kExample}).output),
            10);
}

TEST(ReadmeTest, ShowsTheChecksReportOfTheExample) {
  const test::CTemporaryDirectory directory;
  const std::string copy = directory.File("upgrade");
  std::filesystem::copy(kExample, copy, std::filesystem::copy_options::recursive);
  EXPECT_EQ(LinesShown("upgradesrv run examples/upgrade", test::RunTool({"run", copy}).output), 4);
}

}  // namespace
