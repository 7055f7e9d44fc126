#pragma once

#include <optional>
#include <string>

#include "upgradesrv/ExitStatus.h"

namespace upgradesrv {

/// What "init" is asked for. Relative paths start at the current directory.
struct SInitArguments {
  std::string directory;
  std::optional<std::string> original;
  std::optional<std::string> client;
  std::optional<std::string> base;
  std::string lang = "en";
};

/// Makes an upgrade configuration directory that is ready to run once its metamodels are there, and writes to standard
/// output what is in it and what comes next. The metamodels that are named are checked, not copied.
EExitStatus InitUpgrade(const SInitArguments& arguments);

}  // namespace upgradesrv
