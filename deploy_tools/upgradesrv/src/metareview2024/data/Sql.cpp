#include "metareview2024/data/Sql.h"

#include <algorithm>
#include <unordered_map>

#include "metareview2024/data/Conditions.h"

namespace metareview {
namespace {

constexpr const char* kTableAlias = "t";

std::string Quote(const std::string& text, char quote) {
  std::string quoted(1, quote);
  for (const char c : text) {
    if (c == quote) {
      quoted += c;
    }
    quoted += c;
  }
  return quoted + quote;
}

std::string ColumnOf(const SSqlColumn& column) {
  return std::string(kTableAlias) + "." + QuoteIdentifier(column.name);
}

std::string CountWhere(const std::string& condition) {
  return "count(*) FILTER (WHERE " + condition + ")";
}

std::string CountNotNull(const std::vector<SSqlColumn>& columns) {
  if (columns.size() == 1) {
    return "count(" + ColumnOf(columns.front()) + ")";
  }
  // SQLite takes no more than 1,000 in one chain.
  constexpr std::size_t kMost = 500;
  std::string condition;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i != 0) {
      condition += i % kMost == 0 ? ") OR (" : " OR ";
    }
    condition += ColumnOf(columns[i]);
    condition += " IS NOT NULL";
  }
  return CountWhere("(" + condition + ")");
}

std::string CountExpression(EDialect dialect, const SSqlCount& count) {
  if (count.measure == EMeasure::kAnyRow) {
    return "count(*)";
  }
  if (count.measure == EMeasure::kNotNull) {
    return CountNotNull(count.columns);
  }
  const SSqlColumn& column = count.columns.front();
  const SCondition condition = dialect == EDialect::kSqlite
                                   ? SqliteCondition(ColumnOf(column), count.measure, count.limit)
                                   : PostgresqlCondition(ColumnOf(column), column.kind, count.measure, count.limit);
  const std::string touched = CountWhere(condition.touched);
  return condition.notNumber.empty() ? touched
                                     : "CASE WHEN " + CountWhere(condition.notNumber) + " = 0 THEN " + touched + " END";
}

SSqlCount CountOf(const SLookup& lookup) {
  SSqlCount count{lookup.measure, {}, lookup.limit};
  count.columns.reserve(lookup.columns.size());
  for (const std::string& column : lookup.columns) {
    count.columns.push_back({column, EColumnKind::kAny});
  }
  return count;
}

/// The counts of a table's one row, a row each.
std::string RowsOf(EDialect dialect, const STableQuery& table, const std::vector<SLookup>& lookups) {
  std::vector<SSqlCount> counts;
  counts.reserve(table.lookups.size());
  std::string choice;
  std::string values;
  for (std::size_t i = 0; i < table.lookups.size(); ++i) {
    const SLookup& lookup = lookups[table.lookups[i]];
    counts.push_back(CountOf(lookup));
    const std::string number = std::to_string(i + 1);
    choice.append(" WHEN ").append(number).append(" THEN c.c").append(number);
    values.append(i == 0 ? "" : ", ").append("\n  (").append(number).append(", ");
    values.append(QuoteLiteral(dialect, lookup.path)).append(", ");
    values.append(QuoteLiteral(dialect, std::string(lookup.rule))).append(")");
  }
  return "SELECT f.column2 AS path, f.column3 AS rule, CASE f.column1" + choice +
         " END AS \"rows\", c.n AS \"of\"\nFROM (" + CountQuery(dialect, QuoteIdentifier(table.table), counts) +
         ") AS c,\n (VALUES" + values + ") AS f";
}

}  // namespace

std::string QuoteIdentifier(const std::string& name) {
  return Quote(name, '"');
}

std::string QuoteLiteral(EDialect dialect, const std::string& text) {
  if (dialect == EDialect::kSqlite || text.find('\\') == std::string::npos) {
    return Quote(text, '\'');
  }
  // What a backslash means in a plain literal depends on the server's configuration.
  std::string doubled;
  for (const char c : text) {
    doubled.append(c == '\\' ? 2 : 1, c);
  }
  return "E" + Quote(doubled, '\'');
}

std::string CountQuery(EDialect dialect, const std::string& table, const std::vector<SSqlCount>& counts) {
  std::string query = "SELECT count(*) AS n";
  for (std::size_t i = 0; i < counts.size(); ++i) {
    query.append(",\n  ").append(CountExpression(dialect, counts[i])).append(" AS c").append(std::to_string(i + 1));
  }
  return query + "\n FROM " + table + " AS " + kTableAlias;
}

std::vector<STableQuery> TableQueries(EDialect dialect, const std::vector<SLookup>& lookups) {
  std::vector<STableQuery> tables;
  // The last query of each table.
  std::unordered_map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < lookups.size(); ++i) {
    const auto [place, isNew] = places.emplace(lookups[i].table, tables.size());
    if (!isNew && tables[place->second].lookups.size() == kMostCounts) {
      place->second = tables.size();
    }
    if (place->second == tables.size()) {
      tables.push_back({lookups[i].table, {}, ""});
    }
    tables[place->second].lookups.push_back(i);
  }
  for (STableQuery& table : tables) {
    table.query = RowsOf(dialect, table, lookups);
  }
  return tables;
}

std::string UnionAll(const std::vector<std::string>& queries) {
  // SQLite takes no more than 500 in one list.
  constexpr std::size_t kMost = 400;
  const auto join = [](const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
      text.append(text.empty() ? "" : "\nUNION ALL\n").append(part);
    }
    return text;
  };
  if (queries.size() <= kMost) {
    return join(queries);
  }
  std::vector<std::string> groups;
  groups.reserve(queries.size() / kMost + 1);
  for (std::size_t begin = 0; begin < queries.size(); begin += kMost) {
    const std::size_t end = std::min(begin + kMost, queries.size());
    const auto first = queries.begin();
    groups.push_back("SELECT * FROM (\n" +
                     join({first + static_cast<std::ptrdiff_t>(begin), first + static_cast<std::ptrdiff_t>(end)}) +
                     "\n) AS g");
  }
  return UnionAll(groups);
}

const std::vector<std::string>& ReadingSettings(EDialect dialect) {
  static const std::vector<std::string> none;
  // With row_security off the server refuses to count what a policy would hide a part of. Compiling many counts would
  // take longer than counting.
  static const std::vector<std::string> postgresql = {"SET LOCAL row_security = off",
                                                      "SET LOCAL extra_float_digits = 1", "SET LOCAL jit = off"};
  return dialect == EDialect::kSqlite ? none : postgresql;
}

std::vector<std::string> BeginReading(EDialect dialect, std::chrono::seconds limit) {
  const std::string seconds = std::to_string(limit.count());
  if (dialect == EDialect::kSqlite) {
    return {"PRAGMA query_only = ON;", "PRAGMA trusted_schema = OFF;", "BEGIN;"};
  }
  std::vector<std::string> statements = {"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY;",
                                         "SET LOCAL statement_timeout = '" + seconds + "s';"};
  for (const std::string& setting : ReadingSettings(dialect)) {
    statements.push_back(setting + ";");
  }
  return statements;
}

std::vector<std::string> EndReading(EDialect /*dialect*/) {
  return {"ROLLBACK;"};
}

}  // namespace metareview
