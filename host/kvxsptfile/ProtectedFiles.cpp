#include "kvxsptfile/ProtectedFiles.h"

#include <sys/stat.h>

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

namespace kvx {
namespace {

struct SProtected {
  std::mutex mutex;
  // A file may be protected more than once.
  std::multiset<std::string> paths;
};

SProtected& Protected() {
  static SProtected files;
  return files;
}

}  // namespace

CProtectedFiles::CProtectedFiles(std::vector<std::string> paths) : paths_(std::move(paths)) {
  SProtected& files = Protected();
  const std::lock_guard<std::mutex> lock(files.mutex);
  files.paths.insert(paths_.begin(), paths_.end());
}

CProtectedFiles::~CProtectedFiles() {
  SProtected& files = Protected();
  const std::lock_guard<std::mutex> lock(files.mutex);
  for (const std::string& path : paths_) {
    files.paths.erase(files.paths.find(path));
  }
}

std::string CProtectedFiles::Find(const std::string& path) {
  struct stat wanted {};
  if (stat(path.c_str(), &wanted) != 0) {
    return "";
  }
  SProtected& files = Protected();
  const std::lock_guard<std::mutex> lock(files.mutex);
  const auto found = std::find_if(files.paths.begin(), files.paths.end(), [&wanted](const std::string& name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && status.st_dev == wanted.st_dev && status.st_ino == wanted.st_ino;
  });
  return found != files.paths.end() ? *found : "";
}

}  // namespace kvx
