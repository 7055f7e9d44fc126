#pragma once

#include <string>
#include <vector>

#include "upgradesrv/ExitStatus.h"
#include "upgradesrv/chain/UpgradeRun.h"

namespace upgradesrv {

/// RunUpgrade, and then the review of the metamodels that the check has loaded; what it has not loaded is. The status
/// is that of the run: what the review finds does not count. What cannot be granted of `outputs` (see CReviewOutputs)
/// is refused before anything runs. With trouble, also the run's, files that were asked for say that the review failed.
EExitStatus RunAndReview(const SRunArguments& arguments, const std::vector<std::string>& outputs);

}  // namespace upgradesrv
