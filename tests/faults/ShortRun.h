#pragma once

#include <sys/types.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "faults/Shortage.h"
#include "support/TemporaryDirectory.h"
#include "upgradesrv/UpgradeDirectory.h"

namespace test {

/// A command of the tool that is run again and again while it is short of something, each time on the same files. The
/// executable is loaded once, and copied before main for each run.
class CShortRun {
 public:
  /// The command works on files in the directory alone. Runs it once with all that it needs.
  CShortRun(std::string directory, const std::vector<std::string>& arguments);
  ~CShortRun();
  CShortRun(const CShortRun&) = delete;
  CShortRun& operator=(const CShortRun&) = delete;

  /// Runs it. Fails the test unless it does all that it does with all it needs, or says why not and leaves everything
  /// as it was. Answers with how it ended.
  SShortAnswer Run(const SShortage& shortage);
  /// Whether an answer is that of a run that did everything.
  bool IsWhole(const SShortAnswer& answer) const { return answer.status == wholeStatus_; }
  /// How many calls a run makes that has all it needs.
  unsigned long CountCalls(EShortCall call, std::size_t size);
  /// How many bytes of addresses it has before main.
  std::size_t CountAddresses() const;

 private:
  using Files = std::map<std::string, std::string>;

  SShortAnswer Ask(const SShortage& shortage);
  Files ReadFiles() const;
  void Reset(const Files& files) const;
  SProcessResult Result(const SShortAnswer& answer) const;

  std::string directory_;
  CTemporaryDirectory streams_;
  std::string output_;
  std::string errors_;
  pid_t server_ = -1;
  int requests_ = -1;
  int answers_ = -1;
  Files before_;
  Files after_;
  std::string report_;
  int wholeStatus_ = 0;
};

}  // namespace test
