#include "upgrademeta2024/storage/document/JsonPlace.h"

#include <algorithm>

#include "kvxsptstring/StringHelper.h"

std::string CJsonPlace::ToPointer() const {
  std::string pointer;
  for (std::size_t i = 0; i < std::min(depth_, kMaxDepth); ++i) {
    const SStep& step = steps_[i];
    pointer += '/';
    if (step.key == nullptr) {
      pointer += std::to_string(step.sizeOrIndex);
      continue;
    }
    for (const char c : std::string_view(step.key, step.sizeOrIndex)) {
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
