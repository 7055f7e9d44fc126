#include "upgradesrv/review/DecideFindings.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptfile/CanonicalPath.h"
#include "kvxsptfile/FileDescriptor.h"
#include "metareview2024/words/NoteSentence.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/OutputName.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/review/ReviewLanguage.h"

namespace upgradesrv {
namespace {

/// Held while a decisions file is read and replaced: the lock of its directory, since the file itself is replaced.
class CDecisionsLock {
 public:
  explicit CDecisionsLock(const std::string& file) {
    const std::string directory = std::filesystem::path(kvx::CanonicalPath(file)).parent_path().string();
    directory_ = kvx::CFileDescriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    int problem = directory_.IsOpen() ? 0 : errno;
    if (problem != 0) {
      throw CTrouble(file + ": cannot be saved: " + std::strerror(problem) + "; nothing was changed");
    }
    problem = Lock(LOCK_EX | LOCK_NB);
    if (problem == EWOULDBLOCK) {
      WriteNote(directory + ": another decide is at work there; waiting for it to end");
      problem = Lock(LOCK_EX);
    }
    if (problem != 0) {
      throw CTrouble(directory + ": cannot be locked: " + std::strerror(problem) + "; nothing was changed");
    }
  }

 private:
  /// Why it is not locked; 0 when it is.
  int Lock(int operation) const {
    int problem = EINTR;
    while (problem == EINTR) {
      problem = flock(directory_.Get(), operation) == 0 ? 0 : errno;
    }
    return problem;
  }

  kvx::CFileDescriptor directory_;
};

/// How many entries are new or others than before; each entry of before keeps its place.
std::size_t CountNew(const metareview::SDecisions& before, const metareview::SDecisions& after) {
  std::size_t count = after.accepted.size() - before.accepted.size();
  for (std::size_t i = 0; i < before.accepted.size(); ++i) {
    count += after.accepted[i] == before.accepted[i] ? 0 : 1;
  }
  return count;
}

void Replace(const std::string& file, const metareview::SDecisions& decisions) {
  const std::string text = FormatDecisions(decisions);
  kvx::CAtomicFile output(file);
  output.Write(text.data(), text.size());
  output.Commit();
}

void RequireNone(bool isGiven, const std::string& what) {
  if (isGiven) {
    throw CTrouble("decide --prune: takes no " + what + "; it drops every entry that matches nothing");
  }
}

/// What is known before anything is loaded.
void RequireUse(const SDecideArguments& arguments) {
  if (arguments.isPrune) {
    RequireNone(!arguments.paths.empty(), "path");
    RequireNone(!arguments.acceptance.reason.empty(), "--reason");
    RequireNone(arguments.acceptance.by.has_value(), "--by");
    RequireNone(arguments.acceptance.until.has_value(), "--until");
    return;
  }
  if (arguments.paths.empty()) {
    throw CTrouble("decide: no path is given; copy one from the review, for example class/Part/property/Code/length");
  }
  if (arguments.acceptance.reason.empty()) {
    throw CTrouble("decide: no reason is given; say with --reason why it is accepted");
  }
}

}  // namespace

EExitStatus DecideFindings(const SDecideArguments& arguments) {
  RequireUse(arguments);
  const std::string problem = OutputNameProblem(arguments.sources.decisions.value_or(""), "file");
  if (!problem.empty()) {
    throw CTrouble("--decisions -: " + problem);
  }
  const CReviewSources sources(arguments.sources);
  metareview::SReview review = sources.Compare({metareview::kKinds.begin(), metareview::kKinds.end()}).review;

  const std::string& file = sources.GetDecisionsFile();
  const CDecisionsLock lock(file);
  const metareview::SDecisions before = arguments.isPrune ? sources.ReadDecisions() : sources.ReadDecisionsSoFar();
  SetRuleRisks(before, review);
  ApplyDecisions(before, sources.GetToday(), review);
  const metareview::CWords& words = WordsFor(sources.GetLang());
  if (arguments.isPrune) {
    const metareview::SDecisions after = Prune(before, review);
    const std::size_t dropped = before.accepted.size() - after.accepted.size();
    if (dropped != 0) {
      Replace(file, after);
    }
    WriteNote(PrunedNote(words, dropped, file));
  } else {
    const metareview::SDecisions after =
        Decide(before, review, arguments.paths, arguments.acceptance, sources.GetToday());
    Replace(file, after);
    WriteNote(WrittenNote(words, CountNew(before, after), file));
  }
  return kNothingToReport;
}

}  // namespace upgradesrv
