#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace otherhost {
struct SProperty;
}  // namespace otherhost

class CMetaProperty2024 {
 public:
  CMetaProperty2024(const std::string& element, const otherhost::SProperty& values);
  ~CMetaProperty2024();
  CMetaProperty2024(const CMetaProperty2024&) = delete;
  CMetaProperty2024& operator=(const CMetaProperty2024&) = delete;

  std::string GetInternalName() const;
  std::string GetDisplayName() const;
  std::string GetField() const;
  std::string GetType() const;
  std::uint32_t GetLength() const;
  std::uint16_t GetPrecision() const;
  void GetMaxMinValue(std::string& max, std::string& min) const;
  std::string GetDefaultValue() const;
  std::string GetLookupClass() const;

 private:
  std::string record_;
  std::unique_ptr<const otherhost::SProperty> values_;
};
