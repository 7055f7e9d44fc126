#include "kvxsptfile/CanonicalPath.h"

#include <filesystem>
#include <system_error>

#include "kvxsptfile/FollowLinks.h"

namespace kvx {

std::string CanonicalPath(const std::string& path) {
  // A link to nothing yet is followed here; the library takes it for a name of its own.
  const SFollowedPath followed = FollowLinks(path);
  std::error_code error;
  const std::filesystem::path absolute =
      std::filesystem::absolute(followed.problem.empty() ? followed.path : path, error);
  const std::filesystem::path canonical = std::filesystem::weakly_canonical(absolute, error);
  return error ? absolute.string() : canonical.string();
}

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return std::filesystem::equivalent(a, b, error) || CanonicalPath(a) == CanonicalPath(b);
}

}  // namespace kvx
