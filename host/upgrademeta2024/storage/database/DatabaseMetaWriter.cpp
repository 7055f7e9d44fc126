#include "upgrademeta2024/storage/database/DatabaseMetaWriter.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaMembers.h"
#include "upgrademeta2024/storage/MetaStorage.h"
#include "upgrademeta2024/storage/database/Database.h"
#include "upgrademeta2024/storage/database/DatabaseMetaReader.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"
#include "upgrademeta2024/storage/database/Statements.h"

namespace metadb {
namespace {

/// Fills one table. Several rows go into one statement: to a server each statement is one journey there and back.
class CInserter {
 public:
  CInserter(soci::session& session, const SDatabaseDialect& dialect, const STable& table)
      : session_(session), dialect_(dialect), table_(table), columns_(AllColumns(table)) {
    values_.resize(kRows * columns_.size());
  }

  /// Adds a row: the values of the key columns, then those of an element.
  template <typename Members, typename Values>
  void Add(std::initializer_list<std::size_t> keys, const Members& members, const Values& values) {
    BeginRow(keys);
    for (const auto& member : members) {
      metamembers::Visit(
          member, values, [this](std::string_view text) { Put(text); },
          [this](std::uint32_t number) { Put(std::to_string(number)); });
    }
    EndRow();
  }
  void Add(std::initializer_list<std::size_t> keys, std::string_view text) {
    BeginRow(keys);
    Put(text);
    EndRow();
  }

  /// Stores the rows that do not fill a statement. Answers with the number of all rows.
  std::uint64_t Finish() {
    if (count_ > 0) {
      Statement(count_ / columns_.size()).execute(/*withDataExchange=*/true);
    }
    return total_;
  }

 private:
  static constexpr std::size_t kRows = 50;

  void BeginRow(std::initializer_list<std::size_t> keys) {
    for (const std::size_t key : keys) {
      Put(std::to_string(key));
    }
  }

  void Put(std::string_view value) {
    values_[count_] = value;
    if (const char* fault = TextFault(value); fault != nullptr) {
      const std::size_t column = count_ % columns_.size();
      const auto row = values_.begin() + static_cast<std::ptrdiff_t>(count_ - column);
      const std::vector<std::string> keys(row, row + static_cast<std::ptrdiff_t>(KeyColumns(table_).size()));
      throw SContentError{RowPlace(table_, keys) + ": " + columns_[column] + ": " + fault +
                          ", which a database does not hold; change it in the source"};
    }
    ++count_;
  }

  void EndRow() {
    ++total_;
    if (count_ == values_.size()) {
      if (!full_) {
        full_.emplace(Statement(kRows));
      }
      full_->execute(/*withDataExchange=*/true);
      count_ = 0;
    }
  }

  /// Stores the first so many rows.
  soci::statement Statement(std::size_t rows) {
    soci::statement statement(session_);
    statement.alloc();
    for (std::size_t i = 0; i < rows * columns_.size(); ++i) {
      statement.exchange(soci::use(values_[i]));
    }
    statement.prepare(InsertStatement(table_, rows, dialect_));
    statement.define_and_bind();
    return statement;
  }

  soci::session& session_;
  const SDatabaseDialect& dialect_;
  const STable& table_;
  std::optional<soci::statement> full_;
  std::vector<std::string> columns_;
  // Of the rows that are still to be stored, one after the other.
  std::vector<std::string> values_;
  std::size_t count_ = 0;
  std::uint64_t total_ = 0;
};

class CTableWriter {
 public:
  CTableWriter(soci::session& session, const SDatabaseDialect& dialect) : session_(session), dialect_(dialect) {}

  void Write(const CMetaDictionary2024& dictionary) {
    WriteClasses(kClasses, kClassBehaviors, kClassProperties, dictionary.GetClasses());
    WriteClasses(kLinks, kLinkBehaviors, kLinkProperties, dictionary.GetLinks());
    WriteBehaviors(dictionary.GetBehaviors());
  }

  /// The row of the head table, once everything else is written.
  void WriteHead() {
    std::string values = std::to_string(CMetaDictionary2024::kGeneration) + ", " + std::to_string(kSchemaVersion);
    for (const STable* table : ListTables()) {
      values += ", " + std::to_string(counts_.at(table));
    }
    Execute(session_,
            "INSERT INTO " + dialect_.schema + kHeadTable + " (" + Join(HeadColumns()) + ") VALUES (" + values + ")");
  }

 private:
  template <typename Element>
  using List = std::list<std::shared_ptr<Element>>;

  template <typename Element>
  void WriteClasses(const STable& elements, const STable& behaviors, const STable& properties,
                    const List<Element>& classes) {
    WriteItems(elements, classes, [](CInserter& rows, std::size_t ordinal, const Element& element) {
      rows.Add({ordinal}, metamembers::kClass, element.GetValues());
    });
    WriteItems(behaviors, classes, [](CInserter& rows, std::size_t owner, const Element& element) {
      std::size_t ordinal = 0;
      for (const std::string& name : element.GetValues().behaviors) {
        rows.Add({owner, ordinal++}, name);
      }
    });
    WriteItems(properties, classes, AddProperties<Element>);
  }

  void WriteBehaviors(const List<CMetaBehavior2024>& behaviors) {
    using Element = CMetaBehavior2024;
    WriteItems(kBehaviors, behaviors, [](CInserter& rows, std::size_t ordinal, const Element& element) {
      rows.Add({ordinal}, metamembers::kBehavior, element.GetValues());
    });
    WriteItems(kMethods, behaviors, [](CInserter& rows, std::size_t owner, const Element& element) {
      std::size_t ordinal = 0;
      for (const std::shared_ptr<CMetaMethod2024>& method : element.GetValues().methods) {
        rows.Add({owner, ordinal++}, metamembers::kMethod,
                 metamembers::SMethodValues{method->GetInternalName(), method->GetDisplayName()});
      }
    });
    WriteItems(kBehaviorProperties, behaviors, AddProperties<Element>);
  }

  template <typename Element>
  static void AddProperties(CInserter& rows, std::size_t owner, const Element& element) {
    const CMetaPropertyTable2024& properties = element.GetValues().properties;
    for (std::size_t i = 0; i < properties.GetSize(); ++i) {
      rows.Add({owner, i}, metamembers::kProperty, properties.At(i).GetValues());
    }
  }

  /// Fills a table by calling `add(rows, the element's ordinal, element)` for each element.
  template <typename Element, typename Add>
  void WriteItems(const STable& table, const List<Element>& elements, const Add& add) {
    CInserter rows(session_, dialect_, table);
    std::size_t ordinal = 0;
    for (const std::shared_ptr<Element>& element : elements) {
      add(rows, ordinal++, *element);
    }
    counts_[&table] = rows.Finish();
  }

  soci::session& session_;
  const SDatabaseDialect& dialect_;
  std::map<const STable*, std::uint64_t> counts_;
};

}  // namespace

bool WriteMetamodel(soci::session& session, const CDatabase& database, const CMetaDictionary2024& dictionary,
                    EExistingMeta existing) {
  const SDatabaseDialect dialect = database.Dialect(session);
  Execute(session, dialect.beginWriting);
  if (existing == EExistingMeta::kRefuse && HasTables(session, dialect)) {
    return false;
  }
  const std::function<void()> restoreReferences = database.ReleaseReferences(session);
  Execute(session, DropStatements(dialect));
  Execute(session, CreateStatements(dialect));
  CTableWriter writer(session, dialect);
  writer.Write(dictionary);
  Execute(session, IndexStatements(dialect));
  writer.WriteHead();
  restoreReferences();
  Execute(session, "COMMIT");
  return true;
}

}  // namespace metadb
