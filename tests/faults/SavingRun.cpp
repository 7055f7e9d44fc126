#include "faults/SavingRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kEarlier = "the earlier document\n";

/// Enough deleted classes for a document of several writes, and a deleted link.
std::string ManyClasses() {
  std::string text = R"({"generation": 2024, "classes": [)";
  for (int i = 0; i < 2000; ++i) {
    text += (i == 0 ? "" : ", ") + (R"({"internal_name": "Class)" + std::to_string(i)) + R"("})";
  }
  return text + R"(], "links": [{"internal_name": "Link"}]})";
}

std::vector<std::string> NamesBelow(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(directory)) {
    names.push_back(fs::relative(entry.path(), directory));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

std::string NameOf(ETarget target) {
  switch (target) {
    case ETarget::kFile:
      return "OverAFile";
    case ETarget::kNothing:
      return "OfANewFile";
    default:
      return "ThroughALink";
  }
}

CSavingRun::CSavingRun(ETarget target)
    : target_(target), path_(upgrade_.File("2024/checkMetaError.json")), file_(path_) {
  upgrade_.Write("2024/metamodel.json", ManyClasses());
  if (target == ETarget::kLink) {
    file_ = upgrade_.Write("stored/document.json", "");
  }
  Reset();
  names_ = NamesBelow(upgrade_.Path());
  const SProcessResult process = upgrade_.Run();
  EXPECT_EQ(process.status, 1) << process.errors;
  report_ = process.output;
  newDocument_ = ReadFile(file_);
  EXPECT_GT(newDocument_.size(), 150000U);
}

void CSavingRun::Reset() {
  fs::remove(path_);
  if (target_ == ETarget::kLink) {
    fs::create_symlink("../stored/document.json", path_);
  }
  if (target_ != ETarget::kNothing) {
    upgrade_.Write(fs::relative(file_, upgrade_.Path()), kEarlier);
  }
}

SOutcome CSavingRun::Run(const std::string& faults) {
  const CTemporaryDirectory elsewhere;
  const std::string report = elsewhere.File("report");
  SOutcome outcome = RunInShell("LD_PRELOAD='" UPGRADESRV_FAULT_PRELOAD "' UPGRADESRV_FAULTS='" + faults +
                                "' UPGRADESRV_FAULT_REPORT='" + report + "' exec \"$0\" run \"$1\"");
  outcome.faulted = fs::exists(report);
  return outcome;
}

SOutcome CSavingRun::RunInShell(const std::string& command) {
  Reset();
  return Outcome(test::RunInShell(command, upgrade_.Path()));
}

SOutcome CSavingRun::Outcome(const SProcessResult& process) const {
  SOutcome outcome;
  outcome.process = process;
  outcome.document = Document();
  const std::vector<std::string> names = NamesBelow(upgrade_.Path());
  std::set_difference(names.begin(), names.end(), names_.begin(), names_.end(), std::back_inserter(outcome.strays));
  const auto isDocument = [](const std::string& name) { return name == "2024/checkMetaError.json"; };
  outcome.strays.erase(std::remove_if(outcome.strays.begin(), outcome.strays.end(), isDocument), outcome.strays.end());
  return outcome;
}

std::string CSavingRun::Document() const {
  if (fs::is_symlink(path_) != (target_ == ETarget::kLink)) {
    return "no link any more";
  }
  if (!fs::exists(file_)) {
    return target_ == ETarget::kNothing ? "earlier" : "gone";
  }
  const std::string content = ReadFile(file_);
  if (content == newDocument_) {
    return "new";
  }
  return content == kEarlier && target_ != ETarget::kNothing ? "earlier" : "torn: " + content.substr(0, 100);
}

void ExpectTruth(const SOutcome& outcome, const std::string& report) {
  EXPECT_THAT(outcome.document, AnyOf("earlier", "new"));
  EXPECT_THAT(outcome.strays, IsEmpty());
  if (outcome.process.status == 1) {
    EXPECT_EQ(outcome.document, "new");
    EXPECT_TRUE(outcome.process.output == report);
    return;
  }
  const std::string error = TroubleOf(outcome.process);
  if (outcome.document == "new") {
    EXPECT_THAT(error, testing::Not(HasSubstr("nothing was changed")));
  } else {
    EXPECT_THAT(error, testing::Not(HasSubstr("was replaced")));
  }
}

}  // namespace test
