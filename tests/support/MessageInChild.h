#pragma once

#include <functional>
#include <string>

namespace test {

/// The message of the CKVXException that `action` throws, empty for none, in a process of its own: `prepare` may limit
/// what that process can do, and answers whether it did.
std::string MessageInChild(const std::function<bool()>& prepare, const std::function<void()>& action);

}  // namespace test
