#pragma once

#include <string>
#include <system_error>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// The file that `path` names once symbolic links are followed; `path` itself where nothing is there yet. With an error
/// nothing is known: what stands there may be a link, which must not be replaced.
KVXSPTFILE_EXPORT std::string FollowLinks(const std::string& path, std::error_code& error);

/// Renames a file to a name that nothing has yet. Answers with 0 or an errno; with EEXIST, something has the name and
/// is as it was.
KVXSPTFILE_EXPORT int RenameToNew(const std::string& from, const std::string& to);

}  // namespace kvx
