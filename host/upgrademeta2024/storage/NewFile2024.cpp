#include "upgrademeta2024/storage/NewFile2024.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace metadb {
namespace {

[[noreturn]] void Fail() {
  throw std::system_error(errno, std::generic_category());
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
  directory_ = target.parent_path() / ("." + target.filename().string() + ".XXXXXX");
  if (mkdtemp(directory_.data()) == nullptr) {
    Fail();
  }
  path_ = directory_ + "/" + target.filename().string();
}

CNewFile::~CNewFile() {
  std::error_code error;
  std::filesystem::remove_all(directory_, error);
}

void CNewFile::Publish() {
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target_.c_str(), RENAME_NOREPLACE) != 0) {
    // Not every file system can rename without replacing.
    if (errno != EINVAL || access(target_.c_str(), F_OK) == 0 || rename(path_.c_str(), target_.c_str()) != 0) {
      Fail();
    }
  }
  SyncDirectory(std::filesystem::path(target_).parent_path());
}

}  // namespace metadb
