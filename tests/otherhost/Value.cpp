#include "otherhost/Value.h"

namespace otherhost {
namespace {

template <typename Items, typename ToText>
std::string Joined(const Items& items, const ToText& toText) {
  std::string text;
  for (const auto& item : items) {
    text += (text.empty() ? "" : ",") + toText(item);
  }
  return text;
}

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

}  // namespace

SValue* SValue::Find(const std::string& key) {
  for (Member& member : members) {
    if (member.first == key) {
      return &member.second;
    }
  }
  return nullptr;
}

void SValue::Set(const std::string& key, SValue value) {
  if (SValue* const existing = Find(key); existing != nullptr) {
    *existing = std::move(value);
  } else {
    members.emplace_back(key, std::move(value));
  }
}

void SValue::Remove(const std::string& key) {
  members.remove_if([&key](const Member& member) { return member.first == key; });
}

std::string SValue::Text() const {
  switch (type) {
    case EType::kNull:
      return "null";
    case EType::kNumber:
      return std::to_string(number);
    case EType::kString:
      return Quoted(string);
    case EType::kArray:
      return "[" + Joined(items, [](const SValue& item) { return item.Text(); }) + "]";
    case EType::kObject:
      return "{" +
             Joined(members, [](const Member& member) { return Quoted(member.first) + ":" + member.second.Text(); }) +
             "}";
  }
  return "";
}

SValue Object(std::list<SValue::Member> members) {
  SValue value;
  value.type = SValue::EType::kObject;
  value.members = std::move(members);
  return value;
}

SValue Array(std::list<SValue> items) {
  SValue value;
  value.type = SValue::EType::kArray;
  value.items = std::move(items);
  return value;
}

}  // namespace otherhost
