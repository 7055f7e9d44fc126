#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace upgradesrv {

struct SRequest;

/// The names of a command's own commands, separated by commas and spaces.
std::string CommandNames(const CLI::App& command);

/// What is wrong with the arguments, and where help is found, in words for whoever typed them. Passwords are hidden.
/// `arguments` are those that `app` has failed to parse, with `error`.
std::string UsageProblem(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments,
                         const SRequest& request);

}  // namespace upgradesrv
