#include "kvxsptfile/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/FilePlace.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

constexpr mode_t kPermissionBits = 07777;

/// The permissions that open(2) would give a new file. umask(2) can only be read by setting it.
mode_t NewFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

int SyncDirectoryOf(const std::string& file) {
  const std::filesystem::path parent = std::filesystem::path(file).parent_path();
  const std::string directory = parent.empty() ? "." : parent.string();
  const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) {
    return errno;
  }
  const int result = fsync(descriptor) != 0 ? errno : 0;
  close(descriptor);
  // Some file systems cannot flush a directory; the rename has happened either way.
  return result == EINVAL || result == ENOTSUP ? 0 : result;
}

}  // namespace

CAtomicFile::CAtomicFile(const std::string& path)
    : path_(path), buffer_(std::make_unique<std::array<char, kBufferSize>>()) {
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
  std::string name = target_ + ".XXXXXX";
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) {
    Fail(errno);
  }
  temporary_ = std::move(name);
  if (fchmod(descriptor_, exists ? status.st_mode & kPermissionBits : NewFileMode()) != 0) {
    const int error = errno;
    close(descriptor_);
    unlink(temporary_.c_str());
    Fail(error);
  }
}

CAtomicFile::~CAtomicFile() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
  if (!temporary_.empty()) {
    unlink(temporary_.c_str());
  }
}

void CAtomicFile::Fail(int error) const {
  throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": cannot be saved: " + std::strerror(error) +
                                      "; nothing was changed");
}

void CAtomicFile::WriteAll(const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = write(descriptor_, data, size);
    if (count < 0) {
      if (errno == EINTR) {
        continue;
      }
      Fail(errno);
    }
    if (count == 0) {
      // Not an error by the letter, but trying again might go on for ever.
      Fail(EIO);
    }
    data += count;
    size -= static_cast<std::size_t>(count);
  }
}

void CAtomicFile::FlushBuffer() {
  WriteAll(buffer_->data(), used_);
  used_ = 0;
}

void CAtomicFile::Write(const char* data, std::size_t size) {
  if (size > kBufferSize - used_) {
    FlushBuffer();
  }
  if (size > kBufferSize) {
    WriteAll(data, size);
  } else {
    std::memcpy(buffer_->data() + used_, data, size);
    used_ += size;
  }
}

void CAtomicFile::PutN(char c, std::size_t count) {
  while (count > 0) {
    if (used_ == kBufferSize) {
      FlushBuffer();
    }
    const std::size_t part = std::min(count, kBufferSize - used_);
    std::memset(buffer_->data() + used_, c, part);
    used_ += part;
    count -= part;
  }
}

void CAtomicFile::Finish() {
  FlushBuffer();
  if (fsync(descriptor_) != 0) {
    Fail(errno);
  }
  if (close(std::exchange(descriptor_, -1)) != 0) {
    Fail(errno);
  }
}

void CAtomicFile::Commit() {
  Finish();
  if (rename(temporary_.c_str(), target_.c_str()) != 0) {
    Fail(errno);
  }
  temporary_.clear();
  SyncDirectory("was replaced");
}

bool CAtomicFile::CommitNew() {
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

void CAtomicFile::SyncDirectory(const std::string& done) const {
  if (const int error = SyncDirectoryOf(target_); error != 0) {
    throw CKVXException(kFileError, CStringHelper::ToVisible(path_) + ": " + done +
                                        ", but its directory cannot be flushed to disk: " + std::strerror(error));
  }
}

}  // namespace kvx
