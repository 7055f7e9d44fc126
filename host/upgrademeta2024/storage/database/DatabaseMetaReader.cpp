#include "upgrademeta2024/storage/database/DatabaseMetaReader.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/MetaRules.h"
#include "upgrademeta2024/storage/database/Database.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/Statements.h"

namespace metadb {
namespace {

/// An element under construction.
template <typename Values>
struct SOwner {
  std::uint64_t ordinal = 0;
  Values values;
};

constexpr const char* kOrdinal = "ordinal";
constexpr const char* kNameColumn = metamembers::kProperty.front().name;

/// Takes the values of the current row.
template <typename Members, typename Values>
void Take(const CRows& rows, const Members& members, Values& values) {
  for (std::size_t i = 0; i < members.size(); ++i) {
    metamembers::Visit(
        members[i], values, [&](auto& text) { text = rows.Text(i); },
        [&](auto& number) { number = static_cast<std::decay_t<decltype(number)>>(rows.Number(i)); });
  }
}

void RequireUnique(metarules::CUniqueNames& names, const CRows& rows, const std::string& name) {
  if (const std::string problem = names.Add({kOrdinal, rows.Ordinal(), name}); !problem.empty()) {
    rows.Fail(kNameColumn, problem);
  }
}

/// Reads a metamodel, table by table. Each table comes in the order of its lists, through these layers:
/// - CDatabase::ReadRows asks the database and hands on one row after the other, whatever its values are.
/// - CRows holds one row. It checks that rows come in order and that each value may be in its column.
/// - ReadRows connects the two and counts for the progress line.
/// - ReadOwners makes a list of elements from a table of classes, links or behaviors; ReadItems finds, for a row of
///   one of the other tables, the element that it belongs to. Both tables being ordered, that is mostly the one of
///   the row before.
/// - ReadClasses and ReadBehaviors put the elements together, and then into the dictionary.
/// Where a row is wrong and the file is damaged, the damage is reported, not the row.
class CTableReader {
 public:
  CTableReader(soci::session& session, const CDatabase& database, SReading& reading, CLoadProgress& progress,
               const RowFaultHandler& onFault)
      : session_(session),
        database_(database),
        dialect_(database.Dialect(session)),
        reading_(reading),
        progress_(progress),
        onFault_(onFault) {}

  std::shared_ptr<CMetaDictionary2024> Read() {
    FindViews();
    RequireTables();
    Execute(session_, dialect_.beginReading);
    reading_.activity = "the metamodel cannot be read";
    if (ReadHead()) {
      ReadCounts();
    } else {
      kvx::CFileNotes::Tell(database_.Describe() +
                            ": the numbers of rows of its tables are missing, so that lost rows may go unnoticed; " +
                            (views_.count(kHeadTable) == 0
                                 ? "copy the metamodel onto itself once to add them"
                                 : "let the view metamodel count them, as schema_version 2 does"));
      database_.RequireSound(session_);
    }
    auto dictionary = std::make_shared<CMetaDictionary2024>();
    ReadClasses<CMetaClass2024>(kClasses, kClassBehaviors, kClassProperties,
                                [&](const auto& element) { dictionary->AddClass(element); });
    ReadClasses<CMetaLink2024>(kLinks, kLinkBehaviors, kLinkProperties,
                               [&](const auto& element) { dictionary->AddLink(element); });
    ReadBehaviors(*dictionary);
    return dictionary;
  }

 private:
  /// A view shows what its SELECT gives: there is nothing to be stored anew.
  void FindViews() {
    const std::vector<std::string> names = TableNames();
    for (std::vector<std::string>& view : Query(session_, dialect_.listViews, 1)) {
      if (std::find(names.begin(), names.end(), view.front()) != names.end()) {
        views_.insert(std::move(view.front()));
      }
    }
  }

  /// What to do about a table: `otherwise` unless it is a view.
  std::string AdviceOn(const std::string& table, const std::string& otherwise) const {
    return views_.count(table) == 0 ? otherwise : "correct the SELECT of the view " + table + " or what it reads";
  }

  void RequireTables() {
    const std::vector<std::string> missing = MissingTables(session_, dialect_);
    if (missing.empty()) {
      return;
    }
    if (missing.size() == TableNames().size()) {
      throw SContentError{"the database holds no metamodel; store one in it"};
    }
    throw SContentError{"the metamodel is incomplete: missing " + Join(missing) + "; " +
                        (views_.empty() ? "store it anew" : "make what is missing beside the views that are there")};
  }

  /// Whether the database keeps the numbers of its rows.
  bool ReadHead() {
    const std::string table = "table " + std::string(kHeadTable);
    BeginTable(kHeadTable);
    const auto rows =
        Query(session_, "SELECT generation, schema_version FROM " + dialect_.schema + kHeadTable + " LIMIT 2", 2);
    if (rows.empty()) {
      throw SContentError{table + " has no row" +
                          (views_.count(kHeadTable) == 0 ? ": the metamodel was not stored to its end" : "") + "; " +
                          AdviceOn(kHeadTable, "store it anew")};
    }
    const std::string& generation = rows.front()[0];
    const std::string& version = rows.front()[1];
    const bool hasCounts = version == std::to_string(kSchemaVersion);
    if (!hasCounts && version != std::to_string(kSchemaVersionWithoutCounts)) {
      throw SContentError{table + ", row 1: schema_version: expected " + std::to_string(kSchemaVersionWithoutCounts) +
                          " or " + std::to_string(kSchemaVersion) + ", found " + CStringHelper::ToVisible(version) +
                          "; " + AdviceOn(kHeadTable, "read it with the program that stored it, or store it anew")};
    }
    if (generation != std::to_string(CMetaDictionary2024::kGeneration)) {
      throw SContentError{table + ", row 1: generation: " + metarules::WrongGeneration(generation)};
    }
    if (rows.size() > 1) {
      throw SContentError{table + " has more than one row; a database holds one metamodel"};
    }
    return hasCounts;
  }

  void ReadCounts() {
    std::vector<std::string> columns;
    for (const STable* table : ListTables()) {
      columns.push_back(CountColumn(*table));
    }
    const std::vector<std::string> counts =
        Query(session_, "SELECT " + Join(columns) + " FROM " + dialect_.schema + kHeadTable, columns.size()).at(0);
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::optional<std::uint64_t> count = ParseNumber(counts[i], kMaxInteger);
      if (!count) {
        onFault_("table " + std::string(kHeadTable) + ", row 1: " + columns[i] + ": " +
                 metarules::WrongNumber(kMaxInteger, counts[i]) + "; " + AdviceOn(kHeadTable, kStoreAnew));
        continue;
      }
      counts_[ListTables()[i]] = *count;
      total += *count;
    }
    progress_.SetTotal(total);
  }

  template <typename Element, typename Add>
  void ReadClasses(const STable& elements, const STable& behaviors, const STable& properties, const Add& add) {
    auto owners = ReadOwners<SMetaClassValues2024>(elements, metamembers::kClass);
    ReadItems(behaviors, owners,
              [](auto& owner, const CRows& rows) { owner.values.behaviors.emplace_back(rows.Text(0)); });
    ReadProperties(properties, owners);
    for (auto& owner : owners) {
      add(std::make_shared<Element>(std::move(owner.values)));
    }
  }

  void ReadBehaviors(CMetaDictionary2024& dictionary) {
    auto owners = ReadOwners<SMetaBehaviorValues2024>(kBehaviors, metamembers::kBehavior);
    metarules::CUniqueNames names;
    ReadItems(kMethods, owners, [&names](auto& owner, const CRows& rows) {
      if (owner.values.methods.empty()) {
        names = {};
      }
      metamembers::SMethodValues values;
      Take(rows, metamembers::kMethod, values);
      RequireUnique(names, rows, values.internalName);
      owner.values.methods.push_back(
          std::make_shared<CMetaMethod2024>(std::move(values.internalName), std::move(values.displayName)));
    });
    ReadProperties(kBehaviorProperties, owners);
    for (auto& owner : owners) {
      dictionary.AddBehavior(std::make_shared<CMetaBehavior2024>(std::move(owner.values)));
    }
  }

  /// The elements of a table, in ascending order of their ordinals.
  template <typename Values, typename Members>
  std::vector<SOwner<Values>> ReadOwners(const STable& table, const Members& members) {
    std::vector<SOwner<Values>> owners;
    metarules::CUniqueNames names;
    ReadRows(table, [&](const CRows& rows) {
      SOwner<Values>& owner = owners.emplace_back();
      owner.ordinal = rows.Ordinal();
      Take(rows, members, owner.values);
      RequireUnique(names, rows, owner.values.internalName);
    });
    return owners;
  }

  /// Calls `item(owner, rows)` for each row of a table with owners.
  template <typename Values, typename Item>
  void ReadItems(const STable& table, std::vector<SOwner<Values>>& owners, const Item& item) {
    auto owner = owners.end();
    std::optional<std::uint64_t> missing;
    ReadRows(table, [&](const CRows& rows) {
      if (missing == rows.Owner()) {
        return;
      }
      if (owner == owners.end() || owner->ordinal != rows.Owner()) {
        owner = std::lower_bound(owners.begin(), owners.end(), rows.Owner(),
                                 [](const SOwner<Values>& a, std::uint64_t ordinal) { return a.ordinal < ordinal; });
        if (owner == owners.end() || owner->ordinal != rows.Owner()) {
          rows.Fail(table.ownerColumn, "table " + std::string(table.owner->name) + " has no row of this ordinal");
          missing = rows.Owner();
          return;
        }
      }
      item(*owner, rows);
    });
  }

  template <typename Values>
  void ReadProperties(const STable& table, std::vector<SOwner<Values>>& owners) {
    SOwner<Values>* last = nullptr;
    std::vector<std::uint64_t> ordinals;
    const auto finishLast = [&] {
      if (last != nullptr) {
        last->values.properties.Finish();
        RequireUniqueNames(last->values.properties, table, last->ordinal, ordinals);
      }
      ordinals.clear();
    };
    ReadItems(table, owners, [&](auto& owner, const CRows& rows) {
      if (last != &owner) {
        finishLast();
        last = &owner;
      }
      SMetaPropertyValues2024 values;
      Take(rows, metamembers::kProperty, values);
      owner.values.properties.Add(values);
      ordinals.push_back(rows.Ordinal());
    });
    finishLast();
  }

  /// Calls `row(rows)` for each row of a table.
  template <typename Row>
  void ReadRows(const STable& table, const Row& row) {
    BeginTable(table.name);
    CRows rows(table, onRowFault_);
    database_.ReadRows(session_, table, SelectStatement(table, dialect_), [&](const std::vector<SValue>& values) {
      if (rows.Next(values)) {
        row(rows);
      }
      progress_.SetDone(rowsBefore_ + rows.Count());
    });
    RequireCount(table, rows.Count());
    rowsBefore_ += rows.Count();
  }

  /// A page that has lost rows, or one of another time or place, reads without an error.
  void RequireCount(const STable& table, std::uint64_t count) const {
    if (const auto expected = counts_.find(&table); expected != counts_.end() && expected->second != count) {
      const bool isView = views_.count(table.name) != 0 || views_.count(kHeadTable) != 0;
      onFault_(reading_.activity + ": the database is damaged or was edited: the table has " + std::to_string(count) +
               " rows, and table " + kHeadTable + " says " + std::to_string(expected->second) +
               "; restore it from a copy; " +
               (isView ? "where views are wrong, correct their SELECT"
                       : "after an edit, correct " + CountColumn(table) + " there"));
    }
  }

  /// `ordinals` are those of the properties, in their order.
  void RequireUniqueNames(const CMetaPropertyTable2024& properties, const STable& table, std::uint64_t owner,
                          const std::vector<std::uint64_t>& ordinals) {
    if (!properties.FindRepeatedName()) {
      return;
    }
    metarules::CUniqueNames names;
    for (std::size_t i = 0; i < ordinals.size(); ++i) {
      const std::string problem = names.Add({kOrdinal, ordinals[i], properties.At(i).GetInternalName()});
      if (!problem.empty()) {
        TellRowFault(RowFault(table, {std::to_string(owner), std::to_string(ordinals[i])}, kNameColumn, problem));
      }
    }
  }

  void TellRowFault(const std::string& message) {
    // What a damaged page holds is nobody's mistake.
    if (!isSound_) {
      database_.RequireSound(session_);
      isSound_ = true;
    }
    onFault_(message + "; " + rowAdvice_);
  }

  void BeginTable(const std::string& table) {
    reading_.activity = "table " + table + " cannot be read";
    reading_.wayOut = AdviceOn(table, kStoreAnew);
    rowAdvice_ = AdviceOn(table, std::string("correct the row or ") + kStoreAnew);
  }

  soci::session& session_;
  const CDatabase& database_;
  const SDatabaseDialect dialect_;
  SReading& reading_;
  CLoadProgress& progress_;
  const RowFaultHandler& onFault_;
  const RowFaultHandler onRowFault_ = [this](const std::string& message) { TellRowFault(message); };
  std::set<std::string> views_;
  std::string rowAdvice_;
  // Whether the file has been found undamaged.
  bool isSound_ = false;
  std::uint64_t rowsBefore_ = 0;
  // Empty when the database does not say.
  std::map<const STable*, std::uint64_t> counts_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetamodel(soci::session& session, const CDatabase& database, SReading& reading,
                                                   CLoadProgress& progress, const RowFaultHandler& onFault) {
  return CTableReader(session, database, reading, progress, onFault).Read();
}

std::vector<std::string> MissingTables(soci::session& session, const SDatabaseDialect& dialect) {
  std::vector<std::string> missing;
  for (const std::string& table : TableNames()) {
    const std::string name = dialect.schema + table;
    int count = 0;
    Execute(session, dialect.countTables, soci::use(name, "name"), soci::into(count));
    if (count == 0) {
      missing.push_back(table);
    }
  }
  return missing;
}

bool HasTables(soci::session& session, const SDatabaseDialect& dialect) {
  return MissingTables(session, dialect).size() < TableNames().size();
}

}  // namespace metadb
