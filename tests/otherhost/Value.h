#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <utility>

namespace otherhost {

/// A value of a JSON document, as tests write it down:
///
///     Object({{"internal_name", "A"}, {"length", 32U}, {"behaviors", Array({"b"})}, {"nothing", {}}})
struct SValue {
  enum class EType { kNull, kNumber, kString, kArray, kObject };
  using Member = std::pair<std::string, SValue>;

  SValue() = default;
  SValue(std::uint32_t value) : type(EType::kNumber), number(value) {}
  SValue(const std::string& value) : type(EType::kString), string(value) {}
  SValue(const char* value) : SValue(std::string(value)) {}

  /// Null when this is no object or has no such member.
  SValue* Find(const std::string& key);
  /// Replaces the value of a member in its place; adds one at the end.
  void Set(const std::string& key, SValue value);
  void Remove(const std::string& key);
  /// JSON on one line, without blanks. Texts are not escaped.
  std::string Text() const;

  EType type = EType::kNull;
  std::uint32_t number = 0;
  std::string string;
  /// Lists, since views keep pointers to what is in them.
  std::list<SValue> items;
  std::list<Member> members;
};

SValue Object(std::list<SValue::Member> members = {});
SValue Array(std::list<SValue> items = {});

}  // namespace otherhost
