#include "kvxsptjson/JsonObject.h"

#include <rapidjson/document.h>

#include <string_view>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/AtomicFile.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonTextWriter.h"
#include "kvxsptjson/JsonWriter.h"
#include "kvxsptjson/detail/DeepCopy.h"
#include "kvxsptjson/detail/JsonParser.h"

namespace {

using rapidjson::SizeType;
using Document = kvx::JsonDocument;
using Value = kvx::JsonValue;

[[noreturn]] void FailMissing(const std::string& key) {
  throw CKVXException(kvx::kJsonMemberMissing, "json member [" + key + "] not exist!");
}

[[noreturn]] void FailType(const std::string& key, const char* type) {
  throw CKVXException(kvx::kJsonWrongType, "json member [" + key + "] is not " + type + "!");
}

Value::StringRefType Reference(const std::string& text) {
  return {text.data(), static_cast<SizeType>(text.size())};
}

/// RapidJSON's constructor of a reference and an allocator would end the text at its first NUL byte.
Value Copy(const std::string& text, Document::AllocatorType& allocator) {
  return {text.data(), static_cast<SizeType>(text.size()), allocator};
}

std::string Text(const Value& string) {
  return {string.GetString(), string.GetStringLength()};
}

/// The one rule of what reads as a string: strings, and numbers as decimal text.
bool ReadString(const Value& value, std::string& text) {
  if (value.IsString()) {
    text = Text(value);
    return true;
  }
  if (!value.IsNumber()) {
    return false;
  }
  kvx::JsonTextBuffer buffer;
  kvx::JsonWriter<kvx::JsonTextBuffer> writer(buffer);
  value.Accept(writer);
  text = {buffer.GetString(), buffer.GetSize()};
  return true;
}

bool ReadStringArray(const Value& value, std::list<std::string>& texts) {
  if (!value.IsArray()) {
    return false;
  }
  for (const Value& item : value.GetArray()) {
    if (!item.IsString()) {
      return false;
    }
    texts.push_back(Text(item));
  }
  return true;
}

}  // namespace

CJsonObject::CJsonObject() : document_(std::make_shared<Document>()), value_(document_.get()) {
  value_->SetObject();
}

CJsonObject::CJsonObject(std::shared_ptr<Document> document, Value* value)
    : document_(std::move(document)), value_(value) {}

CJsonObject::~CJsonObject() = default;

std::shared_ptr<Document> CJsonObject::Share() const {
  document_->PartTaken();
  document_->Part();
  return document_;
}

void CJsonObject::CreateFromFile(const std::string& path) {
  CreateFromText(kvx::ReadFile(path), path);
}

void CJsonObject::CreateFromText(const std::string& text, const std::string& name) {
  document_ = kvx::ParseDocument(text, name);
  value_ = document_.get();
}

void CJsonObject::SaveToFile(const std::string& path) const {
  kvx::CAtomicFile file(path);
  kvx::CJsonTextWriter writer(file);
  document_->Accept(writer);
  file.Put('\n');
  file.Commit();
}

std::string CJsonObject::ToText() const {
  kvx::JsonTextBuffer buffer;
  kvx::PrettyJsonWriter<kvx::JsonTextBuffer> writer(buffer);
  writer.SetIndent(' ', 2);
  value_->Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

bool CJsonObject::IsObject() const {
  return value_->IsObject();
}

bool CJsonObject::HasMember(const std::string& key) const {
  return Find(key) != nullptr;
}

bool CJsonObject::IsString(const std::string& key) const {
  const Value* value = Find(key);
  return value != nullptr && value->IsString();
}

void CJsonObject::GetAllKey(std::list<std::string>& keys) const {
  keys.clear();
  if (value_->IsObject()) {
    for (const auto& member : value_->GetObject()) {
      keys.push_back(Text(member.name));
    }
  }
}

Value* CJsonObject::Find(const std::string& key) const {
  if (value_->IsObject()) {
    for (auto& member : value_->GetObject()) {
      if (std::string_view(member.name.GetString(), member.name.GetStringLength()) == key) {
        return &member.value;
      }
    }
  }
  return nullptr;
}

Value& CJsonObject::Require(const std::string& key) const {
  Value* value = Find(key);
  if (value == nullptr) {
    FailMissing(key);
  }
  return *value;
}

Value* CJsonObject::FindNotNull(const std::string& key) const {
  Value* value = Find(key);
  if (value == nullptr || value->IsNull()) {
    lastError_ = kvx::kJsonMemberMissing;
    return nullptr;
  }
  return value;
}

std::string CJsonObject::GetStringValue(const std::string& key) const {
  std::string text;
  if (!ReadString(Require(key), text)) {
    FailType(key, "String");
  }
  return text;
}

std::pair<bool, std::string> CJsonObject::GetPropertyStringValue(const std::string& key) const {
  Value* value = FindNotNull(key);
  std::string text;
  if (value == nullptr) {
    return {false, text};
  }
  if (!ReadString(*value, text)) {
    lastError_ = kvx::kJsonWrongType;
    return {false, text};
  }
  return {true, std::move(text)};
}

std::list<std::string> CJsonObject::GetStringArrayValue(const std::string& key) const {
  std::list<std::string> texts;
  if (!ReadStringArray(Require(key), texts)) {
    FailType(key, "Array String");
  }
  return texts;
}

std::pair<bool, std::list<std::string>> CJsonObject::GetPropertyStringArrayValue(const std::string& key) const {
  Value* value = FindNotNull(key);
  std::list<std::string> texts;
  if (value == nullptr) {
    return {false, texts};
  }
  if (!ReadStringArray(*value, texts)) {
    lastError_ = kvx::kJsonWrongType;
    return {false, {}};
  }
  return {true, std::move(texts)};
}

std::shared_ptr<CJsonObject> CJsonObject::GetObjectValue(const std::string& key) const {
  document_->Part();
  Value& value = Require(key);
  if (value.IsNull()) {
    return nullptr;
  }
  if (!value.IsObject()) {
    FailType(key, "Object");
  }
  return View(value);
}

std::shared_ptr<CJsonObject> CJsonObject::GetPropertyObjectValue(const std::string& key) const {
  document_->Part();
  Value* value = FindNotNull(key);
  if (value == nullptr) {
    return nullptr;
  }
  if (!value->IsObject()) {
    lastError_ = kvx::kJsonWrongType;
    return nullptr;
  }
  return View(*value);
}

std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> CJsonObject::GetPropertyObjectArrayValue(
    const std::string& key) const {
  document_->Part();
  Value* value = FindNotNull(key);
  if (value == nullptr) {
    return {false, {}};
  }
  if (!value->IsArray()) {
    lastError_ = kvx::kJsonWrongType;
    return {false, {}};
  }
  std::list<std::shared_ptr<CJsonObject>> objects;
  for (Value& item : value->GetArray()) {
    if (!item.IsObject()) {
      FailType(key, "Array Object");
    }
    objects.push_back(View(item));
  }
  return {true, std::move(objects)};
}

std::shared_ptr<CJsonObject> CJsonObject::View(Value& value) const {
  return std::make_shared<CJsonObject>(document_, &value);
}

void CJsonObject::BeforeChange() {
  if (!value_->IsObject()) {
    throw CKVXException(kvx::kJsonWrongType, "json node is not Object!");
  }
  document_->PartTaken();
  document_->Part();
}

bool CJsonObject::IsOnlyView() const {
  return value_ == document_.get() && document_.use_count() == 1;
}

Value CJsonObject::CopyOf(const std::shared_ptr<CJsonObject>& object, kvx::CDeepCopy& copy) {
  if (object == nullptr) {
    return {};
  }
  if (object.get() != this && IsOnlyView() && object->IsOnlyView() && object->document_->IsWorthGiving()) {
    return document_->Take(object->document_);
  }
  return copy.Copy(*object->value_);
}

void CJsonObject::SetMember(const std::string& key, Value& value) {
  if (Value* existing = Find(key); existing != nullptr) {
    *existing = value;
    return;
  }
  Document::AllocatorType& allocator = document_->GetAllocator();
  value_->AddMember(Copy(key, allocator), value, allocator);
}

void CJsonObject::SetStringValue(const std::string& key, const std::string& value) {
  BeforeChange();
  Value text = Copy(value, document_->GetAllocator());
  SetMember(key, text);
}

void CJsonObject::SetUInt32Value(const std::string& key, std::uint32_t value) {
  BeforeChange();
  Value number(value);
  SetMember(key, number);
}

void CJsonObject::SetStringArrayValue(const std::string& key, const std::list<std::string>& values) {
  BeforeChange();
  Document::AllocatorType& allocator = document_->GetAllocator();
  Value array(rapidjson::kArrayType);
  array.Reserve(static_cast<SizeType>(values.size()), allocator);
  for (const std::string& value : values) {
    array.PushBack(Copy(value, allocator), allocator);
  }
  SetMember(key, array);
}

void CJsonObject::SetObjectArrayValue(const std::string& key, const std::list<std::shared_ptr<CJsonObject>>& objects) {
  BeforeChange();
  Document::AllocatorType& allocator = document_->GetAllocator();
  Value array(rapidjson::kArrayType);
  array.Reserve(static_cast<SizeType>(objects.size()), allocator);
  kvx::CDeepCopy copy(allocator);
  for (const std::shared_ptr<CJsonObject>& object : objects) {
    array.PushBack(CopyOf(object, copy), allocator);
  }
  SetMember(key, array);
}

void CJsonObject::SetObjectValue(const std::string& key, const std::shared_ptr<CJsonObject>& object) {
  BeforeChange();
  Document::AllocatorType& allocator = document_->GetAllocator();
  // The copy comes first: the object may be a view on the very member that is removed.
  kvx::CDeepCopy deepCopy(allocator);
  Value copy = CopyOf(object, deepCopy);
  const Value name(Reference(key));
  while (value_->EraseMember(name)) {
    // A parsed object may hold the member more than once.
  }
  value_->AddMember(Copy(key, allocator), copy, allocator);
}

std::uint32_t CJsonObject::GetLastError() const noexcept {
  return lastError_;
}
