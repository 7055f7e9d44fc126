// Inputs are regular files; metamodel documents may be pipes. Whatever else is in their place, the tool never waits for
// it endlessly.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "UpgradeDirectory.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// What may be in the place of a file, and how messages call it.
struct SNoFile {
  const char* name;
  const char* word;
  std::function<bool(const std::string& path)> make;
};

void PrintTo(const SNoFile& noFile, std::ostream* output) {
  *output << noFile.name;
}

const std::vector<SNoFile>& NoFiles() {
  static const std::vector<SNoFile> noFiles = {
      {"Pipe", "a pipe", [](const std::string& path) { return mkfifo(path.c_str(), 0600) == 0; }},
      {"Directory", "a directory", [](const std::string& path) { return fs::create_directory(path); }},
      {"Device", "a device",
       [](const std::string& path) {
         fs::create_symlink("/dev/zero", path);
         return true;
       }},
  };
  return noFiles;
}

class InputFilesTest : public testing::TestWithParam<SNoFile> {
 protected:
  std::string PutInPlaceOf(const std::string& name) const {
    const std::string path = upgrade_.File(name);
    fs::remove(path);
    fs::create_directories(fs::path(path).parent_path());
    EXPECT_TRUE(GetParam().make(path)) << path;
    return path;
  }

  static std::string Refusal(const std::string& path) {
    return path + ": cannot be read: is " + GetParam().word + ", not a regular file";
  }

  test::CUpgradeDirectory upgrade_;
};

TEST_P(InputFilesTest, IsRefusedInPlaceOfTheConfiguration) {
  const std::string path = PutInPlaceOf("upgrade.json");
  EXPECT_EQ(upgrade_.Trouble(), Refusal(path));
}

TEST_P(InputFilesTest, IsRefusedInPlaceOfTheDisplayTexts) {
  const std::string path = PutInPlaceOf("multilanguage/strings/info.json");
  EXPECT_THAT(test::TroubleOf(upgrade_.Run()), HasSubstr(Refusal(path)));
}

TEST_P(InputFilesTest, IsRefusedInPlaceOfTheLogConfiguration) {
  const std::string path = PutInPlaceOf("log4cplus.properties");
  EXPECT_EQ(upgrade_.Trouble(), Refusal(path));
}

TEST_P(InputFilesTest, IsRefusedInPlaceOfAModule) {
  const std::string path = PutInPlaceOf("modules/libcheckmeta2024.so");
  EXPECT_EQ(upgrade_.Trouble({"--module-dir", upgrade_.File("modules")}),
            upgrade_.File("upgrade.json") + ": /strategies/0/module: the module cannot be loaded: " + Refusal(path));
}

TEST_P(InputFilesTest, IsRefusedInPlaceOfASqliteDatabase) {
  const std::string path = PutInPlaceOf("client.db");
  EXPECT_THAT(upgrade_.Trouble({"--client", path}), HasSubstr("not a regular file"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, InputFilesTest, testing::ValuesIn(NoFiles()),
                         [](const auto& test) { return test.param.name; });

class InputDocumentTest : public testing::Test {
 protected:
  test::CUpgradeDirectory upgrade_;
};

TEST_F(InputDocumentTest, ThatIsADirectoryOrDeviceIsRefused) {
  const std::string directory = upgrade_.File("directory.json");
  fs::create_directory(directory);
  const std::string device = upgrade_.File("device.json");
  fs::create_symlink("/dev/zero", device);
  EXPECT_THAT(upgrade_.Trouble({"--client", directory}),
              HasSubstr(": cannot be read: is a directory, not a regular file or a pipe"));
  EXPECT_THAT(upgrade_.Trouble({"--client", device}),
              HasSubstr(": cannot be read: is a device, not a regular file or a pipe"));
}

TEST_F(InputDocumentTest, MayBeAPipe) {
  const test::SProcessResult result = test::RunInShell(
      R"(mkfifo "$1/pipe.json"; cat "$1/installation.json" > "$1/pipe.json" & exec "$0" run --client "$1/pipe.json" "$1")",
      upgrade_.Path());
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(InputDocumentTest, MayBeAProcessSubstitution) {
  const test::SProcessResult result =
      test::Run({"/bin/bash", "-c",
                 R"("$0" run --client <(cat "$1/installation.json") --original <(cat "$1/2024/metamodel.json") "$1")",
                 UPGRADESRV_EXECUTABLE, upgrade_.Path()});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(result.output, test::kFullReport);
}

TEST_F(InputDocumentTest, ThatIsAPipeWithoutAWriterIsGivenUp) {
  const std::string path = upgrade_.File("pipe.json");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_THAT(upgrade_.Trouble({"--client", path}),
              HasSubstr(path + ": cannot be read: no program has opened this pipe for writing within 10 seconds"));
}

}  // namespace
