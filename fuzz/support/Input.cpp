#include "fuzz/support/Input.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "fuzz/support/Failure.h"
#include "kvxsptjson/JsonDocument.h"
#include "kvxsptjson/JsonObject.h"

namespace fuzz {

std::string Text(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

bool CDocuments::Read(const std::string& input) {
  root_ = std::make_shared<CJsonObject>();
  return Succeeded(test::ErrorOf([&] { root_->CreateFromText(input, "input"); })) && root_->IsObject();
}

std::string CDocuments::Text(const std::string& key) const {
  if (!root_->HasMember(key)) {
    return "";
  }
  if (root_->IsString(key)) {
    return root_->GetStringValue(key);
  }
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  (*root_->Share())[key.c_str()].Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace fuzz
