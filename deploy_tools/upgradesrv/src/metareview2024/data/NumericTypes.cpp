#include "metareview2024/data/NumericTypes.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace metareview {
namespace {

constexpr std::array<SNumericType, 6> kTypes = {{
    {"int8", "-128", "128", 0},
    {"int16", "-32768", "32768", 0},
    {"int32", "-2147483648", "2147483648", 0},
    {"int64", "-9223372036854775808", "9223372036854775808", 0},
    {"float32", "", "", 24},
    {"float64", "", "", 53},
}};

const SNumericType* Find(std::string_view name) {
  const auto* const found =
      std::find_if(kTypes.begin(), kTypes.end(), [name](const SNumericType& type) { return type.name == name; });
  return found != kTypes.end() ? found : nullptr;
}

}  // namespace

const SNumericType& NumericType(std::string_view name) {
  const SNumericType* const type = Find(name);
  if (type == nullptr) {
    throw std::logic_error("no numeric type");
  }
  return *type;
}

bool IsNumericType(std::string_view name) {
  return name == "money" || Find(name) != nullptr;
}

}  // namespace metareview
