#pragma once

#include <memory>
#include <string>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"

namespace test {

inline const std::string& Large() {
  static const std::string text(17000, 'x');
  return text;
}

/// Of a size that is not copied at once.
inline std::shared_ptr<CJsonObject> LargeObject() {
  return Json(R"({"large": ")" + Large() + R"(", "n": "1", "inner": {"n": "1"}, "list": [{"n": "1"}, {"n": "2"}]})");
}

}  // namespace test
