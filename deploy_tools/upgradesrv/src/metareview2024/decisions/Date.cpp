#include <algorithm>
#include <array>
#include <string>

#include "metareview2024/DecisionsFile.h"

namespace metareview {

bool IsDate(const std::string& text) {
  constexpr std::string_view kForm = "0000-00-00";
  const bool hasForm = std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(), [](char c, char wanted) {
    return wanted == '0' ? c >= '0' && c <= '9' : c == wanted;
  });
  if (!hasForm) {
    return false;
  }
  const int year = std::stoi(text.substr(0, 4));
  const int month = std::stoi(text.substr(5, 2));
  const int day = std::stoi(text.substr(8, 2));
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  const std::array<int, 12> days = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month >= 1 && month <= 12 && day >= 1 && day <= days.at(static_cast<std::size_t>(month) - 1);
}

}  // namespace metareview
