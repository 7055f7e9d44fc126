#include "kvxsptjson/detail/DeepCopy.h"

#include <algorithm>
#include <cstddef>

namespace kvx {
namespace {

using rapidjson::SizeType;

/// What RapidJSON stores inside a value.
constexpr SizeType kShort = 13;

}  // namespace

JsonValue CDeepCopy::Copy(const JsonValue& value) {
  JsonDocumentBase copy(&allocator_);
  const auto put = [&](JsonDocumentBase& target) { return Put(value, target); };
  copy.Populate(put);
  return std::move(static_cast<JsonValue&>(copy));
}

bool CDeepCopy::Put(const JsonValue& value, JsonDocumentBase& target) {
  switch (value.GetType()) {
    case rapidjson::kObjectType:
      return PutObject(value, target);
    case rapidjson::kArrayType:
      target.StartArray();
      for (const JsonValue& item : value.GetArray()) {
        Put(item, target);
      }
      return target.EndArray(value.Size());
    case rapidjson::kStringType: {
      std::string_view none;
      return PutText(value, none, target);
    }
    default:
      return value.Accept(target);
  }
}

bool CDeepCopy::PutObject(const JsonValue& object, JsonDocumentBase& target) {
  target.StartObject();
  std::size_t i = 0;
  for (const auto& member : object.GetObject()) {
    SPlace& place = places_[std::min(i++, places_.size() - 1)];
    PutText(member.name, place.name, target);
    if (member.value.IsString()) {
      PutText(member.value, place.text, target);
    } else {
      Put(member.value, target);
    }
  }
  return target.EndObject(object.MemberCount());
}

bool CDeepCopy::PutText(const JsonValue& value, std::string_view& last, JsonDocumentBase& target) {
  const std::string_view text(value.GetString(), value.GetStringLength());
  const auto size = static_cast<SizeType>(text.size());
  if (size <= kShort) {
    return target.String(text.data(), size, /*copy=*/true);
  }
  if (text != last) {
    auto* const stored = static_cast<char*>(allocator_.Malloc(size + 1));
    last = {stored, size};
    text.copy(stored, size);
    stored[size] = 0;
  }
  return target.String(last.data(), size, /*copy=*/false);
}

}  // namespace kvx
