#include "fuzz/support/PlainReading.h"

#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <iomanip>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "fuzz/support/Require.h"

namespace fuzz {
namespace {

struct SFault {
  std::string reason;
};

[[noreturn]] void Fail(const std::string& reason) {
  throw SFault{reason};
}

struct SCell {
  int type;
  std::string text;
};

using Row = std::vector<SCell>;

class CFile {
 public:
  CFile(const std::string& path, int flags) {
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
    database_.reset(database);
    Check(result);
  }

  void Execute(const std::string& statements) const {
    Check(sqlite3_exec(database_.get(), statements.c_str(), nullptr, nullptr, nullptr));
  }

  std::vector<Row> Query(const std::string& query) const {
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(database_.get(), query.c_str(), -1, &prepared, nullptr), query);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared, &sqlite3_finalize);
    std::vector<Row> rows;
    int result = sqlite3_step(prepared);
    for (; result == SQLITE_ROW; result = sqlite3_step(prepared)) {
      Row row;
      for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
        const int type = sqlite3_column_type(prepared, i);
        const unsigned char* text = sqlite3_column_text(prepared, i);
        const int size = sqlite3_column_bytes(prepared, i);
        row.push_back({type, text == nullptr ? std::string() : std::string(text, text + size)});
      }
      rows.push_back(std::move(row));
    }
    if (result != SQLITE_DONE) {
      Check(result, query);
    }
    return rows;
  }

  std::string QueryOne(const std::string& query) const {
    const std::vector<Row> rows = Query(query);
    return rows.empty() ? std::string() : rows.front().front().text;
  }

 private:
  void Check(int result, const std::string& query = "") const {
    if (result != SQLITE_OK) {
      Fail(sqlite3_errmsg(database_.get()) + (": " + query));
    }
  }

  std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database_{nullptr, &sqlite3_close};
};

constexpr std::uint64_t kMaxInteger = std::numeric_limits<std::int64_t>::max();

/// Also digits as text.
std::uint64_t Number(const SCell& cell, std::uint64_t max) {
  const bool isWhole = cell.type == SQLITE_INTEGER || cell.type == SQLITE_TEXT;
  const bool isDigits = !cell.text.empty() && cell.text.find_first_not_of("0123456789") == std::string::npos;
  const std::size_t first = std::min(cell.text.find_first_not_of('0'), cell.text.size());
  constexpr std::size_t kMostDigits = 19;
  if (!isWhole || !isDigits || cell.text.size() - first > kMostDigits) {
    Fail("no number: " + cell.text);
  }
  const std::uint64_t number = std::stoull(cell.text);
  return number <= max ? number : (Fail("too large: " + cell.text), 0);
}

/// How many bytes the character takes that begins at `at`; 0 for what is not UTF-8.
std::size_t CharacterSize(const std::string& text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U; };
  const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
  const unsigned lead = byte(0);
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead < 0xE0) {
    return follows(1) ? 2 : 0;
  }
  if (lead >= 0xE0 && lead < 0xF0) {
    const bool isOverlong = lead == 0xE0 && byte(1) < 0xA0;
    const bool isSurrogate = lead == 0xED && byte(1) >= 0xA0;
    return follows(1) && follows(2) && !isOverlong && !isSurrogate ? 3 : 0;
  }
  if (lead >= 0xF0 && lead < 0xF5) {
    const bool isOutside = (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) >= 0x90);
    return follows(1) && follows(2) && follows(3) && !isOutside ? 4 : 0;
  }
  return 0;
}

const std::string& Text(const SCell& cell) {
  if (cell.type != SQLITE_TEXT && cell.type != SQLITE_INTEGER) {
    Fail("no text");
  }
  for (std::size_t at = 0; at < cell.text.size();) {
    const std::size_t size = cell.text[at] == '\0' ? 0 : CharacterSize(cell.text, at);
    if (size == 0) {
      Fail("no UTF-8 text");
    }
    at += size;
  }
  return cell.text;
}

/// The rows of one list by their ordinals; the columns that follow the keys.
using List = std::map<std::uint64_t, Row>;
/// The lists of a table by the ordinals of their owners; of a table without owners there is one, of owner 0.
using Table = std::map<std::uint64_t, List>;

class CReading {
 public:
  CReading(const std::string& path, SPlainReading& reading) : file_(path, SQLITE_OPEN_READONLY), reading_(reading) {
    const std::uintmax_t pageSize = std::stoull("0" + file_.QueryOne("PRAGMA page_size"));
    if (pageSize == 0 || std::filesystem::file_size(path) % pageSize != 0) {
      Fail("a part of a page");
    }
    file_.Execute("PRAGMA trusted_schema = OFF");
  }

  void Read() {
    ReadHead();
    const Table classes = ReadTable("meta_classes", "", kClass);
    const Table classBehaviors = ReadTable("meta_class_behaviors", "class_ordinal", "behavior");
    const Table classProperties = ReadTable("meta_class_properties", "class_ordinal", kProperty);
    const Table links = ReadTable("meta_links", "", kClass);
    const Table linkBehaviors = ReadTable("meta_link_behaviors", "link_ordinal", "behavior");
    const Table linkProperties = ReadTable("meta_link_properties", "link_ordinal", kProperty);
    const Table behaviors = ReadTable("meta_behaviors", "", kBehavior);
    const Table methods = ReadTable("meta_methods", "behavior_ordinal", kBehavior);
    const Table behaviorProperties = ReadTable("meta_behavior_properties", "behavior_ordinal", kProperty);
    PutClasses("class", classes, classBehaviors, classProperties);
    PutClasses("link", links, linkBehaviors, linkProperties);
    RequireOwners(methods, behaviors);
    RequireOwners(behaviorProperties, behaviors);
    for (const auto& [ordinal, row] : ListOf(behaviors, 0)) {
      text_ << "behavior " << std::quoted(Text(row[0])) << ' ' << std::quoted(Text(row[1])) << '\n';
      for (const auto& method : ListOf(methods, ordinal)) {
        text_ << "  method " << std::quoted(Text(method.second[0])) << ' ' << std::quoted(Text(method.second[1]))
              << '\n';
      }
      PutProperties(ListOf(behaviorProperties, ordinal));
    }
    reading_.text = text_.str();
  }

 private:
  static constexpr const char* kClass = "internal_name, display_name, class_id, table_name";
  static constexpr const char* kBehavior = "internal_name, display_name";
  static constexpr const char* kProperty =
      "internal_name, display_name, field, type, length, default_value, precision, max, min, lookup_internal_name";

  void ReadHead() {
    const std::vector<Row> rows = file_.Query("SELECT generation, schema_version FROM " + Known("metamodel"));
    if (rows.size() != 1 || rows[0][0].text != "2024" || (rows[0][1].text != "1" && rows[0][1].text != "2")) {
      Fail("no head");
    }
    reading_.hasCounts = rows[0][1].text == "2";
  }

  std::string Known(const std::string& table) const {
    if (file_.QueryOne("SELECT count(*) FROM sqlite_master WHERE type IN ('table', 'view') AND lower(name) = '" +
                       table + "'") == "0") {
      Fail("no " + table);
    }
    return table;
  }

  /// In the order in which the table itself has them, whatever indexes there are; the lists are put in order here.
  Table ReadTable(const std::string& name, const std::string& owner, const std::string& columns) {
    const std::vector<Row> rows = file_.Query("SELECT " + (owner.empty() ? "0" : owner) + ", ordinal, " + columns +
                                              " FROM " + Known(name) + " NOT INDEXED");
    Table table;
    std::map<std::uint64_t, std::set<std::string>> names;
    for (const Row& row : rows) {
      reading_.hasTextOrdinals |= row[0].type == SQLITE_TEXT || row[1].type == SQLITE_TEXT;
      const std::uint64_t list = Number(row[0], kMaxInteger);
      if (!table[list].emplace(Number(row[1], kMaxInteger), Row(row.begin() + 2, row.end())).second) {
        Fail("ordinal repeated in " + name);
      }
      if (columns != "behavior") {
        std::string folded = Text(row[2]);
        for (char& c : folded) {
          c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
        if (folded.empty() || !names[list].insert(folded).second) {
          Fail("name empty or repeated in " + name);
        }
      }
    }
    if (reading_.hasCounts) {
      const std::vector<Row> counts = file_.Query("SELECT " + name + "_rows FROM metamodel");
      // Of whatever type, as long as it reads as digits.
      if (Number({SQLITE_TEXT, counts.at(0)[0].text}, kMaxInteger) != rows.size()) {
        Fail("wrong number of rows in " + name);
      }
    }
    return table;
  }

  static const List& ListOf(const Table& table, std::uint64_t owner) {
    static const List empty;
    const auto list = table.find(owner);
    return list == table.end() ? empty : list->second;
  }

  static void RequireOwners(const Table& items, const Table& owners) {
    for (const auto& list : items) {
      if (ListOf(owners, 0).count(list.first) == 0) {
        Fail("no owner");
      }
    }
  }

  void PutClasses(const char* kind, const Table& classes, const Table& behaviors, const Table& properties) {
    RequireOwners(behaviors, classes);
    RequireOwners(properties, classes);
    for (const auto& [ordinal, row] : ListOf(classes, 0)) {
      text_ << kind << ' ' << std::quoted(Text(row[0])) << ' ' << std::quoted(Text(row[1])) << ' '
            << Number(row[2], std::numeric_limits<std::uint32_t>::max()) << ' ' << std::quoted(Text(row[3]));
      for (const auto& behavior : ListOf(behaviors, ordinal)) {
        text_ << ' ' << std::quoted(Text(behavior.second[0]));
      }
      text_ << '\n';
      PutProperties(ListOf(properties, ordinal));
    }
  }

  void PutProperties(const List& properties) {
    for (const auto& [ordinal, row] : properties) {
      text_ << "  property";
      for (std::size_t i = 0; i < row.size(); ++i) {
        if (i == 4) {
          text_ << ' ' << Number(row[i], std::numeric_limits<std::uint32_t>::max());
        } else if (i == 6) {
          text_ << ' ' << Number(row[i], std::numeric_limits<std::uint16_t>::max());
        } else {
          text_ << ' ' << std::quoted(Text(row[i]));
        }
      }
      text_ << '\n';
    }
  }

  CFile file_;
  SPlainReading& reading_;
  std::ostringstream text_;
};

}  // namespace

SPlainReading ReadPlainly(const std::string& path) {
  SPlainReading reading;
  try {
    CReading(path, reading).Read();
  } catch (const SFault& fault) {
    reading.fault = fault.reason.empty() ? "without a reason" : fault.reason;
  }
  return reading;
}

bool IsSoundPlainly(const std::string& path) {
  try {
    return CFile(path, SQLITE_OPEN_READONLY).QueryOne("PRAGMA integrity_check") == "ok";
  } catch (const SFault&) {
    return false;
  }
}

void ExecutePlainly(const std::string& path, const std::string& statements) {
  try {
    CFile(path, SQLITE_OPEN_READWRITE).Execute(statements);
  } catch (const SFault& fault) {
    Require(false, "the first files can be made", fault.reason);
  }
}

}  // namespace fuzz
