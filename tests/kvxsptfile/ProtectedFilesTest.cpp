#include "kvxsptfile/ProtectedFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/TemporaryFile.h"
#include "support/Error.h"
#include "support/TemporaryDirectory.h"

namespace {

namespace fs = std::filesystem;
using kvx::CProtectedFiles;
using test::SError;

class ProtectedFilesTest : public testing::Test {
 protected:
  static SError Save(const std::string& path) {
    return test::ErrorOf([&] { kvx::CTemporaryFile(path).Commit(); });
  }
  SError Refusal(const std::string& path) const {
    return {kvx::kFileError,
            path + ": cannot be saved: it is the same file as " + input_ + ", which is read here; nothing was changed"};
  }

  test::CTemporaryDirectory directory_;
  std::string input_ = directory_.Write("input", "content");
};

TEST_F(ProtectedFilesTest, AreNotReplacedByAnyName) {
  const std::string link = directory_.File("link");
  const std::string chain = directory_.File("chain");
  const std::string second = directory_.File("second");
  fs::create_symlink("input", link);
  fs::create_symlink("link", chain);
  fs::create_hard_link(input_, second);
  const CProtectedFiles files({input_});
  for (const std::string& path : {input_, link, chain, second, directory_.File("./input")}) {
    EXPECT_EQ(Save(path), Refusal(path));
    EXPECT_EQ(test::ReadFile(input_), "content");
  }
}

TEST_F(ProtectedFilesTest, GivenByALinkAreNotReplacedByTheirName) {
  const std::string link = directory_.File("link");
  fs::create_symlink("input", link);
  const CProtectedFiles files({link});
  EXPECT_EQ(Save(input_).message,
            input_ + ": cannot be saved: it is the same file as " + link + ", which is read here; nothing was changed");
}

TEST_F(ProtectedFilesTest, LeaveOtherFilesAlone) {
  const CProtectedFiles files({input_, directory_.File("absent")});
  EXPECT_EQ(Save(directory_.File("other")).code, 0U);
  EXPECT_EQ(CProtectedFiles::Find(directory_.File("other")), "");
  EXPECT_EQ(CProtectedFiles::Find(directory_.File("absent")), "");
}

TEST_F(ProtectedFilesTest, ThatComeLaterAreProtectedFromThenOn) {
  const CProtectedFiles files({directory_.File("later")});
  directory_.Write("later", "");
  EXPECT_EQ(CProtectedFiles::Find(directory_.File("later")), directory_.File("later"));
}

TEST_F(ProtectedFilesTest, AreProtectedUntilTheLastWhoWantsItIsGone) {
  {
    const CProtectedFiles outer({input_});
    { const CProtectedFiles inner({input_}); }
    EXPECT_EQ(Save(input_), Refusal(input_));
  }
  EXPECT_EQ(Save(input_).code, 0U);
  EXPECT_EQ(test::ReadFile(input_), "");
}

}  // namespace
