#include "upgrademeta2024/storage/database/DatabaseSchema.h"

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/database/DatabaseDialect.h"

namespace metadb {
namespace {

template <typename Members>
std::vector<SColumn> ColumnsOf(const Members& members) {
  std::vector<SColumn> columns;
  columns.reserve(members.size());
  for (const auto& member : members) {
    columns.push_back(member.IsText() ? SColumn{member.name} : SColumn{member.name, SColumn::kNumber, member.GetMax()});
  }
  columns.front().kind = SColumn::kName;
  return columns;
}

std::string ColumnDefinition(const SColumn& column, const SDatabaseDialect& dialect) {
  const std::string name = column.name;
  switch (column.kind) {
    case SColumn::kNumber:
      return name + " " + dialect.integerType + " NOT NULL CHECK (" + name + " BETWEEN 0 AND " +
             std::to_string(column.max) + ")";
    case SColumn::kName:
      return name + " TEXT NOT NULL CHECK (" + name + " <> '')";
    default:
      return name + " TEXT NOT NULL";
  }
}

std::string CreateStatement(const STable& table, const SDatabaseDialect& dialect) {
  const std::string integer = dialect.integerType;
  std::string sql = "CREATE TABLE " + dialect.schema + table.name + " (\n  ";
  if (table.owner == nullptr) {
    sql += "ordinal " + integer + " PRIMARY KEY CHECK (ordinal >= 0)";
  } else {
    sql += std::string(table.ownerColumn) + " " + integer + " NOT NULL REFERENCES " + dialect.schema +
           table.owner->name + " (ordinal) ON UPDATE CASCADE ON DELETE CASCADE,\n  ordinal " + integer +
           " NOT NULL CHECK (ordinal >= 0)";
  }
  for (const SColumn& column : table.columns) {
    sql += ",\n  " + ColumnDefinition(column, dialect);
  }
  if (table.owner == nullptr) {
    return sql + "\n)";
  }
  return sql + ",\n  PRIMARY KEY (" + table.ownerColumn + ", ordinal)\n)" + dialect.ownedTableOptions;
}

}  // namespace

const char* const kHeadTable = "metamodel";

const STable kClasses = {"meta_classes", ColumnsOf(metamembers::kClass)};
const STable kClassBehaviors = {"meta_class_behaviors", {{"behavior"}}, &kClasses, "class_ordinal"};
const STable kClassProperties = {"meta_class_properties", ColumnsOf(metamembers::kProperty), &kClasses,
                                 "class_ordinal"};
const STable kLinks = {"meta_links", ColumnsOf(metamembers::kClass)};
const STable kLinkBehaviors = {"meta_link_behaviors", {{"behavior"}}, &kLinks, "link_ordinal"};
const STable kLinkProperties = {"meta_link_properties", ColumnsOf(metamembers::kProperty), &kLinks, "link_ordinal"};
const STable kBehaviors = {"meta_behaviors", ColumnsOf(metamembers::kBehavior)};
const STable kMethods = {"meta_methods", ColumnsOf(metamembers::kMethod), &kBehaviors, "behavior_ordinal"};
const STable kBehaviorProperties = {"meta_behavior_properties", ColumnsOf(metamembers::kProperty), &kBehaviors,
                                    "behavior_ordinal"};

const std::vector<const STable*>& ListTables() {
  static const std::vector<const STable*> tables = {&kClasses,   &kClassBehaviors, &kClassProperties,
                                                    &kLinks,     &kLinkBehaviors,  &kLinkProperties,
                                                    &kBehaviors, &kMethods,        &kBehaviorProperties};
  return tables;
}

std::vector<std::string> TableNames(const std::string& schema) {
  std::vector<std::string> names = {schema + kHeadTable};
  for (const STable* table : ListTables()) {
    names.push_back(schema + table->name);
  }
  return names;
}

std::vector<std::string> HeadColumns() {
  std::vector<std::string> names = {"generation", "schema_version"};
  for (const STable* table : ListTables()) {
    names.push_back(CountColumn(*table));
  }
  return names;
}

std::string CountColumn(const STable& table) {
  return std::string(table.name) + "_rows";
}

std::vector<std::string> KeyColumns(const STable& table) {
  if (table.owner == nullptr) {
    return {"ordinal"};
  }
  return {table.ownerColumn, "ordinal"};
}

std::vector<std::string> AllColumns(const STable& table) {
  std::vector<std::string> names = KeyColumns(table);
  for (const SColumn& column : table.columns) {
    names.emplace_back(column.name);
  }
  return names;
}

std::vector<std::string> DropStatements(const SDatabaseDialect& dialect) {
  // The head table first: readers lock it before the others, so that neither waits for the other in a circle.
  std::vector<std::string> statements = {"DROP TABLE IF EXISTS " + dialect.schema + kHeadTable};
  for (auto table = ListTables().rbegin(); table != ListTables().rend(); ++table) {
    statements.push_back("DROP TABLE IF EXISTS " + dialect.schema + (*table)->name);
  }
  return statements;
}

std::vector<std::string> CreateStatements(const SDatabaseDialect& dialect) {
  const std::string integer = dialect.integerType;
  std::string head = "CREATE TABLE " + dialect.schema + kHeadTable + " (\n  generation " + integer +
                     " PRIMARY KEY CHECK (generation = " + std::to_string(CMetaDictionary2024::kGeneration) +
                     "),\n  schema_version " + integer +
                     " NOT NULL CHECK (schema_version = " + std::to_string(kSchemaVersion) + ")";
  for (const STable* table : ListTables()) {
    const std::string name = CountColumn(*table);
    head.append(",\n  ")
        .append(name)
        .append(" ")
        .append(integer)
        .append(" NOT NULL CHECK (")
        .append(name)
        .append(" >= 0)");
  }
  std::vector<std::string> statements = {head + "\n)"};
  for (const STable* table : ListTables()) {
    statements.push_back(CreateStatement(*table, dialect));
  }
  return statements;
}

std::vector<std::string> IndexStatements(const SDatabaseDialect& dialect) {
  std::vector<std::string> statements;
  for (const STable* table : ListTables()) {
    if (table->columns.front().kind == SColumn::kName) {
      std::string statement = "CREATE UNIQUE INDEX ";
      statement.append(table->name).append("_name ON ").append(dialect.schema).append(table->name).append(" (");
      if (table->owner != nullptr) {
        statement.append(table->ownerColumn).append(", ");
      }
      statement += dialect.foldedName;
      statements.push_back(statement + ")");
    }
  }
  return statements;
}

std::string SelectStatement(const STable& table, const SDatabaseDialect& dialect) {
  return "SELECT " + Join(AllColumns(table)) + " FROM " + dialect.schema + table.name + " ORDER BY " +
         Join(KeyColumns(table));
}

std::string InsertStatement(const STable& table, std::size_t rows, const SDatabaseDialect& dialect) {
  const std::vector<std::string> columns = AllColumns(table);
  std::vector<std::string> tuples;
  for (std::size_t row = 0; row < rows; ++row) {
    std::vector<std::string> parameters;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      parameters.push_back(":v" + std::to_string(row * columns.size() + i));
    }
    tuples.push_back("(" + Join(parameters) + ")");
  }
  return "INSERT INTO " + dialect.schema + table.name + " (" + Join(columns) + ") VALUES " + Join(tuples);
}

std::string QuotedTableNames() {
  return "'" + Join(TableNames(), "', '") + "'";
}

std::string Join(const std::vector<std::string>& words, const std::string& separator) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : separator) + word;
  }
  return text;
}

}  // namespace metadb
