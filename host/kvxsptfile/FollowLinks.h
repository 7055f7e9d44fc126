#pragma once

#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

struct SFollowedPath {
  /// The path without symbolic links; what it names need not be there yet.
  std::string path;
  /// Why the path cannot be followed, and nothing is known of what is there; empty when it can.
  std::string problem;
};

/// Follows the symbolic links of a path to a file that is to be written. A link that another user has put into a
/// directory that all may write to is not followed, whether or not the system would do so: it may lead anywhere.
KVXSPTFILE_EXPORT SFollowedPath FollowLinks(const std::string& path);

}  // namespace kvx
