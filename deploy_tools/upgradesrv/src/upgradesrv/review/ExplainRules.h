#pragma once

#include <optional>
#include <string>

#include "upgradesrv/ExitStatus.h"

namespace upgradesrv {

struct SExplainArguments {
  /// Empty for all rules.
  std::string rule;
  std::string lang = "en";
  /// A decisions file, which may set risks.
  std::optional<std::string> decisions;
};

/// Says what rules mean, why they have their risk, and what to do.
EExitStatus ExplainRules(const SExplainArguments& arguments);

}  // namespace upgradesrv
