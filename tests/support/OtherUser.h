#pragma once

#include <string>

namespace test {

// An administrator may do everything, so that what is refused to users can be tested only as one of them. A test that
// is run by somebody else than the administrator is that user itself.

/// For a process of its own, which must end afterwards. Answers whether this is now no administrator's.
bool BecomeOtherUser();

/// Makes a file or directory that user's. Answers whether it is.
bool GiveToOtherUser(const std::string& path);

}  // namespace test
