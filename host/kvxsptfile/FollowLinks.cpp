#include "kvxsptfile/FollowLinks.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <deque>
#include <filesystem>
#include <system_error>

namespace kvx {
namespace {

namespace fs = std::filesystem;

/// Whether a link in `directory` is there by the will of this user or of the directory's owner.
bool MayFollow(const fs::path& directory, const struct stat& link) {
  struct stat status {};
  return stat(directory.empty() ? "." : directory.c_str(), &status) == 0 &&
         ((status.st_mode & S_IWOTH) == 0 || link.st_uid == geteuid() || link.st_uid == status.st_uid);
}

}  // namespace

SFollowedPath FollowLinks(const std::string& path) {
  // As many links as the system itself follows.
  constexpr int kMostLinks = 40;
  const fs::path whole(path);
  std::deque<fs::path> left(whole.begin(), whole.end());
  if (left.empty()) {
    return {"", std::strerror(ENOENT)};
  }
  fs::path followed;
  for (int links = 0; !left.empty();) {
    const fs::path next = followed / left.front();
    left.pop_front();
    struct stat status {};
    if (lstat(next.c_str(), &status) != 0 && !(errno == ENOENT && left.empty())) {
      return {"", std::strerror(errno)};
    }
    if (!S_ISLNK(status.st_mode)) {
      followed = next;
      continue;
    }
    if (!MayFollow(followed, status)) {
      return {"", next.string() + " is a symbolic link of another user in a directory that all may write to"};
    }
    std::error_code error;
    const fs::path target = fs::read_symlink(next, error);
    if (error || ++links > kMostLinks) {
      return {"", error ? error.message() : std::strerror(ELOOP)};
    }
    left.insert(left.begin(), target.begin(), target.end());
  }
  return {followed, ""};
}

}  // namespace kvx
