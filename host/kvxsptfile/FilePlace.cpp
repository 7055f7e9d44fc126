#include "kvxsptfile/FilePlace.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace kvx {

std::string FollowLinks(const std::string& path, std::error_code& error) {
  namespace fs = std::filesystem;
  fs::path target = path;
  // As many links as the system itself follows.
  for (int links = 0; links < 40; ++links) {
    const fs::file_type type = fs::symlink_status(target, error).type();
    if (type == fs::file_type::none) {
      return target.string();
    }
    error.clear();
    if (type != fs::file_type::symlink) {
      return target.string();
    }
    const fs::path next = fs::read_symlink(target, error);
    if (error) {
      return target.string();
    }
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return target.string();
}

int RenameToNew(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return errno;
  }
  // Not every file system can rename without replacing. A second name for the file replaces nothing either.
  if (link(from.c_str(), to.c_str()) != 0) {
    return errno;
  }
  unlink(from.c_str());
  return 0;
}

}  // namespace kvx
