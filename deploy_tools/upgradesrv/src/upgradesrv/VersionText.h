#pragma once

#include <string>

namespace upgradesrv {

/// What "--version" prints: the version, what it was built from, what it reads, and the modules that it finds.
std::string VersionText();

}  // namespace upgradesrv
