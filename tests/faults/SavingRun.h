#pragma once

#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace test {

/// What is where a run saves its document: an earlier document, nothing, or a symbolic link to an earlier document
/// in another directory.
enum class ETarget { kFile, kNothing, kLink };

/// For names of tests.
std::string NameOf(ETarget target);

/// What a run has left.
struct SOutcome {
  SProcessResult process;
  /// Whether any of the faults asked for has happened.
  bool faulted = false;
  /// "earlier", "new", or anything else that is there.
  std::string document;
  /// What lies beside the document that did not before.
  std::vector<std::string> strays;
};

/// Runs of the tool that save a document of several writes, one after the other, each on the target as it was at first.
class CSavingRun {
 public:
  explicit CSavingRun(ETarget target);

  /// The faults, as the preloaded library reads them; none for "".
  SOutcome Run(const std::string& faults);
  /// A run by a command in which "$0" is the executable and "$1" the upgrade directory.
  SOutcome RunInShell(const std::string& command);
  /// A run without faults on what the last one has left.
  SOutcome RunAgain() { return Outcome(upgrade_.Run()); }

  const CUpgradeDirectory& Directory() const { return upgrade_; }
  /// What a whole run prints.
  const std::string& Report() const { return report_; }

 private:
  void Reset();
  SOutcome Outcome(const SProcessResult& process) const;
  std::string Document() const;

  CUpgradeDirectory upgrade_;
  ETarget target_;
  std::string path_;
  /// Where the bytes are: path_, or what the link leads to.
  std::string file_;
  std::vector<std::string> names_;
  std::string report_;
  std::string newDocument_;
};

/// Fails the test unless the outcome of a run that ended by itself is truthful: the document is the earlier or the new
/// one, status 1 means the new one and status 2 one error that says which it is; nothing lies beside it.
void ExpectTruth(const SOutcome& outcome, const std::string& report);

}  // namespace test
