#pragma once

#include <string>

namespace kvx {

/// Renames a file to a name that nothing has yet. Answers with 0 or an errno; with EEXIST, something has the name and
/// is as it was.
int RenameToNew(const std::string& from, const std::string& to);

}  // namespace kvx
