#include "upgradesrv/init/NewDirectory.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptfile/OpeningProblem.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

namespace fs = std::filesystem;

constexpr ::mode_t kEverything = 0777;

}  // namespace

CNewDirectory::CNewDirectory(std::string path) : path_(std::move(path)) {
  // What is made must be noted even where memory is short.
  constexpr std::size_t kMost = 16;
  made_.reserve(kMost);
  if (mkdir(path_.c_str(), kEverything) == 0) {
    made_.push_back(path_);
    return;
  }
  const int problem = errno;
  std::error_code error;
  if (!fs::exists(path_, error)) {
    if (fs::is_symlink(path_, error)) {
      throw CTrouble(path_ + ": " + kvx::OpeningProblem(path_, ENOENT) + "; give the path of a new directory");
    }
    FailMaking(path_, problem);
  }
  if (!fs::is_directory(path_, error)) {
    throw CTrouble(path_ + ": is there and not a directory; give the path of a new directory");
  }
  const bool isEmpty = fs::is_empty(path_, error);
  if (error) {
    throw CTrouble(path_ + ": cannot be read: " + error.message());
  }
  if (!isEmpty) {
    throw CTrouble(path_ + ": is not empty, and nothing that is there is touched; give the path of a new directory");
  }
}

CNewDirectory::~CNewDirectory() {
  for (auto path = made_.rbegin(); path != made_.rend(); ++path) {
    std::error_code ignored;
    fs::remove(*path, ignored);
  }
}

void CNewDirectory::MakeDirectory(const std::string& path) {
  std::string whole = path_ + "/" + path;
  if (mkdir(whole.c_str(), kEverything) != 0) {
    FailMaking(whole, errno);
  }
  made_.push_back(std::move(whole));
}

void CNewDirectory::WriteFile(const std::string& path, std::string_view content) {
  std::string whole = path_ + "/" + path;
  kvx::CAtomicFile file(whole);
  file.Write(content.data(), content.size());
  if (!file.CommitNew()) {
    FailMaking(whole, EEXIST);
  }
  made_.push_back(std::move(whole));
}

void CNewDirectory::Keep() {
  if (kvx::CDelayedEnd::IsWaitedFor()) {
    throw CTrouble(path_ + ": cannot be made: a signal ends the program; nothing was changed");
  }
  made_.clear();
}

void CNewDirectory::FailMaking(const std::string& path, int error) {
  std::string wayOut;
  const fs::path parent = fs::path(path).parent_path();
  if (std::error_code ignored; error == ENOENT && !fs::exists(parent, ignored)) {
    wayOut = "; make the directory " + parent.string() + " first";
  }
  throw CTrouble(path + ": cannot be made: " + std::strerror(error) + wayOut + "; nothing was changed");
}

}  // namespace upgradesrv
