#pragma once

#include <string>

namespace kvx {

/// A name for a new file beside `target`, most likely one that nothing has: "TARGET.unfinished-XXXXXX".
std::string MakeUnfinishedName(const std::string& target);

/// Locks a new file under such a name, and with it tells RemoveLeftovers() that its process still works. False when
/// another process has taken it for a leftover. True, without a lock, where the file system has none.
bool LockUnfinished(int descriptor, const std::string& name);

/// Removes the files under such names that no process holds a lock on, as far as this process may.
void RemoveLeftovers(const std::string& target);

}  // namespace kvx
