#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace otherhost {
struct SValue;
struct STestAccess;
}  // namespace otherhost

class CJsonObject {
 public:
  CJsonObject();
  CJsonObject(const std::shared_ptr<otherhost::SValue>& document, otherhost::SValue* value);
  CJsonObject(const CJsonObject&) = delete;
  CJsonObject& operator=(const CJsonObject&) = delete;

  std::shared_ptr<otherhost::SValue> Share();

  void CreateFromFile(const std::string& path);
  void SaveToFile(const std::string& path) const;

  std::string GetStringValue(const std::string& key);
  std::pair<bool, std::string> GetPropertyStringValue(const std::string& key);
  std::list<std::string> GetStringArrayValue(const std::string& key) const;
  std::pair<bool, std::list<std::string>> GetPropertyStringArrayValue(const std::string& key) const;
  void GetAllKey(std::list<std::string>& keys) const;
  std::shared_ptr<CJsonObject> GetObjectValue(const std::string& key);
  std::shared_ptr<CJsonObject> GetPropertyObjectValue(const std::string& key);
  std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> GetPropertyObjectArrayValue(const std::string& key);

  void SetStringValue(const std::string& key, const std::string& value);
  void SetUInt32Value(const std::string& key, std::uint32_t value);
  void SetStringArrayValue(const std::string& key, const std::list<std::string>& values);
  void SetObjectValue(const std::string& key, const std::shared_ptr<CJsonObject>& object);
  void SetObjectArrayValue(const std::string& key, const std::list<std::shared_ptr<CJsonObject>>& objects);

 private:
  friend struct otherhost::STestAccess;

  std::shared_ptr<otherhost::SValue> document_;
  otherhost::SValue* value_;
};
