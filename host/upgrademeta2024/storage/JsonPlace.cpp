#include "upgrademeta2024/storage/JsonPlace.h"

#include "kvxsptstring/StringHelper.h"

std::string CJsonPlace::ToPointer() const {
  std::string pointer;
  for (const SStep& step : steps_) {
    pointer += '/';
    if (!step.isKey) {
      pointer += std::to_string(step.index);
      continue;
    }
    for (const char c : step.key) {
      if (c == '~') {
        pointer += "~0";
      } else if (c == '/') {
        pointer += "~1";
      } else {
        pointer += c;
      }
    }
  }
  return pointer.empty() ? "/" : CStringHelper::ToVisible(pointer);
}
