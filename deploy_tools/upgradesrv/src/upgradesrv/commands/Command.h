#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "upgradesrv/ExitStatus.h"

namespace CLI {
class App;
}

namespace upgradesrv {

/// What the command line asks for. Filled in while it is parsed.
struct SRequest {
  /// What the command does that the arguments name.
  std::function<EExitStatus()> action;
  bool quiet = false;
  /// How long everything that is loaded may take together.
  std::optional<std::chrono::milliseconds> timeout;

  /// What somebody may have meant by arguments for which a command has no place: a way out, or empty.
  using Hint = std::function<std::string(const std::vector<std::string>& unexpected)>;
  std::map<const CLI::App*, Hint> hints;

  /// What a command does when its arguments are refused: `problem` is why, `arguments` are all of the command line.
  using Refusal = std::function<void(const std::string& problem, const std::vector<std::string>& arguments)>;
  std::map<const CLI::App*, Refusal> refusals;
};

/// Defines a command: adds it to `parent` with its options and help, and has it set the action when the arguments name
/// it. `request` lives until the action has ended.
using DefineCommand = void(CLI::App& parent, SRequest& request);

}  // namespace upgradesrv
