#pragma once

#include <string_view>

namespace upgradesrv {

/// The text of an info.json with every display text that the metamodel check knows.
extern const std::string_view kDisplayTexts;

}  // namespace upgradesrv
