#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace upgradesrv {

struct SConfigurationOverrides;
struct SRequest;

// What the options of several commands have in common. Values that are given by reference outlive the command.

/// What a metamodel location is, for the help of commands that take one.
extern const char* const kLocationHelp;

/// An option with a text that may be left out.
CLI::Option* AddText(CLI::App& command, const std::string& name, std::optional<std::string>& value,
                     const std::string& help);

/// "--original LOCATION" and "--client LOCATION".
void AddMetamodels(CLI::App& command, SConfigurationOverrides& overrides);

/// "--elements KIND[,KIND...]": kinds of elements that the metamodel check knows.
void AddKinds(CLI::App& command, std::optional<std::vector<std::string>>& kinds, const std::string& help);

/// An option that asks for outputs of a review; see CReviewOutputs. `help` is what the format is of.
CLI::Option* AddFormats(CLI::App& command, const std::string& name, std::vector<std::string>& outputs,
                        const std::string& help);

/// An option with a number of seconds, for example 0.5, that may be left out.
CLI::Option* AddSeconds(CLI::App& command, const std::string& name, std::optional<std::chrono::milliseconds>& value,
                        const std::string& help);

/// Adds the options of every command that loads metamodels.
void AddLoadingOptions(CLI::App& command, SRequest& request);

/// Has the command refuse empty values: of a script's unset variable for example, which must not pass for a choice. To
/// be called once all options are there.
void RequireValues(CLI::App& command);

}  // namespace upgradesrv
