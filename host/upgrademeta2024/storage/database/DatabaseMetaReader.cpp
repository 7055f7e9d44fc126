#include "upgrademeta2024/storage/database/DatabaseMetaReader.h"

#include <algorithm>
#include <cstdint>
#include <list>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/database/Database.h"
#include "upgrademeta2024/storage/database/DatabaseDialect.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"

namespace metadb {
namespace {

/// The ordinals of a list's items in their order. They are nearly always 0, 1, 2 and so on.
class COrdinals {
 public:
  void Add(std::uint64_t ordinal) {
    if (others_.empty() && ordinal == first_) {
      ++first_;
    } else {
      others_.push_back(ordinal);
    }
  }
  std::uint64_t operator[](std::size_t position) const {
    return position < first_ ? position : others_[position - first_];
  }

 private:
  // How many there are before the first that is not its own position.
  std::uint64_t first_ = 0;
  std::vector<std::uint64_t> others_;
};

/// An element under construction.
template <typename Values>
struct SOwner {
  std::uint64_t ordinal = 0;
  Values values;
  COrdinals propertyOrdinals;
};

struct SNamedRow {
  std::uint64_t ordinal;
  std::string name;
};

[[noreturn]] void FailRepeated(const std::string& place, const std::string& name, const SNamedRow& earlier) {
  throw SContentError{place + ": internal_name: the name \"" + CStringHelper::ToVisible(name) + "\" repeats \"" +
                      CStringHelper::ToVisible(earlier.name) + "\" of ordinal " + std::to_string(earlier.ordinal) +
                      " of the same list; names must differ in more than letter case"};
}

/// The names of one list, ASCII case ignored.
class CNames {
 public:
  /// Null, or the row that has the name already.
  const SNamedRow* Add(std::uint64_t ordinal, const std::string& name) {
    std::string key = name;
    CStringHelper::ToLower(key);
    const auto [row, isNew] = rows_.emplace(std::move(key), SNamedRow{ordinal, name});
    return isNew ? nullptr : &row->second;
  }
  void Clear() { rows_.clear(); }

 private:
  std::unordered_map<std::string, SNamedRow> rows_;
};

class CReader {
 public:
  CReader(soci::session& session, const CDatabase& database, std::string& activity, CLoadProgress& progress)
      : session_(session), database_(database), activity_(activity), progress_(progress) {}

  std::shared_ptr<CMetaDictionary2024> Read() {
    RequireTables();
    for (const std::string& statement : database_.Dialect().beginReading) {
      session_ << statement;
    }
    activity_ = "the metamodel cannot be read";
    database_.RequireSoundViews(session_);
    ReadHead();
    if (progress_.IsObserved()) {
      CountRows();
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
  void RequireTables() {
    const std::vector<std::string> missing = MissingTables(session_, database_.Dialect());
    if (missing.empty()) {
      return;
    }
    if (missing.size() == TableNames().size()) {
      throw SContentError{"the database holds no metamodel; store one in it"};
    }
    std::string names;
    for (const std::string& table : missing) {
      names += (names.empty() ? "" : ", ") + table;
    }
    throw SContentError{"the metamodel is incomplete: missing " + names + "; store it anew"};
  }

  void CountRows() {
    std::uint64_t total = 0;
    for (const STable* table : ListTables()) {
      BeginTable(table->name);
      std::uint64_t rows = 0;
      session_ << "SELECT count(*) FROM " << table->name, soci::into(rows);
      total += rows;
    }
    progress_.SetTotal(total);
  }

  void ReadHead() {
    const std::string table = "table " + std::string(kHeadTable);
    BeginTable(kHeadTable);
    database_.RequireSound(session_, kHeadTable);
    std::string generation;
    std::string version;
    soci::indicator hasGeneration = soci::i_null;
    soci::indicator hasVersion = soci::i_null;
    soci::statement head = (session_.prepare << "SELECT generation, schema_version FROM " << kHeadTable,
                            soci::into(generation, hasGeneration), soci::into(version, hasVersion));
    head.execute();
    if (!head.fetch()) {
      throw SContentError{table + " has no row: the metamodel was not stored to its end; store it anew"};
    }
    if (hasVersion != soci::i_ok || version != std::to_string(kSchemaVersion)) {
      throw SContentError{table + ", row 1: schema_version: expected " + std::to_string(kSchemaVersion) + ", found " +
                          (hasVersion == soci::i_ok ? CStringHelper::ToVisible(version) : "NULL") +
                          "; read it with the program that stored it, or store it anew"};
    }
    if (hasGeneration != soci::i_ok || generation != std::to_string(kGeneration)) {
      throw SContentError{table + ", row 1: generation: the metamodel is of generation " +
                          (hasGeneration == soci::i_ok ? CStringHelper::ToVisible(generation) : "NULL") + "; only " +
                          std::to_string(kGeneration) + " can be read"};
    }
    if (head.fetch()) {
      throw SContentError{table + " has more than one row; a database holds one metamodel"};
    }
  }

  template <typename Element, typename Add>
  void ReadClasses(const STable& elements, const STable& behaviors, const STable& properties, const Add& add) {
    auto owners = ReadOwners<SMetaClassValues2024>(elements, [](SMetaClassValues2024& values, const CRows& rows) {
      values.classId = rows.Number(SElementColumns::kClassId);
      values.tableName = rows.Text(SElementColumns::kTableName);
    });
    ReadItems(behaviors, owners,
              [](auto& owner, const CRows& rows) { owner.values.behaviors.emplace_back(rows.Text(0)); });
    ReadProperties(properties, owners);
    AddElements<Element>(properties, owners, add);
  }

  void ReadBehaviors(CMetaDictionary2024& dictionary) {
    auto owners = ReadOwners<SMetaBehaviorValues2024>(kBehaviors, [](SMetaBehaviorValues2024&, const CRows&) {});
    CNames names;
    ReadItems(kMethods, owners, [&names](auto& owner, const CRows& rows) {
      if (owner.values.methods.empty()) {
        names.Clear();
      }
      const std::string name(rows.Text(SElementColumns::kInternalName));
      if (const SNamedRow* earlier = names.Add(rows.Ordinal(), name); earlier != nullptr) {
        FailRepeated(RowPlace(kMethods, owner.ordinal, rows.Ordinal()), name, *earlier);
      }
      owner.values.methods.push_back(
          std::make_shared<CMetaMethod2024>(name, std::string(rows.Text(SElementColumns::kDisplayName))));
    });
    ReadProperties(kBehaviorProperties, owners);
    AddElements<CMetaBehavior2024>(kBehaviorProperties, owners,
                                   [&](const auto& element) { dictionary.AddBehavior(element); });
  }

  /// The elements of a table, in ascending order of their ordinals, with what `fill(values, rows)` reads beside the
  /// names.
  template <typename Values, typename Fill>
  std::vector<SOwner<Values>> ReadOwners(const STable& table, const Fill& fill) {
    std::vector<SOwner<Values>> owners;
    CNames names;
    ReadRows(table, [&](const CRows& rows) {
      SOwner<Values> owner;
      owner.ordinal = rows.Ordinal();
      owner.values.internalName = rows.Text(SElementColumns::kInternalName);
      owner.values.displayName = rows.Text(SElementColumns::kDisplayName);
      fill(owner.values, rows);
      const std::string& name = owner.values.internalName;
      if (const SNamedRow* earlier = names.Add(owner.ordinal, name); earlier != nullptr) {
        FailRepeated(RowPlace(table, owner.ordinal), name, *earlier);
      }
      owners.push_back(std::move(owner));
    });
    return owners;
  }

  /// Calls `item(owner, rows)` for each row of a table with owners.
  template <typename Values, typename Item>
  void ReadItems(const STable& table, std::vector<SOwner<Values>>& owners, const Item& item) {
    auto owner = owners.end();
    ReadRows(table, [&](const CRows& rows) {
      if (owner == owners.end() || owner->ordinal != rows.Owner()) {
        owner = std::lower_bound(owners.begin(), owners.end(), rows.Owner(),
                                 [](const SOwner<Values>& a, std::uint64_t ordinal) { return a.ordinal < ordinal; });
        if (owner == owners.end() || owner->ordinal != rows.Owner()) {
          rows.Fail(table.ownerColumn, "table " + std::string(table.owner->name) + " has no row of this ordinal");
        }
      }
      item(*owner, rows);
    });
  }

  template <typename Values>
  void ReadProperties(const STable& table, std::vector<SOwner<Values>>& owners) {
    using Columns = SPropertyColumns;
    SOwner<Values>* last = nullptr;
    ReadItems(table, owners, [&last](auto& owner, const CRows& rows) {
      if (last != nullptr && last != &owner) {
        // While its texts are still in the processor's cache.
        last->values.properties.Finish();
      }
      last = &owner;
      SMetaPropertyValues2024 values;
      values.internalName = rows.Text(Columns::kInternalName);
      values.displayName = rows.Text(Columns::kDisplayName);
      values.field = rows.Text(Columns::kField);
      values.type = rows.Text(Columns::kType);
      values.length = rows.Number(Columns::kLength);
      values.defaultValue = rows.Text(Columns::kDefaultValue);
      values.precision = static_cast<std::uint16_t>(rows.Number(Columns::kPrecision));
      values.max = rows.Text(Columns::kMax);
      values.min = rows.Text(Columns::kMin);
      values.lookupClass = rows.Text(Columns::kLookupInternalName);
      owner.values.properties.Add(values);
      owner.propertyOrdinals.Add(rows.Ordinal());
    });
  }

  template <typename Element, typename Values, typename Add>
  void AddElements(const STable& propertyTable, std::vector<SOwner<Values>>& owners, const Add& add) {
    for (SOwner<Values>& owner : owners) {
      const auto element = std::make_shared<Element>(std::move(owner.values));
      const CMetaPropertyTable2024& properties = element->GetPropertyTable();
      if (const auto repeated = properties.FindRepeatedName()) {
        const auto [first, second] = *repeated;
        FailRepeated(RowPlace(propertyTable, owner.ordinal, owner.propertyOrdinals[second]),
                     properties.At(second).GetInternalName(),
                     {owner.propertyOrdinals[first], properties.At(first).GetInternalName()});
      }
      add(element);
    }
  }

  /// Calls `row(rows)` for each row of a table.
  template <typename Row>
  void ReadRows(const STable& table, const Row& row) {
    BeginTable(table.name);
    CRows rows(table);
    try {
      database_.ReadRows(session_, table, [&](const std::vector<SValue>& values) {
        rows.Next(values);
        row(rows);
        progress_.SetDone(rowsBefore_ + rows.Count());
      });
    } catch (const SContentError&) {
      // What a damaged page holds is nobody's mistake.
      database_.RequireSound(session_, table.name);
      throw;
    }
    rowsBefore_ += rows.Count();
  }

  void BeginTable(const std::string& table) { activity_ = "table " + table + " cannot be read"; }

  soci::session& session_;
  const CDatabase& database_;
  std::string& activity_;
  CLoadProgress& progress_;
  std::uint64_t rowsBefore_ = 0;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetamodel(soci::session& session, const CDatabase& database,
                                                   std::string& activity, CLoadProgress& progress) {
  return CReader(session, database, activity, progress).Read();
}

std::vector<std::string> MissingTables(soci::session& session, const SDatabaseDialect& dialect) {
  std::vector<std::string> missing;
  for (const std::string& table : TableNames()) {
    int count = 0;
    session << dialect.countTables, soci::use(table, "name"), soci::into(count);
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
