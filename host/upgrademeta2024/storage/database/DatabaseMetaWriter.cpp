#include "upgrademeta2024/storage/database/DatabaseMetaWriter.h"

#include <cstddef>
#include <initializer_list>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/MetaStorage.h"
#include "upgrademeta2024/storage/database/DatabaseDialect.h"
#include "upgrademeta2024/storage/database/DatabaseMetaReader.h"
#include "upgrademeta2024/storage/database/DatabaseRows.h"
#include "upgrademeta2024/storage/database/DatabaseSchema.h"

namespace metadb {
namespace {

/// Fills one table. Several rows go into one statement: to a server each statement is one journey there and back.
class CInserter {
 public:
  CInserter(soci::session& session, const STable& table)
      : session_(session), table_(table), full_(session), columns_(KeyColumns(table)) {
    keyCount_ = columns_.size();
    for (const SColumn& column : table.columns) {
      columns_.emplace_back(column.name);
    }
    values_.resize(kRows * columns_.size());
    Prepare(full_, kRows);
  }

  /// The values of a row in the order of SelectStatement.
  void Add(std::initializer_list<std::string_view> row) {
    const std::size_t begin = rowCount_ * columns_.size();
    std::size_t column = 0;
    for (const std::string_view value : row) {
      values_[begin + column] = value;
      if (const char* fault = TextFault(value); fault != nullptr) {
        const std::vector<std::string> keys(values_.begin() + static_cast<std::ptrdiff_t>(begin),
                                            values_.begin() + static_cast<std::ptrdiff_t>(begin + keyCount_));
        throw SContentError{RowPlace(table_, keys) + ": " + columns_[column] + ": " + fault +
                            ", which a database does not hold; change it in the source"};
      }
      ++column;
    }
    if (++rowCount_ == kRows) {
      full_.execute(/*withDataExchange=*/true);
      rowCount_ = 0;
    }
  }

  /// Stores the rows that do not fill a statement.
  void Finish() {
    if (rowCount_ > 0) {
      soci::statement rest(session_);
      Prepare(rest, rowCount_);
      rest.execute(/*withDataExchange=*/true);
    }
  }

 private:
  static constexpr std::size_t kRows = 50;

  void Prepare(soci::statement& statement, std::size_t rows) {
    statement.alloc();
    for (std::size_t i = 0; i < rows * columns_.size(); ++i) {
      statement.exchange(soci::use(values_[i]));
    }
    statement.prepare(InsertStatement(table_, rows));
    statement.define_and_bind();
  }

  soci::session& session_;
  const STable& table_;
  soci::statement full_;
  std::vector<std::string> columns_;
  std::size_t keyCount_ = 0;
  std::vector<std::string> values_;
  std::size_t rowCount_ = 0;
};

class CWriter {
 public:
  explicit CWriter(soci::session& session) : session_(session) {}

  void Write(const CMetaDictionary2024& dictionary) {
    WriteClasses(kClasses, kClassBehaviors, kClassProperties, dictionary.GetClasses());
    WriteClasses(kLinks, kLinkBehaviors, kLinkProperties, dictionary.GetLinks());
    WriteBehaviors(dictionary.GetBehaviors());
  }

 private:
  template <typename Element>
  using List = std::list<std::shared_ptr<Element>>;

  template <typename Element>
  void WriteClasses(const STable& elements, const STable& behaviors, const STable& properties,
                    const List<Element>& classes) {
    WriteItems(elements, classes, [](CInserter& rows, const std::string& ordinal, const Element& element) {
      rows.Add({ordinal, element.GetInternalName(), element.GetDisplayName(), std::to_string(element.GetClassId()),
                element.GetTableName()});
    });
    WriteItems(behaviors, classes, [](CInserter& rows, const std::string& owner, const Element& element) {
      std::size_t ordinal = 0;
      for (const std::string& name : element.GetBehaviors()) {
        rows.Add({owner, std::to_string(ordinal++), name});
      }
    });
    WriteItems(properties, classes, AddProperties<Element>);
  }

  void WriteBehaviors(const List<CMetaBehavior2024>& behaviors) {
    using Element = CMetaBehavior2024;
    WriteItems(kBehaviors, behaviors, [](CInserter& rows, const std::string& ordinal, const Element& element) {
      rows.Add({ordinal, element.GetInternalName(), element.GetDisplayName()});
    });
    WriteItems(kMethods, behaviors, [](CInserter& rows, const std::string& owner, const Element& element) {
      std::size_t ordinal = 0;
      for (const std::shared_ptr<CMetaMethod2024>& method : element.GetMethods()) {
        rows.Add({owner, std::to_string(ordinal++), method->GetInternalName(), method->GetDisplayName()});
      }
    });
    WriteItems(kBehaviorProperties, behaviors, AddProperties<Element>);
  }

  template <typename Element>
  static void AddProperties(CInserter& rows, const std::string& owner, const Element& element) {
    const CMetaPropertyTable2024& properties = element.GetPropertyTable();
    for (std::size_t i = 0; i < properties.GetSize(); ++i) {
      const SMetaPropertyValues2024 values = properties.At(i).GetValues();
      rows.Add({owner, std::to_string(i), values.internalName, values.displayName, values.field, values.type,
                std::to_string(values.length), values.defaultValue, std::to_string(values.precision), values.max,
                values.min, values.lookupClass});
    }
  }

  /// Fills a table by calling `add(rows, the element's ordinal, element)` for each element.
  template <typename Element, typename Add>
  void WriteItems(const STable& table, const List<Element>& elements, const Add& add) {
    CInserter rows(session_, table);
    std::size_t ordinal = 0;
    for (const std::shared_ptr<Element>& element : elements) {
      add(rows, std::to_string(ordinal++), *element);
    }
    rows.Finish();
  }

  soci::session& session_;
};

void Execute(soci::session& session, const std::vector<std::string>& statements) {
  for (const std::string& statement : statements) {
    session << statement;
  }
}

}  // namespace

bool WriteMetamodel(soci::session& session, const SDatabaseDialect& dialect, const CMetaDictionary2024& dictionary,
                    EExistingMeta existing) {
  Execute(session, dialect.beginWriting);
  if (existing == EExistingMeta::kRefuse && HasTables(session, dialect)) {
    return false;
  }
  Execute(session, DropStatements());
  Execute(session, CreateStatements(dialect));
  CWriter(session).Write(dictionary);
  Execute(session, IndexStatements(dialect));
  session << "INSERT INTO " << kHeadTable << " (generation, schema_version) VALUES (" << kGeneration << ", "
          << kSchemaVersion << ")";
  session << "COMMIT";
  return true;
}

}  // namespace metadb
