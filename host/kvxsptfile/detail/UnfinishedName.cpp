#include "kvxsptfile/detail/UnfinishedName.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>
#include <string_view>
#include <vector>

#include "kvxsptfile/FileDescriptor.h"

namespace kvx {
namespace {

namespace fs = std::filesystem;

// A word of its own: nobody's backup of a file is to look like a leftover.
constexpr std::string_view kMark = ".unfinished-";
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t kLetterCount = 6;

/// Whether `name` is that of a new file of a target whose own name and mark are `prefix`.
bool IsUnfinishedName(std::string_view name, std::string_view prefix) {
  return name.size() == prefix.size() + kLetterCount && name.substr(0, prefix.size()) == prefix &&
         name.find_first_not_of(kLetters, prefix.size()) == std::string_view::npos;
}

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether the open file still has the name.
bool HasName(int descriptor, const std::string& name) {
  struct stat opened {};
  struct stat named {};
  return fstat(descriptor, &opened) == 0 && lstat(name.c_str(), &named) == 0 && IsSameFile(opened, named);
}

void RemoveUnlessLocked(const std::string& name) {
  struct stat status {};
  if (lstat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return;
  }
  // Network file systems lock only what is open for writing.
  const CFileDescriptor file(open(name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && HasName(file.Get(), name)) {
    unlink(name.c_str());
  }
}

}  // namespace

std::string MakeUnfinishedName(const std::string& target) {
  std::string name = target;
  name += kMark;
  std::random_device random;
  std::uniform_int_distribution<std::size_t> letter(0, kLetters.size() - 1);
  std::generate_n(std::back_inserter(name), kLetterCount, [&] { return kLetters[letter(random)]; });
  return name;
}

bool LockUnfinished(int descriptor, const std::string& name) {
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    return false;
  }
  return HasName(descriptor, name);
}

void RemoveLeftovers(const std::string& target) {
  const fs::path path(target);
  std::string prefix = path.filename();
  prefix += kMark;
  std::error_code error;
  std::vector<std::string> leftovers;
  const fs::path directory = path.has_parent_path() ? path.parent_path() : ".";
  for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error)) {
    if (IsUnfinishedName(entry->path().filename().native(), prefix)) {
      leftovers.push_back(entry->path());
    }
  }
  for (const std::string& leftover : leftovers) {
    RemoveUnlessLocked(leftover);
  }
}

}  // namespace kvx
