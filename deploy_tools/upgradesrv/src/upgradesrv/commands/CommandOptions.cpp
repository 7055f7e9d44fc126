#include "upgradesrv/commands/CommandOptions.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <system_error>

#include "metareview2024/render/Render.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/UpgradeConfiguration.h"
#include "upgradesrv/commands/Command.h"

namespace upgradesrv {
namespace {

std::vector<std::string> SplitAtCommas(const std::string& list) {
  std::vector<std::string> items;
  std::size_t begin = 0;
  for (std::size_t end = list.find(','); end != std::string::npos; end = list.find(',', begin)) {
    items.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  items.push_back(list.substr(begin));
  return items;
}

/// What is wrong with a list of kinds; empty for nothing.
std::string KindsProblem(const std::string& list) {
  for (const std::string& kind : SplitAtCommas(list)) {
    if (kind.empty()) {
      return "a kind is empty";
    }
    if (!IsKind(kind)) {
      const bool isOneWord = kind.find_first_of(" ;|+/") == std::string::npos;
      return "unknown kind \"" + kind + "\"; " +
             (isOneWord ? "the kinds are " + KindNames() : "separate kinds by commas, without spaces");
    }
  }
  return "";
}

std::string FormatList() {
  std::string names;
  for (const metareview::SFormat& format : metareview::Formats()) {
    names += (names.empty() ? "" : ", ") + std::string(format.name);
  }
  return names;
}

using Milliseconds = std::chrono::milliseconds;

/// None for what is no number of seconds that can be waited for.
std::optional<Milliseconds> ParseSeconds(const std::string& text) {
  constexpr double kLeast = 0.001;
  constexpr double kMost = 1e9;
  double seconds = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds);
  // What is not a number is in no order with others.
  if (error != std::errc() || stop != end || !(seconds >= kLeast && seconds <= kMost)) {
    return std::nullopt;
  }
  return std::chrono::ceil<Milliseconds>(std::chrono::duration<double>(seconds));
}

}  // namespace

const char* const kLocationHelp =
    "A metamodel LOCATION is one of these. Relative paths start at the current directory.\n"
    "  NAME.json                        a JSON document\n"
    "  NAME.db, NAME.sqlite             an SQLite database\n"
    "  sqlite3://PATH                   an SQLite database of any name\n"
    "  'postgresql://host=H dbname=D'   a PostgreSQL database, in libpq's keywords and values\n"
    "  postgresql://USER@HOST/DATABASE  a PostgreSQL database, as a URI\n"
    "For PostgreSQL, what is left out comes from libpq's variables: PGHOST, PGDATABASE, PGSERVICE and so on.\n"
    "Others can see command lines: put a password into the password file (PGPASSFILE).";

CLI::Option* AddText(CLI::App& command, const std::string& name, std::optional<std::string>& value,
                     const std::string& help) {
  return command.add_option_function<std::string>(
      name, [&value](const std::string& given) { value = given; }, help);
}

void AddMetamodels(CLI::App& command, SConfigurationOverrides& overrides) {
  AddText(command, "--original", overrides.originalLocation,
          "The metamodel as shipped with the upgrade; default: that of upgrade.json")
      ->type_name("LOCATION");
  AddText(command, "--client", overrides.clientLocation,
          "The metamodel of the installation; default: that of upgrade.json")
      ->type_name("LOCATION");
}

void AddKinds(CLI::App& command, std::optional<std::vector<std::string>>& kinds, const std::string& help) {
  // A list of our own: the parser's would drop empty items and go on into the arguments that follow.
  command
      .add_option_function<std::string>(
          "--elements", [&kinds](const std::string& list) { kinds = SplitAtCommas(list); }, help)
      ->type_name("KIND[,KIND...]")
      ->check(&KindsProblem);
}

CLI::Option* AddFormats(CLI::App& command, const std::string& name, std::vector<std::string>& outputs,
                        const std::string& help) {
  return command.add_option(name, outputs, help + ", and the file to write; may be repeated. Formats: " + FormatList())
      ->type_name("FORMAT[=FILE]")
      ->take_all()
      ->allow_extra_args(false);
}

CLI::Option* AddSeconds(CLI::App& command, const std::string& name, std::optional<Milliseconds>& value,
                        const std::string& help) {
  return command
      .add_option_function<std::string>(
          name, [&value](const std::string& seconds) { value = ParseSeconds(seconds); }, help)
      ->type_name("SECONDS")
      ->check([](const std::string& seconds) {
        return std::string(ParseSeconds(seconds) ? "" : "must be a number of seconds above 0, for example 60 or 0.5");
      });
}

void AddLoadingOptions(CLI::App& command, SRequest& request) {
  command.add_flag("--quiet", request.quiet, "Show no progress while metamodels are loaded or values counted");
  AddSeconds(command, "--timeout", request.timeout, "Give up when loading takes longer; default: no limit");
}

void RequireValues(CLI::App& command) {
  for (CLI::Option* option : command.get_options()) {
    option->check([](const std::string& value) { return std::string(value.empty() ? "the value is empty" : ""); });
  }
}

}  // namespace upgradesrv
