#include "metareview2024/rules/Number.h"

#include <algorithm>

namespace metareview {
namespace {

/// A decimal number's digits without those that do not count: neither part is longer than it must be.
struct SNumber {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;

  bool IsZero() const { return whole.empty() && fraction.empty(); }
};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool AreDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::optional<SNumber> Parse(std::string_view text) {
  SNumber number;
  if (!text.empty() && text.front() == '-') {
    number.negative = true;
    text.remove_prefix(1);
  }
  const std::size_t point = text.find('.');
  number.whole = text.substr(0, point);
  if (!AreDigits(number.whole)) {
    return std::nullopt;
  }
  if (point != std::string_view::npos) {
    number.fraction = text.substr(point + 1);
    if (!AreDigits(number.fraction)) {
      return std::nullopt;
    }
  }
  number.whole.remove_prefix(std::min(number.whole.find_first_not_of('0'), number.whole.size()));
  number.fraction = number.fraction.substr(0, number.fraction.find_last_not_of('0') + 1);
  return number;
}

int CompareMagnitudes(const SNumber& a, const SNumber& b) {
  if (a.whole.size() != b.whole.size()) {
    return a.whole.size() < b.whole.size() ? -1 : 1;
  }
  const int whole = a.whole.compare(b.whole);
  return whole != 0 ? whole : a.fraction.compare(b.fraction);
}

}  // namespace

std::optional<int> CompareNumbers(std::string_view a, std::string_view b) {
  const std::optional<SNumber> first = Parse(a);
  const std::optional<SNumber> second = Parse(b);
  if (!first || !second) {
    return std::nullopt;
  }
  // Zero has no sign.
  const bool firstNegative = first->negative && !first->IsZero();
  const bool secondNegative = second->negative && !second->IsZero();
  if (firstNegative != secondNegative) {
    return firstNegative ? -1 : 1;
  }
  return firstNegative ? CompareMagnitudes(*second, *first) : CompareMagnitudes(*first, *second);
}

}  // namespace metareview
