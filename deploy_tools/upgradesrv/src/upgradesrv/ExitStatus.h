#pragma once

namespace upgradesrv {

/// What a command ends with.
enum EExitStatus { kNothingToReport = 0, kDifferencesReported = 1, kFaultsReported = 1, kTrouble = 2 };

}  // namespace upgradesrv
