#include "kvxsptfile/CanonicalPath.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;

class CanonicalPathTest : public testing::Test {
 protected:
  test::CTemporaryDirectory directory_;
};

TEST_F(CanonicalPathTest, OfABareNameThatIsNotThereYetIsInTheCurrentDirectory) {
  const std::string here = fs::canonical(fs::current_path()).string();
  EXPECT_EQ(kvx::CanonicalPath("absent.json"), here + "/absent.json");
  EXPECT_EQ(kvx::CanonicalPath("./absent.json"), here + "/absent.json");
  EXPECT_EQ(kvx::CanonicalPath("absent/../a.json"), here + "/a.json");
}

TEST_F(CanonicalPathTest, FollowsLinksToWhatIsNotThereYet) {
  const std::string target = directory_.File("target");
  fs::create_symlink("target", directory_.File("link"));
  EXPECT_EQ(kvx::CanonicalPath(directory_.File("link")), kvx::CanonicalPath(target));
  EXPECT_TRUE(kvx::IsSameFile(directory_.File("link"), target));
}

TEST_F(CanonicalPathTest, AFileIsTheSameByEveryName) {
  const std::string file = directory_.Write("file", "x");
  fs::create_hard_link(file, directory_.File("hard"));
  fs::create_symlink(file, directory_.File("soft"));
  EXPECT_TRUE(kvx::IsSameFile(file, directory_.File("hard")));
  EXPECT_TRUE(kvx::IsSameFile(file, directory_.File("soft")));
  EXPECT_TRUE(kvx::IsSameFile("absent.json", "./absent.json"));
  EXPECT_FALSE(kvx::IsSameFile("absent.json", "other.json"));
  EXPECT_FALSE(kvx::IsSameFile(file, directory_.File("absent")));
}

}  // namespace
