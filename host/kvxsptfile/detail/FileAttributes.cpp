#include "kvxsptfile/detail/FileAttributes.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace kvx {
namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
constexpr const char* kAccessListWord = "access control list";
constexpr mode_t kPermissionBits = S_ISVTX | S_IRWXU | S_IRWXG | S_IRWXO;

[[noreturn]] void Fail() {
  throw std::system_error(errno, std::generic_category());
}

/// Whether the last call failed because the process may not do that, or the file system cannot.
bool IsRefused() {
  return errno == EPERM || errno == EACCES || errno == ENOTSUP || errno == EINVAL || errno == ENOSYS;
}

/// The group has no more rights than everybody.
mode_t WithoutGroup(mode_t permissions) {
  return (permissions & ~static_cast<mode_t>(S_IRWXG)) | ((permissions & S_IRWXO) << 3);
}

std::string PermissionsWord(mode_t permissions) {
  std::string digits;
  for (int shift = 9; shift >= 0; shift -= 3) {
    digits += static_cast<char>('0' + ((permissions >> shift) & 7U));
  }
  return "permissions " + digits;
}

std::string ReadAccessList(const std::string& path) {
  std::string list;
  ssize_t size = 0;
  do {
    size = getxattr(path.c_str(), kAccessList, nullptr, 0);
    if (size > 0) {
      list.resize(static_cast<std::size_t>(size));
      size = getxattr(path.c_str(), kAccessList, list.data(), list.size());
    }
    // It has grown in between.
  } while (size < 0 && errno == ERANGE);
  if (size < 0 && errno != ENODATA && errno != ENOTSUP) {
    Fail();
  }
  list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return list;
}

/// Removes what a new file has from its directory, before permissions give it effect.
void RemoveAccessList(int descriptor) {
  if (fremovexattr(descriptor, kAccessList) != 0 && errno != ENODATA && errno != ENOTSUP) {
    Fail();
  }
}

}  // namespace

CFileAttributes::CFileAttributes(const std::string& path) : accessList_(ReadAccessList(path)) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    Fail();
  }
  owner_ = status.st_uid;
  group_ = status.st_gid;
  permissions_ = status.st_mode & kPermissionBits;
}

std::vector<std::string> CFileAttributes::GiveTo(int descriptor) const {
  std::vector<std::string> lost;
  const auto isGiven = [&lost](int result, const std::string& word) {
    if (result != 0) {
      if (!IsRefused()) {
        Fail();
      }
      lost.push_back(word);
    }
    return result == 0;
  };
  struct stat before {};
  if (fstat(descriptor, &before) != 0) {
    Fail();
  }
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  constexpr auto kSameGroup = static_cast<gid_t>(-1);
  // The group comes first, for whom the permissions are meant; the owner last, after which this process may do no more.
  const bool hasGroup =
      before.st_gid == group_ || isGiven(fchown(descriptor, kSameOwner, group_), "group " + std::to_string(group_));
  const mode_t permissions = hasGroup ? permissions_ : WithoutGroup(permissions_);
  if (permissions != permissions_) {
    lost.push_back(PermissionsWord(permissions_));
  }
  RemoveAccessList(descriptor);
  isGiven(fchmod(descriptor, permissions), PermissionsWord(permissions));
  if (!accessList_.empty()) {
    if (hasGroup) {
      isGiven(fsetxattr(descriptor, kAccessList, accessList_.data(), accessList_.size(), 0), kAccessListWord);
    } else {
      lost.emplace_back(kAccessListWord);
    }
  }
  if (before.st_uid != owner_) {
    isGiven(fchown(descriptor, owner_, kSameGroup), "owner " + std::to_string(owner_));
  }
  return lost;
}

}  // namespace kvx
