#include "upgrademeta2024/storage/database/DatabaseRows.h"

#include <simdjson.h>

#include <algorithm>
#include <charconv>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/MetaRules.h"
#include "upgrademeta2024/storage/database/Database.h"

namespace metadb {
namespace {

std::string AsText(const SValue& value) {
  switch (value.kind) {
    case SValue::kNull:
      return "NULL";
    case SValue::kInteger:
      return std::to_string(value.integer);
    case SValue::kBlob:
      return "a blob";
    default:
      return std::string(value.text);
  }
}

}  // namespace

std::string RowPlace(const STable& table, const std::vector<std::string>& keys) {
  const std::vector<std::string> columns = KeyColumns(table);
  std::string place = "table " + std::string(table.name) + ", row ";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    place += (i == 0 ? "" : ", ") + columns[i] + " " + CStringHelper::ToVisible(keys[i]);
  }
  return place;
}

std::string RowFault(const STable& table, const std::vector<std::string>& keys, const char* column,
                     const std::string& problem) {
  return RowPlace(table, keys) + ": " + column + ": " + problem;
}

std::optional<std::uint64_t> ParseNumber(std::string_view digits, std::uint64_t max) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  return error == std::errc() && stop == end && number <= max ? std::make_optional(number) : std::nullopt;
}

const char* TextFault(std::string_view text) {
  // Most texts are short and ASCII, for which setting up the validation takes longer than this.
  const auto isPlain = [](char c) { return c > 0 && static_cast<unsigned char>(c) < 0x80; };
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    return nullptr;
  }
  if (text.find('\0') != std::string_view::npos) {
    return "the text holds a NUL character";
  }
  return simdjson::validate_utf8(text.data(), text.size()) ? nullptr : "the text is not valid UTF-8";
}

CRows::CRows(const STable& table, const RowFaultHandler& onFault)
    : table_(table), onFault_(onFault), keyCount_(KeyColumns(table).size()) {}

inline std::optional<std::uint64_t> CRows::WholeNumber(std::size_t index, const char* column, std::uint64_t max) const {
  const SValue& value = values_[index];
  if (value.kind == SValue::kInteger && value.integer >= 0 && static_cast<std::uint64_t>(value.integer) <= max) {
    return static_cast<std::uint64_t>(value.integer);
  }
  return NumberInText(index, column, max);
}

bool CRows::Next(const std::vector<SValue>& values) {
  values_ = values.data();
  ++count_;
  const std::optional<std::uint64_t> owner =
      table_.owner == nullptr ? 0 : WholeNumber(0, table_.ownerColumn, kMaxInteger);
  const std::optional<std::uint64_t> ordinal = WholeNumber(keyCount_ - 1, "ordinal", kMaxInteger);
  if (!owner || !ordinal) {
    return false;
  }
  const bool isFirst = !hasPlace_;
  const std::uint64_t previousOwner = owner_;
  const std::uint64_t previousOrdinal = ordinal_;
  hasPlace_ = true;
  owner_ = *owner;
  ordinal_ = *ordinal;
  if (isFirst) {
    return true;
  }
  if (owner_ < previousOwner || (owner_ == previousOwner && ordinal_ < previousOrdinal)) {
    FailOrder();
    return false;
  }
  if (owner_ == previousOwner && ordinal_ == previousOrdinal) {
    Fail("ordinal", "not greater than the ordinal of the row before it in the same list");
  }
  return true;
}

void CRows::FailOrder() const {
  // The database has put the rows in order: as texts, 10 comes before 9.
  const std::vector<std::string> columns = KeyColumns(table_);
  for (std::size_t i = 0; i < keyCount_; ++i) {
    if (values_[i].kind == SValue::kText) {
      Fail(columns[i].c_str(), "expected a number, found the text " + AsText(values_[i]));
      return;
    }
  }
  // A part of the table is where another belongs.
  FailDamaged("rows do not come in order");
}

std::string_view CRows::Text(std::size_t column) const {
  const SColumn& description = table_.columns[column];
  if (!HasValue(keyCount_ + column, description.name)) {
    return {};
  }
  const SValue& value = values_[keyCount_ + column];
  if (value.kind == SValue::kReal) {
    // Of two that differ a database may show the same digits.
    Fail(description.name, "expected a text, found the floating point number " + AsText(value));
    return {};
  }
  if (value.kind == SValue::kBlob) {
    Fail(description.name, "expected a text, found " + AsText(value));
    return {};
  }
  const std::string_view text = value.text;
  if (const char* fault = TextFault(text); fault != nullptr) {
    Fail(description.name, fault);
    return {};
  }
  if (description.kind == SColumn::kName && text.empty()) {
    Fail(description.name, metarules::kEmptyName);
  }
  return text;
}

std::uint32_t CRows::Number(std::size_t column) const {
  const SColumn& description = table_.columns[column];
  return static_cast<std::uint32_t>(WholeNumber(keyCount_ + column, description.name, description.max).value_or(0));
}

bool CRows::HasValue(std::size_t index, const char* column) const {
  if (values_[index].kind != SValue::kNull) {
    return true;
  }
  Fail(column, "must not be NULL");
  return false;
}

std::optional<std::uint64_t> CRows::NumberInText(std::size_t index, const char* column, std::uint64_t max) const {
  if (!HasValue(index, column)) {
    return std::nullopt;
  }
  const SValue& value = values_[index];
  if (value.kind == SValue::kText) {
    if (const auto number = ParseNumber(value.text, max)) {
      return number;
    }
  }
  const std::string text = AsText(value);
  Fail(column, metarules::WrongNumber(max, text.empty() ? "an empty text" : text));
  return std::nullopt;
}

void CRows::Fail(const char* column, const std::string& problem) const {
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < keyCount_; ++i) {
    keys.push_back(AsText(values_[i]));
  }
  onFault_(RowFault(table_, keys, column, problem));
}

}  // namespace metadb
