#include "metareview2024/reading/JsonReading.h"

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/LineAndColumn.h"
#include "kvxsptjson/JsonPointer.h"
#include "kvxsptstring/StringHelper.h"

namespace metareview {

std::string CJsonReading::Text(const Json& json) {
  RequireType(json.IsString(), "a string");
  return {json.GetString(), json.GetStringLength()};
}

std::uint64_t CJsonReading::Number(const Json& json, std::uint64_t max) {
  if (!json.IsUint64() || json.GetUint64() > max) {
    Fail("expected a whole number from 0 to " + std::to_string(max));
  }
  return json.GetUint64();
}

bool CJsonReading::Truth(const Json& json) {
  RequireType(json.IsBool(), "true or false");
  return json.GetBool();
}

void CJsonReading::Fail(const std::string& problem) const {
  std::string pointer;
  for (const SStep& step : steps_) {
    // An item has no key, and a key is a view of something even when it is empty.
    kvx::AppendToJsonPointer(pointer, step.key.data() == nullptr ? std::to_string(step.index) : std::string(step.key));
  }
  throw SJsonFault{pointer, problem};
}

void CJsonReading::Fail(std::string_view member, const std::string& problem) {
  Enter(member);
  Fail(problem);
}

void CJsonReading::RequireType(bool isType, const char* type) const {
  if (!isType) {
    Fail(std::string("expected ") + type);
  }
}

void FailWithPlace(const std::string& text, const std::string& name, const SJsonFault& fault) {
  const std::string place = kvx::LineAndColumn(text.data(), kvx::FindJsonValue(text, fault.pointer));
  const std::string pointer = fault.pointer.empty() ? "/" : fault.pointer;
  throw CKVXException(kvx::kMalformedDocument,
                      CStringHelper::ToVisible(name + ":" + place + ": " + pointer + ": " + fault.problem));
}

}  // namespace metareview
