#pragma once

#include <string>
#include <vector>

/// What SQLite and PostgreSQL want said in different words, in one session.
struct SDatabaseDialect {
  /// What the tables' names begin with: the name of the schema that they are in, if there are several, and a point.
  std::string schema;
  /// Holds every unsigned 32-bit number.
  const char* integerType;
  /// The expression over a name that is equal for names that differ only in ASCII case.
  const char* foldedName;
  /// What follows the columns of a table whose rows are read in the order of a key of two columns.
  const char* ownedTableOptions;
  /// Counts the tables of the name :name, which begins with `schema`.
  const char* countTables;
  /// Asks for the names of views, in lower case, among those where the tables are looked for.
  std::string listViews;
  /// Begins a transaction that sees all tables as of one moment and changes nothing.
  std::vector<std::string> beginReading;
  /// Begins a transaction that changes everything or nothing.
  std::vector<std::string> beginWriting;
};
