#pragma once

#include <string>
#include <string_view>

namespace metareview {

/// What a number has to be so that a property of the type holds it.
struct SNumericType {
  std::string_view name;
  /// The least whole number, and the first that is too great; empty for a floating point type.
  std::string_view least;
  std::string_view tooGreat;
  /// The binary digits of a floating point type.
  int digits;

  bool IsWhole() const { return !least.empty(); }
};

/// Of the numbers of float32 that have all their digits.
constexpr const char* kLeastFloat32 = "1.1754943508222875e-38";
constexpr const char* kGreatestFloat32 = "3.4028234663852886e38";

/// int8, int16, int32, int64, float32 or float64.
const SNumericType& NumericType(std::string_view name);

/// Whether properties of the type hold numbers: one of these, or money.
bool IsNumericType(std::string_view name);

}  // namespace metareview
