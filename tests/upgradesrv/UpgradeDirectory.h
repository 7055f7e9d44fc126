#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryDirectory.h"

namespace test {

/// Runs the executable.
SProcessResult RunTool(const std::vector<std::string>& arguments, const std::string& workingDirectory = "");
/// Runs a shell command in which "$0" is the executable and "$1" the argument.
SProcessResult RunInShell(const std::string& command, const std::string& argument);

/// What comes after "upgradesrv: error: ". Fails the test unless the exit status is 2 and there is exactly one such
/// line.
std::string ErrorOf(const SProcessResult& result);
/// The same, and nothing may be on standard output.
std::string TroubleOf(const SProcessResult& result);

/// `text` with every `from` replaced.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// The members of upgrade.json with some of them changed: each change is a name and a value as JSON text; without text
/// the member is left out. Names that the file does not have are added at its end.
using UpgradeChanges = std::vector<std::pair<std::string, std::string>>;

/// A complete upgrade configuration directory, in which an earlier checkMetaError.json lies. One element of each kind,
/// and one more in the original than in the client: class Document, link Uses, behavior Approvable.
class CUpgradeDirectory {
 public:
  CUpgradeDirectory();

  const std::string& Path() const { return directory_.Path(); }
  std::string File(const std::string& name) const { return directory_.File(name); }
  std::string Write(const std::string& name, const std::string& content) const {
    return directory_.Write(name, content);
  }

  void WriteUpgrade(const UpgradeChanges& changes) const;
  /// One strategy of the module "strangers".
  void UseStranger(const std::string& className) const;

  SProcessResult Run(std::vector<std::string> options = {}) const;
  /// The same with the test modules.
  SProcessResult RunTestModules() const;
  /// What Run complains of; fails the test unless the run bears every mark of trouble and has left the earlier document
  /// alone.
  std::string Trouble(const std::vector<std::string>& options = {}) const;
  std::string TroubleWithTestModules() const;

  std::string Document() const { return ReadFile(File("2024/checkMetaError.json")); }
  bool HasEarlierDocument() const;
  /// What a run notes before its strategies.
  std::string Notes(const std::string& client = "installation.json") const;
  /// What a run notes after the check, which has had this outcome.
  std::string CheckNotes(const std::string& outcome) const;

 private:
  CTemporaryDirectory directory_;
};

/// What a run reports in English, by kind and as a whole.
inline const std::string kBehaviorReport = "\nDeleted behavior:\n name:Approvable,shown as:Approvable\n\n";
inline const std::string kClassReport = "\nDeleted class:\n name:Document,shown as:Document\n\n";
inline const std::string kLinkReport = "\nDeleted link:\n name:Uses,shown as:Uses\n\n";
inline const std::string kFullReport = kBehaviorReport + kClassReport + kLinkReport;

}  // namespace test
