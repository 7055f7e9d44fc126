#pragma once

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "kvxsptjson/JsonAllocator.h"
#include "upgrademeta2024/storage/MetaRules.h"
#include "upgrademeta2024/storage/document/JsonPlace.h"

/// What hears that something is not as expected. `message` begins with the JSON pointer; `where` is the character of
/// the text at which it lies, null for the document as a whole.
using JsonFaultHandler = std::function<void(const std::string& message, const char* where)>;

/// Reads the values of a JSON document in their order. If the handler of a fault returns, reading goes on behind the
/// value, which counts as empty or 0. Throws simdjson::simdjson_error where the text is not JSON. Everything read is
/// valid as long as the reader and the text, which must be padded as simdjson asks for.
class CJsonValueReader {
 protected:
  /// `size` is that of the text.
  CJsonValueReader(const simdjson::ondemand::parser& parser, std::size_t size, JsonFaultHandler onFault)
      : parser_(parser), size_(size), onFault_(std::move(onFault)) {}

  using Type = simdjson::ondemand::json_type;
  using Value = simdjson::ondemand::value;

  /// Calls `item(index, value)` for each item of an array.
  template <typename Item>
  void Items(Value& list, const Item& item) {
    if (!RequireType(list, Type::array)) {
      return;
    }
    std::size_t index = 0;
    for (simdjson::simdjson_result<Value> result : list.get_array()) {
      if (result.error() != simdjson::SUCCESS) {
        throw simdjson::simdjson_error(result.error());
      }
      // NOLINTNEXTLINE(performance-move-const-arg): chooses the overload that hands out a reference.
      Value&& value = std::move(result).value_unsafe();
      place_.Enter(index, value.raw_json_token().data());
      item(index, value);
      place_.Leave();
      ++index;
    }
  }

  /// Calls `member(position in known, value)` for each member. The first one known is required.
  template <std::size_t N, typename Member>
  void Members(simdjson::ondemand::object object, const std::array<std::string_view, N>& known, const Member& member) {
    std::uint32_t seen = 0;
    std::size_t next = 0;
    for (simdjson::simdjson_result<simdjson::ondemand::field> result : object) {
      if (result.error() != simdjson::SUCCESS) {
        throw simdjson::simdjson_error(result.error());
      }
      // In place: copies of a value made for each member take as long as the parsing.
      simdjson::ondemand::field&& field = std::move(result).value_unsafe();
      const simdjson::ondemand::raw_json_string raw = field.key();
      const char* where = raw.raw() - 1;
      // Documents mostly keep one order of members, so the one after the last is tried first.
      std::size_t position = next;
      if (position == N || !raw.unsafe_is_equal(known[position])) {
        position = 0;
        while (position < N && !raw.unsafe_is_equal(known[position])) {
          ++position;
        }
      }
      if (position == N) {
        // A known name may be written with escapes.
        const std::string_view key = Unescaped(raw);
        position = static_cast<std::size_t>(std::find(known.begin(), known.end(), key) - known.begin());
        if (position == N) {
          place_.Enter(key, where);
          FailUnknown(known.data(), N);
          place_.Leave();
          continue;
        }
      }
      place_.Enter(known[position], where);
      if ((seen & (1U << position)) != 0) {
        Fail("duplicate member");
        place_.Leave();
        continue;
      }
      seen |= 1U << position;
      next = position + 1;
      member(position, field.value());
      place_.Leave();
    }
    if ((seen & 1U) == 0) {
      Fail("member \"" + std::string(known.front()) + "\" is missing");
    }
  }

  /// The content of a string; valid until the reader's end. Without data for what is no string.
  std::string_view Text(Value& value) {
    // A token reaches up to the next one. The parser has validated its characters, so without an escape in it the
    // string can be used where it is.
    std::string_view token = value.raw_json_token();
    if (token.empty() || token.front() != '"') {
      if (!RequireType(value, Type::string)) {
        return {};
      }
    } else if (token.back() != '"') {
      token = Trimmed(token);
    }
    if (token.size() >= 2 && token.back() == '"') {
      const std::string_view content(token.data() + 1, token.size() - 2);
      if (content.find('\\') == std::string_view::npos) {
        // A value that was not taken lets the parser pass over whatever follows it up to a closing bracket.
        static_cast<void>(value.get_raw_json_string().value());
        return content;
      }
    }
    return Unescaped(value.get_raw_json_string());
  }

  /// A whole number of any size that its type holds.
  template <typename Type>
  Type Number(Value& value) {
    constexpr std::uint64_t kMax = std::numeric_limits<Type>::max();
    if (!RequireType(value, simdjson::ondemand::json_type::number)) {
      return 0;
    }
    const std::string_view token = value.raw_json_token();
    std::uint64_t number = 0;
    if (value.get_uint64().get(number) != simdjson::SUCCESS || number > kMax) {
      Fail(metarules::WrongNumber(kMax, std::string(Trimmed(token))));
      return 0;
    }
    return static_cast<Type>(number);
  }

  /// A token without the white space that follows it.
  static std::string_view Trimmed(std::string_view token) {
    std::size_t size = token.size();
    while (size > 0 && IsSpace(token[size - 1])) {
      --size;
    }
    return {token.data(), size};
  }

  static bool IsSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

  /// Whether the value is of the type.
  bool RequireType(Value& value, Type expected) const {
    const Type found = value.type();
    if (found != expected) {
      FailType(expected, found);
    }
    return found == expected;
  }

  void Fail(const std::string& problem) const;
  void FailType(Type expected, Type found) const;

  CJsonPlace& Place() { return place_; }

 private:
  /// A string without its escapes.
  std::string_view Unescaped(simdjson::ondemand::raw_json_string text);
  void FailUnknown(const std::string_view* known, std::size_t count) const;

  const simdjson::ondemand::parser& parser_;
  std::size_t size_;
  JsonFaultHandler onFault_;
  // Strings without their escapes, one after the other; null before the first.
  std::unique_ptr<std::uint8_t, decltype(&kvx::CJsonAllocator::Free)> unescaped_{nullptr, &kvx::CJsonAllocator::Free};
  std::uint8_t* unescapedEnd_ = nullptr;
  CJsonPlace place_;
};
