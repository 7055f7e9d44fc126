#include "data/InstallationData.h"

#include <libpq-fe.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "storages/ServerSchema.h"

namespace bench {
namespace {

using metareview::EMeasure;

// Of row i: every seventh has no name; one code in 97 is long; sizes have up to four places.
constexpr const char* kColumns =
    "(id integer PRIMARY KEY, code text, name text, note text, quantity bigint, mass numeric(12,4), size double "
    "precision, filler text)";
constexpr const char* kValues =
    "i, 'P-' || (i * 7919) || CASE WHEN i % 97 = 0 THEN '-with-a-long-end-of-its-code' ELSE '' END, CASE WHEN i % 7 = "
    "0 "
    "THEN NULL ELSE 'Zahnrad für Größe ' || (i % 1000) END, 'a note of some length about part number ' || i, i * 31, "
    "(i % 100000) / 100.0, (i % 1000) / 8.0, 'text that nobody looks at, as tables have it beside the rest'";

class CSqliteData : public CInstallationData {
 public:
  CSqliteData(std::size_t tables, std::size_t rows)
      : path_(std::filesystem::temp_directory_path() / ("upgradesrv-bench-" + std::to_string(getpid()) + ".db")) {
    Open();
    Execute("PRAGMA synchronous = OFF");
    Execute("PRAGMA journal_mode = OFF");
    for (std::size_t i = 0; i < tables; ++i) {
      Execute("CREATE TABLE " + TableName(i) + " " + kColumns);
      Execute("INSERT INTO " + TableName(i) +
              " WITH RECURSIVE numbers(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM numbers WHERE i < " +
              std::to_string(rows) + ") SELECT " + kValues + " FROM numbers");
    }
    connection_.reset();
  }
  ~CSqliteData() override {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  CSqliteData(const CSqliteData&) = delete;
  CSqliteData& operator=(const CSqliteData&) = delete;

  std::string Location() const override { return path_; }

 private:
  void Open() {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(path_.c_str(), &opened);
    connection_.reset(opened);
    if (result != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(opened));
    }
  }
  void Execute(const std::string& statement) {
    if (sqlite3_exec(connection_.get(), statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(connection_.get()));
    }
  }

  std::string path_;
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_{nullptr, &sqlite3_close};
};

class CPostgresqlData : public CInstallationData {
 public:
  CPostgresqlData(std::size_t tables, std::size_t rows) : schema_("data") {
    const std::string words = Location().substr(Location().find("://") + 3);
    const std::unique_ptr<PGconn, void (*)(PGconn*)> connection(PQconnectdb(words.c_str()), &PQfinish);
    const auto execute = [&connection](const std::string& statement) {
      const std::unique_ptr<PGresult, void (*)(PGresult*)> result(PQexec(connection.get(), statement.c_str()),
                                                                  &PQclear);
      if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) {
        throw std::runtime_error(PQerrorMessage(connection.get()));
      }
    };
    for (std::size_t i = 0; i < tables; ++i) {
      const std::string table = "\"" + TableName(i) + "\"";
      execute("CREATE UNLOGGED TABLE " + table + " " + kColumns);
      execute("INSERT INTO " + table + " SELECT " + kValues + " FROM generate_series(1::bigint, " +
              std::to_string(rows) + ") AS numbers(i)");
      execute("VACUUM ANALYZE " + table);
    }
  }

  std::string Location() const override { return schema_.Location(); }

 private:
  CServerSchema schema_;
};

struct SKind {
  const char* rule;
  EMeasure measure;
  const char* column;
  const char* limit;
};

constexpr SKind kKinds[] = {
    {"length-shrinks", EMeasure::kLongerThan, "code", "20"},
    {"length-shrinks", EMeasure::kLongerThan, "name", "20"},
    {"length-shrinks", EMeasure::kLongerThan, "note", "60"},
    {"max-tightens", EMeasure::kAbove, "quantity", "1000000"},
    {"min-tightens", EMeasure::kBelow, "mass", "1"},
    {"precision-shrinks", EMeasure::kRounded, "mass", "1"},
    {"type-narrowed", EMeasure::kOutsideType, "quantity", "int32"},
    {"max-tightens", EMeasure::kAbove, "size", "100.5"},
    {"property-withdrawn", EMeasure::kNotNull, "name", ""},
    {"table-moved", EMeasure::kAnyRow, "", ""},
};

}  // namespace

std::unique_ptr<CInstallationData> MakeSqliteData(std::size_t tables, std::size_t rows) {
  return std::make_unique<CSqliteData>(tables, rows);
}

std::unique_ptr<CInstallationData> MakePostgresqlData(std::size_t tables, std::size_t rows) {
  return std::make_unique<CPostgresqlData>(tables, rows);
}

const std::vector<std::string>& LookedUpColumns() {
  static const std::vector<std::string> columns = {"code", "name", "note", "quantity", "mass", "size"};
  return columns;
}

std::vector<metareview::SLookup> MakeLookups(std::size_t tables, std::size_t findings) {
  std::vector<metareview::SLookup> lookups;
  for (std::size_t i = 0; i < findings; ++i) {
    const SKind& kind = kKinds[i / tables % std::size(kKinds)];
    const std::string path = "class/C" + std::to_string(i % tables) + "/property/P" + std::to_string(i / tables);
    std::vector<std::string> columns;
    if (*kind.column != '\0') {
      columns.emplace_back(kind.column);
    }
    lookups.push_back(
        {i, path, kind.rule, CInstallationData::TableName(i % tables), columns, kind.measure, kind.limit});
  }
  return lookups;
}

}  // namespace bench
