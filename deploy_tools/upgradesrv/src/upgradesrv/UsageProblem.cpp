#include "upgradesrv/UsageProblem.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cctype>
#include <cstddef>

#include "kvxsptstring/StringHelper.h"
#include "upgradesrv/Passwords.h"
#include "upgradesrv/commands/Command.h"

namespace upgradesrv {
namespace {

using Arguments = std::vector<std::string>;

bool Fails(const CLI::ParseError& error, CLI::ExitCodes code) {
  return error.get_exit_code() == static_cast<int>(code);
}

/// Whether an argument is a connection word that belongs to a location before it.
bool IsConnectionWord(const std::string& argument) {
  std::size_t end = 0;
  while (end < argument.size() &&
         (std::islower(static_cast<unsigned char>(argument[end])) != 0 || argument[end] == '_')) {
    ++end;
  }
  return end > 0 && end < argument.size() && argument[end] == '=';
}

bool IsServerLocation(std::string argument) {
  CStringHelper::ToLower(argument);
  return argument.find("postgresql://") != std::string::npos || argument.find("postgres://") != std::string::npos;
}

/// The location that has fallen apart at its spaces; the end of the arguments when none has.
Arguments::const_iterator FindBrokenLocation(const Arguments& arguments) {
  return std::adjacent_find(arguments.begin(), arguments.end(),
                            [](const std::string& first, const std::string& second) {
                              return IsServerLocation(first) && IsConnectionWord(second);
                            });
}

/// An argument for a message. What follows a password may be the rest of it.
std::string Quoted(const Arguments& arguments, const std::string& argument) {
  const auto found = std::find(arguments.begin(), arguments.end(), argument);
  if (found != arguments.begin() && found != arguments.end() && HoldsPassword(*std::prev(found))) {
    return "after \"" + ArgumentWithoutPassword(*std::prev(found)) + "\"";
  }
  return "\"" + ArgumentWithoutPassword(argument) + "\"";
}

/// For a command that is missing or unknown, or an argument that has no place. Empty for anything else.
std::string UnexpectedProblem(const CLI::App& command, const Arguments& unexpected, const Arguments& arguments,
                              const SRequest& request) {
  if (!unexpected.empty() && unexpected.front().rfind('-', 0) == 0) {
    return "unknown option " + ArgumentWithoutPassword(unexpected.front());
  }
  if (const std::string commands = CommandNames(command); !commands.empty()) {
    return (unexpected.empty() ? "no command is given" : "unknown command " + Quoted(arguments, unexpected.front())) +
           "; the commands are " + commands;
  }
  if (unexpected.empty()) {
    return "";
  }
  const auto hint = request.hints.find(&command);
  const std::string wayOut = hint == request.hints.end() ? "" : hint->second(unexpected);
  return "unexpected argument " + Quoted(arguments, unexpected.front()) + (wayOut.empty() ? "" : "; " + wayOut);
}

/// For an option that is given too often, or without its value. Empty for anything else.
std::string OptionProblem(const CLI::App& command, const CLI::ParseError& error) {
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_items_expected_max() == 1 && option->count() > 1) {
      const std::string often = option->count() == 2 ? "twice" : std::to_string(option->count()) + " times";
      return option->get_name() + " is given " + often;
    }
  }
  // The parser names the option before a colon.
  const std::string message = error.what();
  const CLI::Option* option = command.get_option_no_throw(message.substr(0, message.find(':')));
  return option == nullptr ? "" : option->get_name() + " needs a value: " + option->get_type_name();
}

std::string Problem(const CLI::App& app, const CLI::App& command, const CLI::ParseError& error,
                    const Arguments& arguments, const SRequest& request) {
  if (const auto location = FindBrokenLocation(arguments); location != arguments.end()) {
    return "the location in \"" + ArgumentWithoutPassword(*location) +
           "\" ends at its first space; put the whole of it in quotation marks";
  }
  std::string problem;
  if (Fails(error, CLI::ExitCodes::RequiredError) || Fails(error, CLI::ExitCodes::ExtrasError)) {
    problem = UnexpectedProblem(command, app.remaining(/*recurse=*/true), arguments, request);
  } else if (Fails(error, CLI::ExitCodes::ArgumentMismatch)) {
    problem = OptionProblem(command, error);
  }
  return problem.empty() ? error.what() : problem;
}

}  // namespace

std::string CommandNames(const CLI::App& command) {
  std::string names;
  for (const CLI::App* known : command.get_subcommands([](const CLI::App*) { return true; })) {
    names += (names.empty() ? "" : ", ") + known->get_name();
  }
  return names;
}

std::string UsageProblem(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments,
                         const SRequest& request) {
  const CLI::App* command = &app;
  std::string path = app.get_name();
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += " " + command->get_name();
  }
  return Problem(app, *command, error, arguments, request) + "; run \"" + path + " --help\" for details";
}

}  // namespace upgradesrv
