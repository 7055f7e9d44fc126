#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct SDatabaseDialect;

/// The tables that hold a metamodel in a database, described in docs/metamodel-database.md. One description serves
/// creating, writing and reading.
namespace metadb {

/// Grows with every change to the tables. This version is written; the one before it lacks the numbers of rows.
constexpr std::uint64_t kSchemaVersion = 2;
constexpr std::uint64_t kSchemaVersionWithoutCounts = 1;

struct SColumn {
  enum EKind { kText, kName, kNumber };

  const char* name;
  EKind kind = kText;
  /// The greatest number that the column holds.
  std::uint64_t max = 0;
};

/// A table whose rows are the items of a list, or of one list for each row of its owner.
struct STable {
  const char* name;
  std::vector<SColumn> columns;
  const STable* owner = nullptr;
  /// Holds the ordinal of the row's owner.
  const char* ownerColumn = nullptr;
};

/// The table of the one row that says what the other tables hold.
extern const char* const kHeadTable;

/// Their columns are the values of elements (storage/MetaMembers.h), in the same order.
extern const STable kClasses;
extern const STable kClassBehaviors;
extern const STable kClassProperties;
extern const STable kLinks;
extern const STable kLinkBehaviors;
extern const STable kLinkProperties;
extern const STable kBehaviors;
extern const STable kMethods;
extern const STable kBehaviorProperties;

/// All list tables, each after its owner.
const std::vector<const STable*>& ListTables();
/// The names of all tables, the head table first, each after what names begin with.
std::vector<std::string> TableNames(const std::string& schema = "");

/// The head table's columns: first generation and version, then for each list table the number of its rows.
std::vector<std::string> HeadColumns();
std::string CountColumn(const STable& table);

/// The columns that say where a row belongs: its owner's ordinal, if the table has an owner, and its own.
std::vector<std::string> KeyColumns(const STable& table);

/// What drops every table that there is, what creates all tables, and what gives them their indexes once they are
/// filled.
std::vector<std::string> DropStatements(const SDatabaseDialect& dialect);
std::vector<std::string> CreateStatements(const SDatabaseDialect& dialect);
std::vector<std::string> IndexStatements(const SDatabaseDialect& dialect);

/// The key columns, then the columns.
std::vector<std::string> AllColumns(const STable& table);

/// Reads every row in the order of the lists, with AllColumns.
std::string SelectStatement(const STable& table, const SDatabaseDialect& dialect);
/// Adds `rows` rows, whose values are parameters in the order of SelectStatement.
std::string InsertStatement(const STable& table, std::size_t rows, const SDatabaseDialect& dialect);

/// The names of all tables as a list of SQL texts.
std::string QuotedTableNames();
std::string Join(const std::vector<std::string>& words, const std::string& separator = ", ");

}  // namespace metadb
