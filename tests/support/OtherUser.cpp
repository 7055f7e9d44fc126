#include "support/OtherUser.h"

#include <grp.h>
#include <unistd.h>

namespace test {
namespace {

/// "nobody" everywhere.
constexpr uid_t kUser = 65534;
constexpr gid_t kGroup = 65534;

}  // namespace

bool BecomeOtherUser() {
  return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(kGroup) == 0 && setuid(kUser) == 0);
}

bool GiveToOtherUser(const std::string& path) {
  return geteuid() != 0 || chown(path.c_str(), kUser, kGroup) == 0;
}

}  // namespace test
