#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/review/ReviewSources.h"
#include "upgradesrv/review/StoredValues.h"

namespace upgradesrv {

/// What a command does before its review.
struct SForegoing {
  /// The files that it reads and writes, beside those of the review, once upgrade.json is read.
  std::function<std::vector<std::string>()> getFiles;
  /// Called when nothing speaks against the outputs and the decisions are read. Hands back what it has loaded.
  std::function<LoadedMetamodels2024()> run;
};

struct SReviewArguments {
  SReviewSources sources;
  /// A saved review, which is written again; nothing is compared then.
  std::optional<std::string> from;
  /// An earlier review, saved as JSON.
  std::optional<std::string> against;
  SStoredValues data;
  /// Kinds to compare; without it all.
  std::optional<std::vector<std::string>> elements;
  /// The least bad risk that counts for the exit status, or "never".
  std::string failOn = "safe";
  /// Findings that the earlier review has do not count.
  bool onlyNew = false;
  /// See CReviewOutputs.
  std::vector<std::string> outputs;
  /// The option that asks for them, for messages.
  std::string outputOption = "-o";
  /// The text report's table alone.
  bool isTableOnly = false;
  std::optional<SForegoing> foregoing;
};

/// Judges every difference between the two metamodels of an upgrade. Ends with kDifferencesReported where a finding
/// counts. With trouble, files that were asked for say that the review failed.
EExitStatus ReviewUpgrade(const SReviewArguments& arguments);

/// For a command line that is refused: files that were asked for say that the review failed, as with any trouble.
/// `outputs`: see CReviewOutputs; what else `arguments` may name as something to read is not replaced.
void RefuseReview(const std::vector<std::string>& outputs, const std::vector<std::string>& arguments,
                  const std::string& problem);

}  // namespace upgradesrv
