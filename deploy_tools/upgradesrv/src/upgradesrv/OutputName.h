#pragma once

#include <string>

namespace upgradesrv {

/// What is wrong with the name of a `thing`, a file or a directory, that is to be written; empty for nothing. "-" is
/// standard output to other programs, so that nobody means a file of that name.
std::string OutputNameProblem(const std::string& name, const std::string& thing);

}  // namespace upgradesrv
