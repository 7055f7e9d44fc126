// Memory runs out at some point of a command: the command then does all it is to do or says that it cannot, and leaves
// nothing half done.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "faults/ShortRun.h"

namespace {

using test::EShortCall;

struct SCommand {
  const char* name;
  /// "$1" is the upgrade directory.
  std::vector<std::string> arguments;
  /// How many of its allocations are made to fail.
  unsigned long most;
};

void PrintTo(const SCommand& command, std::ostream* output) {
  *output << command.name;
}

constexpr unsigned long kAll = std::numeric_limits<unsigned long>::max();

/// UPGRADESRV_EVERY_ALLOCATION in the environment asks for all.
unsigned long MostRuns(unsigned long usual) {
  return std::getenv("UPGRADESRV_EVERY_ALLOCATION") != nullptr ? kAll : usual;
}

const std::vector<SCommand>& Commands() {
  static const std::vector<SCommand> commands = {
      {"Run", {"run", "$1"}, kAll},
      {"RunOnDatabases", {"run", "--client", "$1/client.db", "--original", "$1/original.db", "$1"}, 150},
      {"Review", {"review", "$1"}, 150},
      {"CopyToNewDocument", {"metamodel", "copy", "$1/installation.json", "$1/copy.json"}, kAll},
      {"CopyOverDocument", {"metamodel", "copy", "--replace", "$1/installation.json", "$1/earlier.json"}, kAll},
      {"CopyToNewDatabase", {"metamodel", "copy", "$1/installation.json", "$1/copy.db"}, 150},
      {"CopyOverDatabase", {"metamodel", "copy", "--replace", "$1/installation.json", "$1/original.db"}, 150},
      {"ShowDocument", {"metamodel", "show", "$1/installation.json"}, kAll},
      {"CheckDocument", {"metamodel", "check", "$1/installation.json"}, kAll},
      {"ShowDatabaseAsJson", {"metamodel", "show", "--format", "json", "$1/client.db"}, 150},
  };
  return commands;
}

/// One element of each kind, with the members of all; `word` is in some texts, with and without escapes.
std::string SmallMetamodel(const std::string& word) {
  const std::string property = R"({"internal_name": "State", "display_name": "Zustand \u00e4 )" + word +
                               R"(", "field": "STATE", "type": "string", "length": 40})";
  return R"({"generation": 2024, "classes": [{"internal_name": "Part", "display_name": "Part )" + word +
         R"(", "behaviors": ["Versioned", "A behavior of )" + word + R"("], "properties": [)" + property +
         R"(]}], "links": [{"internal_name": "Refers", "properties": [)" + property +
         R"(]}], "behaviors": [{"internal_name": "Versioned", "methods": [{"internal_name": "Freeze )" + word +
         R"("}], "properties": [)" + property + "]}]}";
}

/// A metamodel of some hundred kilobytes.
std::string LargeMetamodel(const std::string& word) {
  std::string text = R"({"generation": 2024, "classes": [)";
  for (int i = 0; i < 60; ++i) {
    text += (i == 0 ? "" : ", ") + (R"({"internal_name": "Class)" + std::to_string(i)) + R"(", "properties": [)";
    for (int j = 0; j < 40; ++j) {
      text += (j == 0 ? "" : ", ") + (R"({"internal_name": "Property)" + std::to_string(j)) +
              R"(", "display_name": "Eine l\u00e4ngere Bezeichnung)" + word + R"(", "field": "F_)" + std::to_string(j) +
              R"(", "type": "string"})";
    }
    text += "]}";
  }
  return text + "]}";
}

class CShortOfMemoryTest : public testing::TestWithParam<SCommand> {
 protected:
  void Prepare(const std::string& client, const std::string& original) const {
    upgrade_.Write("installation.json", client);
    upgrade_.Write("2024/metamodel.json", original);
    PrepareTargets();
  }

  void PrepareExample() const {
    std::filesystem::copy(UPGRADESRV_EXAMPLE_DIR, upgrade_.Path(),
                          std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
    PrepareTargets();
  }

  std::vector<std::string> Arguments() const {
    std::vector<std::string> arguments;
    for (const std::string& argument : GetParam().arguments) {
      arguments.push_back(test::Replaced(argument, "$1", upgrade_.Path()));
    }
    return arguments;
  }

  test::CUpgradeDirectory upgrade_;

 private:
  /// The metamodels as databases, and what is replaced.
  void PrepareTargets() const {
    Copy("installation.json", "client.db");
    Copy("2024/metamodel.json", "original.db");
    upgrade_.Write("earlier.json", "{}");
  }

  void Copy(const std::string& from, const std::string& to) const {
    const test::SProcessResult copy = test::RunTool({"metamodel", "copy", upgrade_.File(from), upgrade_.File(to)});
    ASSERT_EQ(copy.status, 0) << copy.errors;
  }
};

/// Tries those of the calls that come after `first`, or as many of them as `most`, one run each.
void FailInTurn(test::CShortRun& run, unsigned long first, std::size_t size, unsigned long most) {
  const unsigned long calls = run.CountCalls(EShortCall::kAllocate, size);
  const unsigned long stride = std::max(1UL, (calls - first) / most);
  for (const bool onwards : {false, true}) {
    for (unsigned long i = first + 1; i <= calls && !testing::Test::HasFailure(); i += stride) {
      EXPECT_TRUE(run.Run({EShortCall::kAllocate, i, onwards, size, 0}).failed || i + stride > calls);
    }
  }
}

TEST_P(CShortOfMemoryTest, AnyAllocationFails) {
  Prepare(SmallMetamodel("new"), SmallMetamodel("old"));
  // Up to here all commands do the same, but for the last calls, with which this one looks for modules.
  constexpr unsigned long kLookingForModules = 50;
  test::CShortRun version(upgrade_.Path(), {"--version"});
  test::CShortRun run(upgrade_.Path(), Arguments());
  FailInTurn(run, version.CountCalls(EShortCall::kAllocate, 0) - kLookingForModules, 0, MostRuns(GetParam().most));
}

TEST_P(CShortOfMemoryTest, AnyAllocationOfALargeMetamodelFails) {
  Prepare(LargeMetamodel("new"), LargeMetamodel("old"));
  test::CShortRun run(upgrade_.Path(), Arguments());
  FailInTurn(run, 0, 0, 20);
  FailInTurn(run, 0, 64 * 1024, kAll);
}

TEST_P(CShortOfMemoryTest, AnyAllocationOfTheExampleFails) {
  PrepareExample();
  test::CShortRun run(upgrade_.Path(), Arguments());
  FailInTurn(run, 0, 0, MostRuns(50));
}

TEST_P(CShortOfMemoryTest, AddressesRunOut) {
  Prepare(LargeMetamodel("new"), LargeMetamodel("old"));
  test::CShortRun run(upgrade_.Path(), Arguments());
  constexpr std::size_t kMegabyte = 1024 * 1024;
  std::size_t addresses = run.CountAddresses();
  int impossible = 0;
  // Some more: a limit that leaves other gaps can be worse than a lower one.
  for (int possible = 0; possible < 3 && !HasFailure(); addresses += kMegabyte) {
    ++(run.IsWhole(run.Run({EShortCall::kNone, 0, false, 0, addresses})) ? possible : impossible);
    ASSERT_LT(impossible, 1000);
  }
  // The allocator has a few megabytes before main, which is all that showing and checking take.
  const std::string& command = GetParam().arguments[1];
  EXPECT_TRUE(impossible > 0 || command == "show" || command == "check");
}

TEST(ShortOfMemoryTest, AllocationsOfLibrariesBeforeMainFail) {
  for (const std::string onwards : {"", "+"}) {
    for (int i = 1; i < 1400; i += 70) {
      const test::SProcessResult result = test::RunInShell(
          "LD_PRELOAD='" UPGRADESRV_SHORTAGE_PRELOAD "' UPGRADESRV_SHORTAGE=allocate:" + std::to_string(i) + onwards +
              ":0 exec \"$0\" --version",
          "");
      EXPECT_TRUE(result.status == 0 || test::ErrorOf(result) == "out of memory") << i << onwards;
    }
  }
}

TEST(ShortOfMemoryTest, AnyAllocationOnTheWayToACommandFails) {
  const test::CUpgradeDirectory upgrade;
  test::CShortRun run(upgrade.Path(), {"--version"});
  FailInTurn(run, 0, 0, kAll);
}

INSTANTIATE_TEST_SUITE_P(Commands, CShortOfMemoryTest, testing::ValuesIn(Commands()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
