#include "kvxsptfile/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FilePlace.h"
#include "kvxsptfile/detail/UnfinishedName.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

constexpr mode_t kPermissionBits = 07777;

std::string DirectoryOf(const std::string& file) {
  const std::filesystem::path parent = std::filesystem::path(file).parent_path();
  return parent.empty() ? "." : parent.string();
}

}  // namespace

CTemporaryFile::CTemporaryFile(const std::string& path) : path_(path) {
  std::error_code linkError;
  target_ = FollowLinks(path, linkError);
  if (linkError) {
    Fail(linkError.value());
  }
  struct stat status {};
  const bool exists = stat(target_.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) {
    // Nothing can be said of what is there, for example of links that lead in a circle.
    Fail(errno);
  }
  if (exists && !S_ISREG(status.st_mode)) {
    Fail(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  }
  directory_ = CFileDescriptor(open(DirectoryOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory_.IsOpen() && errno != EACCES) {
    Fail(errno);
  }
  if (exists) {
    mode_ = status.st_mode & kPermissionBits;
  }
  RemoveLeftovers(target_);
  constexpr int kAttempts = 100;
  int attempts = 1;
  while (!TryCreate()) {
    if (++attempts > kAttempts) {
      Fail(EBUSY);
    }
  }
}

CTemporaryFile::~CTemporaryFile() {
  // The name goes first, while the lock keeps it this file's.
  if (!temporary_.empty()) {
    unlink(temporary_.c_str());
  }
}

bool CTemporaryFile::TryCreate() {
  temporary_ = MakeUnfinishedName(target_);
  // What is written in place of a file is nobody else's business before it has that file's permissions.
  const mode_t mode = mode_ ? 0600 : 0666;
  file_ = CFileDescriptor(open(temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!file_.IsOpen()) {
    if (errno == EEXIST) {
      return false;
    }
    Fail(errno);
  }
  if (LockUnfinished(file_.Get(), temporary_)) {
    return true;
  }
  unlink(temporary_.c_str());
  file_.Close();
  return false;
}

void CTemporaryFile::Fail(int error) const {
  throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": cannot be saved: " + std::strerror(error) +
                                      "; nothing was changed");
}

void CTemporaryFile::Finish() {
  if (mode_ && fchmod(file_.Get(), *mode_) != 0) {
    Fail(errno);
  }
  if (fsync(file_.Get()) != 0) {
    Fail(errno);
  }
  // Some file systems tell of an error only as a descriptor is closed. This one goes on being locked.
  CFileDescriptor copy(fcntl(file_.Get(), F_DUPFD_CLOEXEC, 0));
  if (!copy.IsOpen()) {
    Fail(errno);
  }
  if (const int error = copy.Close(); error != 0) {
    Fail(error);
  }
}

void CTemporaryFile::Commit() {
  Finish();
  if (rename(temporary_.c_str(), target_.c_str()) != 0) {
    Fail(errno);
  }
  temporary_.clear();
  SyncDirectory("was replaced");
}

bool CTemporaryFile::CommitNew() {
  Finish();
  const int error = RenameToNew(temporary_, target_);
  if (error == EEXIST) {
    return false;
  }
  if (error != 0) {
    Fail(error);
  }
  temporary_.clear();
  SyncDirectory("was created");
  return true;
}

void CTemporaryFile::SyncDirectory(const std::string& done) const {
  // A directory that may not be read cannot be flushed alone, but its whole file system can.
  const int result = directory_.IsOpen() ? fsync(directory_.Get()) : syncfs(file_.Get());
  // Some file systems cannot flush a directory; the rename has happened either way.
  if (result != 0 && errno != EINVAL && errno != ENOTSUP) {
    throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": " + done +
                                        ", but its directory cannot be flushed to disk: " + std::strerror(errno));
  }
}

}  // namespace kvx
