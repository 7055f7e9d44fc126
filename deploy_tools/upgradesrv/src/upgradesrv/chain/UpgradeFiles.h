#pragma once

namespace upgradesrv {

// Files of an upgrade configuration directory, below it.
inline constexpr const char* kConfigurationFile = "/upgrade.json";
inline constexpr const char* kDecisionsFile = "/decisions.json";
inline constexpr const char* kDisplayTextsFile = "/multilanguage/strings/info.json";
inline constexpr const char* kLogConfigurationFile = "/log4cplus.properties";

}  // namespace upgradesrv
