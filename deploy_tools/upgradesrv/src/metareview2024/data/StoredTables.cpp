#include "metareview2024/data/StoredTables.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/DatabaseQueries.h"

namespace metareview {
namespace {

bool IsSameName(const std::string& a, const std::string& b) {
  return CStringHelper::StringCompare(a, b, /*ignoreCase=*/true) == 0;
}

struct SStoredColumn {
  std::string name;
  EColumnKind kind = EColumnKind::kAny;
  bool isReadable = true;
  bool isBinary = false;
};

struct SStoredTable {
  std::string problem;
  bool isMissing = false;
  std::string quoted;
  std::vector<SStoredColumn> columns;
};

/// A database without such a table, or with several, answers with a problem.
class CCatalogue {
 public:
  CCatalogue() = default;
  virtual ~CCatalogue() = default;
  CCatalogue(const CCatalogue&) = delete;
  CCatalogue& operator=(const CCatalogue&) = delete;

  virtual SStoredTable Find(const std::string& name) = 0;
  /// As the database shortens it.
  virtual std::string ColumnName(const std::string& name) { return name; }
  /// Whether the database knows the characters of a text, not its bytes alone.
  virtual bool KnowsCharacters() { return true; }
};

SStoredTable Problem(const std::string& problem) {
  SStoredTable table;
  table.problem = problem;
  return table;
}

SStoredTable NoTable(const std::string& name) {
  SStoredTable table = Problem("there is no table " + name);
  table.isMissing = true;
  return table;
}

class CSqliteCatalogue : public CCatalogue {
 public:
  explicit CSqliteCatalogue(CDatabaseQueries& queries) : queries_(queries) {}

  SStoredTable Find(const std::string& name) override {
    const std::string literal = QuoteLiteral(EDialect::kSqlite, name);
    const SDatabaseAnswer tables = queries_.Query(
        "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') AND name = " + literal + " COLLATE NOCASE");
    if (tables.outcome != SDatabaseAnswer::kRows) {
      return Problem(tables.problem);
    }
    if (tables.rows.empty()) {
      return NoTable(name);
    }
    const SDatabaseAnswer columns = queries_.Query("SELECT name FROM pragma_table_xinfo(" + literal + ")");
    if (columns.outcome != SDatabaseAnswer::kRows) {
      return Problem("table " + name + " cannot be read: " + columns.problem);
    }
    SStoredTable table;
    table.quoted = QuoteIdentifier(name);
    for (const auto& row : columns.rows) {
      table.columns.push_back({row.at(0).value_or(""), EColumnKind::kAny});
    }
    return table;
  }

 private:
  CDatabaseQueries& queries_;
};

class CPostgresqlCatalogue : public CCatalogue {
 public:
  explicit CPostgresqlCatalogue(CDatabaseQueries& queries) : queries_(queries) {}

  SStoredTable Find(const std::string& name) override {
    // A name is cut off where the server cuts off those of statements.
    const std::string literal = QuoteLiteral(EDialect::kPostgresql, name) + "::name";
    const SDatabaseAnswer tables =
        queries_.Query("SELECT s.position, c.oid, n.nspname, c.relname, c.relname = " + literal +
                       ", has_table_privilege(c.oid, 'SELECT') OR has_any_column_privilege(c.oid, 'SELECT') "
                       "FROM unnest(current_schemas(false)) WITH ORDINALITY AS s(name, position) "
                       "JOIN pg_catalog.pg_namespace AS n ON n.nspname = s.name JOIN pg_catalog.pg_class AS c ON "
                       "c.relnamespace = n.oid "
                       "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND lower(c.relname COLLATE \"C\") = lower((" +
                       literal + ") COLLATE \"C\") ORDER BY c.relname <> " + literal + ", s.position");
    if (tables.outcome != SDatabaseAnswer::kRows) {
      return Problem(tables.problem);
    }
    if (tables.rows.empty()) {
      return NoTable(name);
    }
    const auto& first = tables.rows.front();
    const bool isExact = first.at(4) == "t";
    if (!isExact && tables.rows.size() > 1 && tables.rows[1].at(0) == first.at(0)) {
      return Problem("there is no table " + name + ", but several of that name in other letters");
    }
    if (first.at(5) != "t") {
      return Problem("the user may not read table " + name);
    }
    return Describe(*first.at(1), QuoteIdentifier(*first.at(2)) + "." + QuoteIdentifier(*first.at(3)));
  }

  std::string ColumnName(const std::string& name) override {
    constexpr std::size_t kMostBytes = 63;
    if (name.size() <= kMostBytes) {
      return name;
    }
    const SDatabaseAnswer cut = queries_.Query("SELECT " + QuoteLiteral(EDialect::kPostgresql, name) + "::name");
    return cut.rows.empty() ? name : cut.rows.front().at(0).value_or(name);
  }

  bool KnowsCharacters() override {
    if (!encoding_) {
      const SDatabaseAnswer encoding = queries_.Query("SHOW server_encoding");
      encoding_ = encoding.rows.empty() ? "" : encoding.rows.front().at(0).value_or("");
    }
    return encoding_ != "SQL_ASCII";
  }

 private:
  SStoredTable Describe(const std::string& oid, const std::string& quoted) {
    const SDatabaseAnswer columns = queries_.Query(
        "SELECT a.attname, coalesce(b.typname, t.typname), has_column_privilege(a.attrelid, a.attnum, 'SELECT') FROM "
        "pg_catalog.pg_attribute AS a JOIN pg_catalog.pg_type AS t ON t.oid = a.atttypid LEFT JOIN pg_catalog.pg_type "
        "AS b ON b.oid = t.typbasetype WHERE a.attnum > 0 AND NOT a.attisdropped AND a.attrelid = " +
        oid + " ORDER BY a.attnum");
    if (columns.outcome != SDatabaseAnswer::kRows) {
      return Problem(columns.problem);
    }
    SStoredTable table;
    table.quoted = quoted;
    for (const auto& row : columns.rows) {
      const std::string type = row.at(1).value_or("");
      table.columns.push_back({row.at(0).value_or(""), KindOf(type), row.at(2) == "t", type == "bytea"});
    }
    return table;
  }

  static EColumnKind KindOf(const std::string& type) {
    struct SRow {
      std::string_view type;
      EColumnKind kind;
    };
    constexpr std::array<SRow, 6> kRows = {{{"int2", EColumnKind::kInteger},
                                            {"int4", EColumnKind::kInteger},
                                            {"int8", EColumnKind::kInteger},
                                            {"numeric", EColumnKind::kDecimal},
                                            {"float8", EColumnKind::kFloat},
                                            {"float4", EColumnKind::kSingle}}};
    const auto* const found =
        std::find_if(kRows.begin(), kRows.end(), [&type](const SRow& row) { return row.type == type; });
    return found != kRows.end() ? found->kind : EColumnKind::kAny;
  }

  CDatabaseQueries& queries_;
  std::optional<std::string> encoding_;
};

/// Empty, or why the column of that name is none of the table's.
std::string FindColumn(const SStoredTable& table, const std::string& name, const SStoredColumn*& found) {
  std::vector<const SStoredColumn*> others;
  for (const SStoredColumn& column : table.columns) {
    if (column.name == name) {
      found = &column;
      return "";
    }
    if (IsSameName(column.name, name)) {
      others.push_back(&column);
    }
  }
  if (others.size() == 1) {
    found = others.front();
    return "";
  }
  return others.empty() ? "no column " + name : "no column " + name + ", but several of that name in other letters";
}

class CPlaceFinder {
 public:
  explicit CPlaceFinder(CDatabaseQueries& queries) {
    if (queries.GetKind() == CDatabaseQueries::kSqlite) {
      catalogue_ = std::make_unique<CSqliteCatalogue>(queries);
    } else {
      catalogue_ = std::make_unique<CPostgresqlCatalogue>(queries);
    }
  }

  SPlace Find(const SLookup& lookup) {
    const SStoredTable& table = FindTable(lookup.table);
    SPlace place;
    place.problem = table.problem;
    place.isTableMissing = table.isMissing;
    place.table = table.quoted;
    for (const std::string& name : lookup.columns) {
      if (!place.problem.empty()) {
        break;
      }
      place.problem = AddColumn(table, name, lookup, place.columns);
    }
    place.problem = CStringHelper::ToVisible(place.problem);
    return place;
  }

 private:
  const SStoredTable& FindTable(const std::string& name) {
    const auto known = tables_.find(name);
    if (known != tables_.end()) {
      return known->second;
    }
    const bool isName = name.find('\0') == std::string::npos;
    return tables_.emplace(name, isName ? catalogue_->Find(name) : NoTable(name)).first->second;
  }

  std::string AddColumn(const SStoredTable& table, const std::string& name, const SLookup& lookup,
                        std::vector<SSqlColumn>& columns) {
    const SStoredColumn* found = nullptr;
    const bool isName = name.find('\0') == std::string::npos;
    if (const std::string problem = FindColumn(table, isName ? catalogue_->ColumnName(name) : name, found);
        !problem.empty()) {
      return "table " + lookup.table + " has " + problem;
    }
    const std::string column = "column " + name + " of table " + lookup.table;
    if (!found->isReadable) {
      return "the user may not read " + column;
    }
    if (found->isBinary && lookup.measure != EMeasure::kNotNull) {
      return column + " holds binary data";
    }
    if (lookup.measure == EMeasure::kLongerThan && !catalogue_->KnowsCharacters()) {
      return column + " is in a database of encoding SQL_ASCII, which knows the bytes of a text, not its characters";
    }
    columns.push_back({found->name, found->kind});
    return "";
  }

  std::unique_ptr<CCatalogue> catalogue_;
  std::unordered_map<std::string, SStoredTable> tables_;
};

}  // namespace

std::vector<SPlace> FindPlaces(CDatabaseQueries& queries, const std::vector<SLookup>& lookups) {
  CPlaceFinder finder(queries);
  std::vector<SPlace> places;
  places.reserve(lookups.size());
  for (const SLookup& lookup : lookups) {
    places.push_back(finder.Find(lookup));
  }
  return places;
}

std::vector<std::string> SchemasSearched(CDatabaseQueries& queries) {
  std::vector<std::string> schemas;
  if (queries.GetKind() == CDatabaseQueries::kPostgresql) {
    for (const auto& row : queries.Query("SELECT unnest(current_schemas(false))").rows) {
      schemas.push_back(CStringHelper::ToVisible(row.at(0).value_or("")));
    }
  }
  return schemas;
}

}  // namespace metareview
