#pragma once

#include <string>

namespace upgradesrv {

/// Looks who may change a module's file, or put another in its place in its directory, beside this user and root: they
/// choose what this process does. Throws CTrouble when this process is root's; tells a note (CFileNotes) otherwise.
/// Members of this user's own group and of root's are trusted.
void LookWhoMayWriteModule(const std::string& path);

}  // namespace upgradesrv
