#include "upgrademeta2024/storage/database/sqlite/NewFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "kvxsptfile/FilePlace.h"

namespace metadb {
namespace {

[[noreturn]] void Fail(int error) {
  throw std::system_error(error, std::generic_category());
}

/// What the name of a directory begins with in which the file is written.
std::string DirectoryPrefix(const std::filesystem::path& target) {
  return "." + target.filename().string() + ".unfinished-";
}

/// Negative for what is no directory.
int OpenDirectory(const std::string& directory) {
  return open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

void Close(int descriptor) {
  if (descriptor >= 0) {
    close(descriptor);
  }
}

/// Whether all that a directory holds is the file itself and what SQLite writes beside it.
bool HoldsOnlyFilesOf(const std::filesystem::path& target, const std::filesystem::path& directory) {
  const std::string name = target.filename().string();
  std::error_code error;
  for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string found = entry->path().filename().string();
    if (found != name && found != name + "-journal") {
      return false;
    }
  }
  return !error;
}

void SyncDirectory(const std::filesystem::path& directory) {
  // The file has its name either way; a file system that cannot flush a directory is no failure.
  const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
}

}  // namespace

CNewFile::CNewFile(const std::string& path) : target_(path) {
  const std::filesystem::path target(path);
  const std::string pattern = target.parent_path() / (DirectoryPrefix(target) + "XXXXXX");
  constexpr int kAttempts = 100;
  int attempts = 1;
  while (!TryMakeDirectory(pattern)) {
    if (++attempts > kAttempts) {
      Fail(EBUSY);
    }
  }
  path_ = directory_ + "/" + target.filename().string();
}

CNewFile::~CNewFile() {
  std::error_code error;
  std::filesystem::remove_all(directory_, error);
  Close(lock_);
}

bool CNewFile::TryMakeDirectory(const std::string& pattern) {
  directory_ = pattern;
  if (mkdtemp(directory_.data()) == nullptr) {
    Fail(errno);
  }
  const int error = LockDirectory();
  if (error == 0) {
    return true;
  }
  Close(std::exchange(lock_, -1));
  rmdir(directory_.c_str());
  // Somebody took it for a leftover before it was locked.
  if (error == ENOENT || error == EWOULDBLOCK) {
    return false;
  }
  Fail(error);
}

int CNewFile::LockDirectory() {
  lock_ = OpenDirectory(directory_);
  if (lock_ < 0) {
    return errno;
  }
  // A file system without locks has none to remove leftovers under either.
  if (flock(lock_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    return errno;
  }
  return access(directory_.c_str(), F_OK) == 0 ? 0 : errno;
}

void CNewFile::RemoveLeftovers(const std::string& path) {
  const std::filesystem::path target(path);
  const std::string prefix = DirectoryPrefix(target);
  std::error_code error;
  std::vector<std::filesystem::path> leftovers;
  for (std::filesystem::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path().filename().string().compare(0, prefix.size(), prefix) == 0) {
      leftovers.push_back(entry->path());
    }
  }
  for (const std::filesystem::path& leftover : leftovers) {
    const int lock = OpenDirectory(leftover);
    if (lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) == 0 && HoldsOnlyFilesOf(target, leftover)) {
      std::filesystem::remove_all(leftover, error);
    }
    Close(lock);
  }
}

bool CNewFile::Publish() {
  const int error = kvx::RenameToNew(path_, target_);
  if (error == EEXIST) {
    return false;
  }
  if (error != 0) {
    Fail(error);
  }
  SyncDirectory(std::filesystem::path(target_).parent_path());
  return true;
}

}  // namespace metadb
