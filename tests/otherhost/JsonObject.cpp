#include "kvxsptjson/JsonObject.h"

#include "kvxsptexception/KVXException.h"
#include "otherhost/Host.h"

using otherhost::CHost;
using otherhost::SValue;

namespace {

constexpr int kMissing = static_cast<int>(0xA4C0003EU);
constexpr int kWrongType = static_cast<int>(0xA4C00004U);

std::string Text(const SValue& value) {
  return value.type == SValue::EType::kNumber ? std::to_string(value.number) : value.string;
}

SValue Strings(const std::list<std::string>& texts) {
  return otherhost::Array({texts.begin(), texts.end()});
}

/// The value of an object that is to be copied; null for none.
SValue ValueOf(const std::shared_ptr<CJsonObject>& object) {
  return object != nullptr ? otherhost::STestAccess::ValueOf(*object) : SValue();
}

bool IsArray(const SValue* value) {
  return value != nullptr && value->type == SValue::EType::kArray;
}

bool IsObject(const SValue* value) {
  return value != nullptr && value->type == SValue::EType::kObject;
}

}  // namespace

namespace otherhost {

SValue& STestAccess::ValueOf(CJsonObject& object) {
  return *object.value_;
}

std::shared_ptr<CJsonObject> MakeJson(const SValue& value) {
  const auto document = std::make_shared<SValue>(value);
  return std::make_shared<CJsonObject>(document, document.get());
}

std::string TextOf(const std::shared_ptr<CJsonObject>& object) {
  return ::ValueOf(object).Text();
}

}  // namespace otherhost

CJsonObject::CJsonObject() : document_(std::make_shared<SValue>(otherhost::Object())), value_(document_.get()) {
  CHost::Current().Record("CJsonObject()");
}

CJsonObject::CJsonObject(const std::shared_ptr<SValue>& document, SValue* value) : document_(document), value_(value) {}

std::shared_ptr<SValue> CJsonObject::Share() {
  CHost::Current().Record("Share()");
  return document_;
}

void CJsonObject::CreateFromFile(const std::string& path) {
  CHost::Current().Record("CreateFromFile(" + path + ")");
  document_ = std::make_shared<SValue>(CHost::Current().files.at(path));
  value_ = document_.get();
}

void CJsonObject::SaveToFile(const std::string& path) const {
  CHost::Current().Record("SaveToFile(" + path + ", " + document_->Text() + ")");
  CHost::Current().files[path] = *document_;
}

std::string CJsonObject::GetStringValue(const std::string& key) {
  CHost::Current().Record("GetStringValue(" + key + ")");
  const SValue* const value = value_->Find(key);
  return value != nullptr ? Text(*value) : "?";
}

std::pair<bool, std::string> CJsonObject::GetPropertyStringValue(const std::string& key) {
  CHost::Current().Record("GetPropertyStringValue(" + key + ")");
  const SValue* const value = value_->Find(key);
  return value != nullptr ? std::pair(true, Text(*value)) : std::pair(false, std::string("stale"));
}

std::list<std::string> CJsonObject::GetStringArrayValue(const std::string& key) const {
  CHost::Current().Record("GetStringArrayValue(" + key + ")");
  std::list<std::string> texts;
  if (const SValue* const value = value_->Find(key); IsArray(value)) {
    for (const SValue& item : value->items) {
      texts.push_back(Text(item));
    }
  }
  return texts;
}

std::pair<bool, std::list<std::string>> CJsonObject::GetPropertyStringArrayValue(const std::string& key) const {
  CHost::Current().Record("GetPropertyStringArrayValue(" + key + ")");
  const SValue* const value = value_->Find(key);
  if (!IsArray(value)) {
    return {false, {"stale"}};
  }
  std::list<std::string> texts;
  for (const SValue& item : value->items) {
    texts.push_back(Text(item));
  }
  return {true, texts};
}

void CJsonObject::GetAllKey(std::list<std::string>& keys) const {
  CHost::Current().Record("GetAllKey()");
  keys.clear();
  for (const SValue::Member& member : value_->members) {
    keys.push_back(member.first);
  }
}

std::shared_ptr<CJsonObject> CJsonObject::GetObjectValue(const std::string& key) {
  CHost::Current().Record("GetObjectValue(" + key + ")");
  SValue* const value = value_->Find(key);
  if (value == nullptr) {
    throw CKVXException(kMissing, "json member [" + key + "] not exist!");
  }
  if (value->type == SValue::EType::kNull) {
    return nullptr;
  }
  if (!IsObject(value)) {
    throw CKVXException(kWrongType, "json member [" + key + "] is not Object!");
  }
  return std::make_shared<CJsonObject>(document_, value);
}

std::shared_ptr<CJsonObject> CJsonObject::GetPropertyObjectValue(const std::string& key) {
  CHost::Current().Record("GetPropertyObjectValue(" + key + ")");
  SValue* const value = value_->Find(key);
  return IsObject(value) ? std::make_shared<CJsonObject>(document_, value) : nullptr;
}

std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> CJsonObject::GetPropertyObjectArrayValue(
    const std::string& key) {
  CHost::Current().Record("GetPropertyObjectArrayValue(" + key + ")");
  SValue* const value = value_->Find(key);
  if (!IsArray(value)) {
    return {false, {otherhost::MakeJson(otherhost::Object({{"internal_name", "stale"}}))}};
  }
  std::list<std::shared_ptr<CJsonObject>> objects;
  for (SValue& item : value->items) {
    if (!IsObject(&item)) {
      throw CKVXException(kWrongType, "json member [" + key + "] is not Array Object!");
    }
    objects.push_back(std::make_shared<CJsonObject>(document_, &item));
  }
  return {true, objects};
}

void CJsonObject::SetStringValue(const std::string& key, const std::string& value) {
  CHost::Current().Record("SetStringValue(" + key + ", " + value + ")");
  value_->Set(key, value);
}

void CJsonObject::SetUInt32Value(const std::string& key, std::uint32_t value) {
  CHost::Current().Record("SetUInt32Value(" + key + ", " + std::to_string(value) + ")");
  value_->Set(key, value);
}

void CJsonObject::SetStringArrayValue(const std::string& key, const std::list<std::string>& values) {
  const SValue array = Strings(values);
  CHost::Current().Record("SetStringArrayValue(" + key + ", " + array.Text() + ")");
  value_->Set(key, array);
}

void CJsonObject::SetObjectValue(const std::string& key, const std::shared_ptr<CJsonObject>& object) {
  const SValue copy = ::ValueOf(object);
  CHost::Current().Record("SetObjectValue(" + key + ", " + copy.Text() + ")");
  value_->Remove(key);
  value_->Set(key, copy);
}

void CJsonObject::SetObjectArrayValue(const std::string& key, const std::list<std::shared_ptr<CJsonObject>>& objects) {
  SValue array = otherhost::Array();
  for (const std::shared_ptr<CJsonObject>& object : objects) {
    array.items.push_back(::ValueOf(object));
  }
  CHost::Current().Record("SetObjectArrayValue(" + key + ", " + array.Text() + ")");
  value_->Set(key, array);
}
