#pragma once

#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Finding.h"
#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/review/ReviewSources.h"

namespace upgradesrv {

struct SDecideArguments {
  SReviewSources sources;
  std::vector<std::string> paths;
  metareview::SAcceptance acceptance;
  /// Drop what is stale instead of accepting anything.
  bool isPrune = false;
};

/// Records that findings are accepted, in the decisions file, which is replaced as a whole. Two calls at once follow
/// one another.
EExitStatus DecideFindings(const SDecideArguments& arguments);

}  // namespace upgradesrv
