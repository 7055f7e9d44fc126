#include "kvxsptfile/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FileNotes.h"
#include "kvxsptfile/FollowLinks.h"
#include "kvxsptfile/ProtectedFiles.h"
#include "kvxsptfile/detail/FileAttributes.h"
#include "kvxsptfile/detail/RenameToNew.h"
#include "kvxsptfile/detail/UnfinishedName.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

std::string DirectoryOf(const std::string& file) {
  const std::filesystem::path parent = std::filesystem::path(file).parent_path();
  return parent.empty() ? "." : parent.string();
}

}  // namespace

CTemporaryFile::CTemporaryFile(const std::string& path) : path_(path) {
  SFollowedPath followed = FollowLinks(path);
  if (!followed.problem.empty()) {
    Fail(followed.problem);
  }
  target_ = std::move(followed.path);
  LookAtTarget();
  directory_ = CFileDescriptor(open(DirectoryOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory_.IsOpen() && errno != EACCES) {
    Fail(errno);
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

void CTemporaryFile::LookAtTarget() {
  struct stat status {};
  if (stat(target_.c_str(), &status) != 0) {
    if (errno != ENOENT) {
      Fail(errno);
    }
    return;
  }
  if (!S_ISREG(status.st_mode)) {
    Fail(S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "Not a regular file");
  }
  if (const std::string input = CProtectedFiles::Find(target_); !input.empty()) {
    Fail("it is the same file as " + input + ", which is read here");
  }
  try {
    attributes_ = std::make_unique<CFileAttributes>(target_);
  } catch (const std::system_error& error) {
    Fail(error.code().value());
  }
}

bool CTemporaryFile::TryCreate() {
  unfinished_.reset();
  temporary_ = MakeUnfinishedName(target_);
  unfinished_.emplace(temporary_);
  // What is written in place of a file is nobody else's business before it has that file's permissions.
  const mode_t mode = attributes_ != nullptr ? 0600 : 0666;
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
  Fail(std::strerror(error));
}

void CTemporaryFile::Fail(const std::string& reason) const {
  throw CKVXException(kFileError,
                      CStringHelper::ToVisible(path_ + ": cannot be saved: " + reason) + "; nothing was changed");
}

void CTemporaryFile::KeepAttributes() {
  if (attributes_ == nullptr) {
    return;
  }
  std::string words;
  try {
    for (const std::string& word : attributes_->GiveTo(file_.Get())) {
      words += (words.empty() ? "" : ", ") + word;
    }
  } catch (const std::system_error& error) {
    Fail(error.code().value());
  }
  if (!words.empty()) {
    note_ = CStringHelper::ToVisible(path_) + ": was replaced, but this process may not give the new file the " +
            words + " of the old one";
  }
}

void CTemporaryFile::Finish() {
  KeepAttributes();
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
  EndAs("was replaced");
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
  EndAs("was created");
  return true;
}

void CTemporaryFile::EndAs(const std::string& done) {
  unfinished_.reset();
  temporary_.clear();
  if (!note_.empty()) {
    CFileNotes::Tell(note_);
  }
  // A directory that may not be read cannot be flushed alone, but its whole file system can.
  const int result = directory_.IsOpen() ? fsync(directory_.Get()) : syncfs(file_.Get());
  // Some file systems cannot flush a directory; the rename has happened either way.
  if (result != 0 && errno != EINVAL && errno != ENOTSUP) {
    throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": " + done +
                                        ", but its directory cannot be flushed to disk: " + std::strerror(errno));
  }
}

}  // namespace kvx
