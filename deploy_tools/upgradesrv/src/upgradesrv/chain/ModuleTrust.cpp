#include "upgradesrv/chain/ModuleTrust.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <system_error>

#include "kvxsptfile/FileNotes.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

/// Where a file has an access control list, the group's permissions are the most that the list gives to anybody.
bool HasAccessList(const std::string& path) {
  return getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

/// Empty for nobody. What cannot be looked at cannot be loaded either.
std::string WhoElseMayWrite(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return "";
  }
  if (status.st_uid != 0 && status.st_uid != geteuid()) {
    return "another user, its owner,";
  }
  if ((status.st_mode & S_IWOTH) != 0) {
    return "everyone";
  }
  const bool isOwnGroup = status.st_gid == 0 || status.st_gid == getegid();
  if ((status.st_mode & S_IWGRP) != 0 && (!isOwnGroup || HasAccessList(path))) {
    return isOwnGroup ? "somebody on its access control list" : "its group";
  }
  return "";
}

/// The file and each directory by which it is found.
std::set<std::string> PlacesOf(const std::string& path) {
  const std::filesystem::path file(path);
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(file, error);
  std::set<std::string> places = {file.parent_path(), file};
  if (!error) {
    places.insert(real.parent_path());
  }
  return places;
}

}  // namespace

void LookWhoMayWriteModule(const std::string& path) {
  for (const std::string& place : PlacesOf(path)) {
    std::string fact = WhoElseMayWrite(place);
    if (fact.empty()) {
      continue;
    }
    fact += " may write to " + place;
    if (geteuid() == 0) {
      throw CTrouble("the module is not loaded: " + fact +
                     ", and would decide what root does; take that permission away or run as another user");
    }
    kvx::CFileNotes::Tell(fact + ", and so decide what this run does");
  }
}

}  // namespace upgradesrv
