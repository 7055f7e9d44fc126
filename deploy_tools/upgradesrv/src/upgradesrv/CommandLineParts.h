#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>
#include <vector>

#include "upgradesrv/ExitStatus.h"

/// What the options of several commands have in common.
namespace upgradesrv {

inline constexpr const char* kLocationHelp =
    "A metamodel LOCATION is one of\n"
    "  NAME.json                       a metamodel document\n"
    "  NAME.db, NAME.sqlite            an SQLite database\n"
    "  sqlite3://PATH                  the same, whatever its name ends in\n"
    "  'postgresql://host=H dbname=D'  a PostgreSQL database, in libpq's connection words\n"
    "  postgresql://USER@HOST/DATABASE the same as a URI; what is left out, libpq finds in PGHOST, PGDATABASE and\n"
    "                                  its other variables, PGSERVICE and PGPASSFILE. A password belongs into the\n"
    "                                  password file: command lines can be seen by others.";

/// The command that the parsed arguments ask for.
using Command = std::function<EExitStatus()>;

std::vector<std::string> SplitAtCommas(const std::string& list);

/// What is wrong with a list of kinds; empty for nothing.
std::string ElementsProblem(const std::string& list);

/// Refuses empty values: of a script's unset variable for example, which must not pass for a choice.
void RequireValues(CLI::App& app);

void DefineQuiet(CLI::App& app, bool& quiet);

}  // namespace upgradesrv
