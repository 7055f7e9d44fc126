#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/data/Sql.h"
#include "metareview2024/render/CountsReader.h"
#include "metareview2024/render/LookupsDigest.h"
#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/Writers.h"

namespace metareview {

namespace {

constexpr std::string_view kWhatItDoes =
    R"(Counts what an upgrade may touch of the values that an installation stores: one row for each difference below.
Made by "upgradesrv review -o sql", for whoever may read the installation's database.

There is no need to worry about what it does. It only reads, in one transaction that cannot write and that sees
one moment. Nobody has to wait for it but a change of a table's definition. It reads each table once, from
beginning to end.
)";

constexpr std::string_view kOnPostgresql =
    R"(The server ends it when that takes longer than statement_timeout below.
With row_security off it stops with an error where a policy would hide rows from the user.

Run it so that its result, and nothing else, is saved as CSV:
  psql -X -q --csv -v ON_ERROR_STOP=1 -f THIS_FILE DATABASE > result.csv
Names are written as the metamodel has them. Where tables were created without quotes, PostgreSQL has their names
and those of their columns in lower case; write them so below.
)";

constexpr std::string_view kOnSqlite =
    R"(SQLite has no limit of time for that; end it with Ctrl-C if it takes too long.

Run it so that its result, and nothing else, is saved as CSV:
  sqlite3 -readonly -batch -bail -header -csv -cmd '.timeout 30000' DATABASE < THIS_FILE > result.csv
)";

constexpr std::string_view kWhatThen =
    R"(Whoever reviews the upgrade takes that with
  upgradesrv review --data result.csv UPGRADE_DIR

A table or column that is missing, or may not be read, stops it with an error that names it. Delete the query
that names it, with the UNION ALL before or behind it, but not the last semicolon. Run it again; what it counts is
left open then.

)";

/// Each line as a comment.
void Comments(std::string& text, std::string_view lines) {
  for (std::size_t begin = 0; begin < lines.size();) {
    const std::size_t end = lines.find('\n', begin) + 1;
    const std::string_view line = lines.substr(begin, end - begin);
    text.append(line.size() == 1 ? "--" : "-- ").append(line);
    begin = end;
  }
}

/// Text from a metamodel may hold line ends, which would end a comment.
void Comment(std::string& text, const std::string& comment) {
  text.append("-- ").append(CStringHelper::ToVisible(comment)).append("\n");
}

class CScript {
 public:
  CScript(const SReview& review, const SRenderOptions& options)
      : review_(review),
        lookups_(*review.lookups),
        dialect_(options.dialect),
        tables_(TableQueries(dialect_, lookups_.lookups)),
        // One statement reads all tables.
        limit_(options.timeout * static_cast<std::chrono::seconds::rep>(std::max<std::size_t>(tables_.size(), 1))) {}

  std::string Text() const {
    std::string text = Heading();
    for (const std::string& statement : BeginReading(dialect_, limit_)) {
      text.append(statement).append("\n");
    }
    text.append("\n").append(UnionAll(Queries())).append("\n;\n\n");
    for (const std::string& statement : EndReading(dialect_)) {
      text.append(statement).append("\n");
    }
    return text;
  }

 private:
  std::string Heading() const {
    std::string text;
    Comments(text, kWhatItDoes);
    Comments(text, dialect_ == EDialect::kSqlite ? kOnSqlite : kOnPostgresql);
    Comments(text, kWhatThen);
    Comment(text, "installation (client): " + review_.client);
    Comment(text, "upgrade (original):    " + review_.original);
    Comment(text, "tables: " + std::to_string(tables_.size()));
    for (const SNoLookup& problem : lookups_.problems) {
      const SFinding& finding = review_.findings.at(problem.finding);
      Comment(text, "not counted: " + finding.path + " (" + std::string(finding.rule->name) + "): " + problem.problem);
    }
    return text + "\n";
  }

  std::vector<std::string> Queries() const {
    std::vector<std::string> queries;
    queries.reserve(tables_.size() + review_.elements.size());
    for (const EKind kind : review_.elements) {
      queries.push_back(DigestQuery(kind, queries.empty()));
    }
    for (const STableQuery& table : tables_) {
      std::string query = "\n";
      Comment(query, "Table " + table.table);
      for (const std::size_t place : table.lookups) {
        const SLookup& lookup = lookups_.lookups[place];
        Comment(query, "  " + lookup.path + " (" + std::string(lookup.rule) + "): " + DescribeLookup(lookup));
      }
      queries.push_back(query + table.query);
    }
    return queries;
  }

  /// A row that tells the counts of this script from those of another.
  std::string DigestQuery(EKind kind, bool isFirst) const {
    std::string query;
    if (isFirst) {
      Comment(query, "Which differences this script is about; upgradesrv refuses counts that are about others.");
    }
    const std::string name(NameOf(kind));
    return query + "SELECT " + QuoteLiteral(dialect_, name) + (isFirst ? " AS path, " : ", ") +
           QuoteLiteral(dialect_, LookupsDigest(lookups_, kind)) +
           (isFirst ? R"( AS rule, 0 AS "rows", 0 AS "of")" : ", 0, 0");
  }

  const SReview& review_;
  const SLookups& lookups_;
  EDialect dialect_;
  std::vector<STableQuery> tables_;
  std::chrono::seconds limit_;
};

}  // namespace

void WriteSql(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  if (review.complete && review.lookups != nullptr) {
    sink(CScript(review, options).Text());
    return;
  }
  std::string text;
  Comment(text, "This script counts nothing.");
  Comment(text, review.complete ? "A review that was read from a file does not say where values are stored."
                                : "The review failed: " + review.problem);
  sink(text);
}

}  // namespace metareview
