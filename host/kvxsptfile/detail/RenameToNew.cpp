#include "kvxsptfile/detail/RenameToNew.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace kvx {

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
