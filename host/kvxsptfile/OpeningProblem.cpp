#include "kvxsptfile/OpeningProblem.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "kvxsptstring/StringHelper.h"

namespace kvx {

std::string OpeningProblem(const std::string& path, int error) {
  std::error_code linkError;
  const std::filesystem::path target = std::filesystem::read_symlink(path, linkError);
  if (error != ENOENT || linkError) {
    return std::strerror(error);
  }
  return "is a symbolic link to " + CStringHelper::ToVisible(target.string()) + ", which leads nowhere";
}

}  // namespace kvx
