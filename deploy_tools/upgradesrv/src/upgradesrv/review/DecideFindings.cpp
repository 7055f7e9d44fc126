#include "upgradesrv/review/DecideFindings.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptfile/FileDescriptor.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

/// Held while a decisions file is read and replaced: the lock of its directory, since the file itself is replaced.
class CDecisionsLock {
 public:
  explicit CDecisionsLock(const std::string& file) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::weakly_canonical(file, error);
    const std::string directory = error ? "." : target.parent_path().string();
    directory_ = kvx::CFileDescriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    int problem = directory_.IsOpen() ? 0 : errno;
    while (problem == 0 && flock(directory_.Get(), LOCK_EX) != 0) {
      problem = errno == EINTR ? 0 : errno;
    }
    if (problem != 0) {
      throw CTrouble(directory + ": cannot be locked: " + std::strerror(problem) + "; nothing was changed");
    }
  }

 private:
  kvx::CFileDescriptor directory_;
};

std::string Count(std::size_t number) {
  return std::to_string(number) + (number == 1 ? " entry" : " entries");
}

}  // namespace

EExitStatus DecideFindings(const SDecideArguments& arguments) {
  if (!arguments.isPrune && arguments.paths.empty()) {
    throw CTrouble("decide: no path is given; copy one from the review, for example class/Part/property/Code/length");
  }
  if (arguments.isPrune && !arguments.paths.empty()) {
    throw CTrouble("decide --prune: takes no path; it drops every entry that matches nothing");
  }
  const CReviewSources sources(arguments.sources);
  metareview::SReview review = sources.Compare({metareview::kKinds.begin(), metareview::kKinds.end()});

  const std::string& file = sources.GetDecisionsFile();
  const CDecisionsLock lock(file);
  metareview::SDecisions decisions = sources.ReadDecisions();
  const std::size_t before = decisions.accepted.size();
  SetRuleRisks(decisions, review);
  ApplyDecisions(decisions, sources.GetToday(), review);
  decisions = arguments.isPrune ? Prune(decisions, review)
                                : Decide(decisions, review, arguments.paths, arguments.acceptance, sources.GetToday());
  const std::string text = FormatDecisions(decisions);
  kvx::CAtomicFile output(file);
  output.Write(text.data(), text.size());
  output.Commit();
  WriteNote(file + ": " +
            (arguments.isPrune ? Count(before - decisions.accepted.size()) + " dropped"
                               : Count(arguments.paths.size()) + " written"));
  return kNothingToReport;
}

}  // namespace upgradesrv
