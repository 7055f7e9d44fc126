#include "upgrademeta2024/storage/DatabaseRows2024.h"

#include <simdjson.h>

#include <algorithm>
#include <charconv>
#include <limits>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/DatabaseDialect2024.h"

namespace metadb {
namespace {

// 2,000 properties are a few hundred kilobytes; larger parts are not faster.
constexpr const char* kFetchPart = "FETCH 2000 FROM meta_rows";
constexpr const char* kDeclareCursor = "DECLARE meta_rows NO SCROLL CURSOR FOR ";
constexpr const char* kCloseCursor = "CLOSE meta_rows";

}  // namespace

std::string RowPlace(const STable& table, const std::vector<std::string>& keys) {
  const std::vector<std::string> columns = KeyColumns(table);
  std::string place = "table " + std::string(table.name) + ", row ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    place += (i == 0 ? "" : ", ") + columns[i] + " " + CStringHelper::ToVisible(keys[i]);
  }
  return place;
}

std::string RowPlace(const STable& table, std::uint64_t ordinal) {
  return RowPlace(table, std::vector<std::string>{std::to_string(ordinal)});
}

std::string RowPlace(const STable& table, std::uint64_t owner, std::uint64_t ordinal) {
  return RowPlace(table, std::vector<std::string>{std::to_string(owner), std::to_string(ordinal)});
}

const char* TextFault(std::string_view text) {
  // Most texts are short and ASCII, for which setting up the validation takes longer than this.
  const auto isPlain = [](char c) { return c != '\0' && static_cast<unsigned char>(c) < 0x80; };
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    return nullptr;
  }
  if (text.find('\0') != std::string_view::npos) {
    return "the text holds a NUL character";
  }
  return simdjson::validate_utf8(text.data(), text.size()) ? nullptr : "the text is not valid UTF-8";
}

CRows::CRows(soci::session& session, const SDatabaseDialect2024& dialect, const STable& table)
    : session_(session),
      table_(table),
      hasCursor_(dialect.readsThroughCursor),
      keyColumns_(KeyColumns(table)),
      values_(keyColumns_.size() + table.columns.size()),
      indicators_(values_.size(), soci::i_ok),
      statement_(session) {
  // Everything is fetched as text: a database that does not enforce a column's type would otherwise turn what is no
  // number into one.
  statement_.alloc();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    statement_.exchange(soci::into(values_[i], indicators_[i]));
  }
  if (hasCursor_) {
    session << kDeclareCursor + SelectStatement(table);
    statement_.prepare(kFetchPart);
  } else {
    statement_.prepare(SelectStatement(table));
  }
  statement_.define_and_bind();
  statement_.execute();
}

bool CRows::FetchFromPart() {
  const bool fetched = statement_.fetch();
  partHasRows_ = partHasRows_ || fetched;
  return fetched;
}

bool CRows::Fetch() {
  if (FetchFromPart()) {
    return true;
  }
  if (!hasCursor_) {
    return false;
  }
  if (partHasRows_) {
    partHasRows_ = false;
    statement_.execute();
    if (FetchFromPart()) {
      return true;
    }
  }
  session_ << kCloseCursor;
  return false;
}

bool CRows::Next() {
  if (!Fetch()) {
    return false;
  }
  constexpr std::uint64_t kMax = std::numeric_limits<std::int64_t>::max();
  const std::uint64_t previousOwner = owner_;
  const std::uint64_t previousOrdinal = ordinal_;
  const std::size_t last = keyColumns_.size() - 1;
  owner_ = table_.owner == nullptr ? 0 : WholeNumber(0, table_.ownerColumn, kMax);
  ordinal_ = WholeNumber(last, keyColumns_[last].c_str(), kMax);
  if (!isFirst_ && owner_ == previousOwner && ordinal_ <= previousOrdinal) {
    Fail("ordinal", "not greater than the ordinal of the row before it in the same list");
  }
  isFirst_ = false;
  return true;
}

std::string_view CRows::Text(std::size_t column) const {
  const SColumn& description = table_.columns[column];
  const std::string& text = Value(keyColumns_.size() + column, description.name);
  if (const char* fault = TextFault(text); fault != nullptr) {
    Fail(description.name, fault);
  }
  if (description.kind == SColumn::kName && text.empty()) {
    Fail(description.name, "the name is empty");
  }
  return text;
}

std::uint32_t CRows::Number(std::size_t column) const {
  const SColumn& description = table_.columns[column];
  return static_cast<std::uint32_t>(WholeNumber(keyColumns_.size() + column, description.name, description.max));
}

const std::string& CRows::Value(std::size_t index, const char* column) const {
  if (indicators_[index] == soci::i_null) {
    Fail(column, "NULL stands where a value belongs");
  }
  return values_[index];
}

std::uint64_t CRows::WholeNumber(std::size_t index, const char* column, std::uint64_t max) const {
  const std::string& text = Value(index, column);
  std::uint64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number > max) {
    Fail(column, "expected a whole number from 0 to " + std::to_string(max) + ", found " +
                     CStringHelper::ToVisible(text.empty() ? "an empty text" : text));
  }
  return number;
}

void CRows::Fail(const char* column, const std::string& problem) const {
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < keyColumns_.size(); ++i) {
    keys.push_back(indicators_[i] == soci::i_null ? "NULL" : values_[i]);
  }
  throw SContentError{RowPlace(table_, keys) + ": " + column + ": " + problem +
                      "; correct the row or store the metamodel anew"};
}

}  // namespace metadb
