#include "upgrademeta2024/storage/PostgresqlCursor2024.h"

#include <cstddef>
#include <string>

namespace metadb {
namespace {

// 2,000 properties are a few hundred kilobytes; larger parts are not faster.
constexpr const char* kFetchPart = "FETCH 2000 FROM meta_rows";
constexpr const char* kDeclareCursor = "DECLARE meta_rows NO SCROLL CURSOR FOR ";
constexpr const char* kCloseCursor = "CLOSE meta_rows";

class CPostgresqlCursor : public CCursor {
 public:
  CPostgresqlCursor(soci::session& session, const STable& table)
      : session_(session),
        values_(KeyColumns(table).size() + table.columns.size()),
        indicators_(values_.size(), soci::i_ok),
        statement_(session) {
    // Everything is fetched as text: a column of another type would otherwise turn what is no number into one.
    statement_.alloc();
    for (std::size_t i = 0; i < values_.size(); ++i) {
      statement_.exchange(soci::into(values_[i], indicators_[i]));
    }
    session << kDeclareCursor + SelectStatement(table);
    statement_.prepare(kFetchPart);
    statement_.define_and_bind();
    statement_.execute();
  }

  bool Fetch(std::vector<SValue>& values) override {
    if (!FetchFromPart() && !FetchFromNextPart()) {
      session_ << kCloseCursor;
      return false;
    }
    for (std::size_t i = 0; i < values_.size(); ++i) {
      values[i].kind = indicators_[i] == soci::i_null ? SValue::kNull : SValue::kText;
      values[i].text = values_[i];
    }
    return true;
  }

 private:
  bool FetchFromPart() {
    const bool fetched = statement_.fetch();
    partHasRows_ = partHasRows_ || fetched;
    return fetched;
  }

  bool FetchFromNextPart() {
    if (!partHasRows_) {
      return false;
    }
    partHasRows_ = false;
    statement_.execute();
    return FetchFromPart();
  }

  soci::session& session_;
  std::vector<std::string> values_;
  std::vector<soci::indicator> indicators_;
  soci::statement statement_;
  bool partHasRows_ = false;
};

}  // namespace

std::unique_ptr<CCursor> OpenPostgresqlCursor(soci::session& session, const STable& table) {
  return std::make_unique<CPostgresqlCursor>(session, table);
}

}  // namespace metadb
