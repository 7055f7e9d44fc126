#include "upgrademeta2024/storage/document/JsonValueReader.h"

namespace {

const char* TypeName(simdjson::ondemand::json_type type) {
  using simdjson::ondemand::json_type;
  switch (type) {
    case json_type::array:
      return "an array";
    case json_type::object:
      return "an object";
    case json_type::number:
      return "a number";
    case json_type::string:
      return "a string";
    case json_type::boolean:
      return "a boolean";
    case json_type::null:
      return "null";
  }
  return "no value";
}

}  // namespace

std::string_view CJsonValueReader::Unescaped(simdjson::ondemand::raw_json_string text) {
  // The parser has memory for this, too, but uses it without a look whether it got any.
  if (unescaped_ == nullptr) {
    unescaped_.reset(static_cast<std::uint8_t*>(kvx::CJsonAllocator::Malloc(size_ + simdjson::SIMDJSON_PADDING)));
    unescapedEnd_ = unescaped_.get();
  }
  const std::string_view unescaped = parser_.unescape(text, unescapedEnd_);
  return unescaped;
}

void CJsonValueReader::Fail(const std::string& problem) const {
  onFault_(place_.ToPointer() + ": " + problem, place_.Where());
}

void CJsonValueReader::FailType(Type expected, Type found) const {
  Fail(std::string("expected ") + TypeName(expected) + ", found " + TypeName(found));
}

void CJsonValueReader::FailUnknown(const std::string_view* known, std::size_t count) const {
  std::string names;
  for (std::size_t i = 0; i < count; ++i) {
    names += (i == 0 ? "" : ", ") + std::string(known[i]);
  }
  Fail("unknown member; known here: " + names);
}
