#pragma once

#include <gtest/gtest.h>

#include <string>

#include "otherhost/Host.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"

namespace otherhost {

/// A test with a host of its own.
class CHostTest : public testing::Test {
 protected:
  /// Runs `action` and fails the test unless the call that was chosen to fail did, and its exception came back.
  template <typename Action>
  static void ExpectFailure(const Action& action) {
    EXPECT_THROW(action(), SFailure);
  }

  CHost host_;
  CHandlerContext handlerContext_;
  CUpgradeContext upgradeContext_;
};

/// A display dictionary in which the word of each key is the key between "<" and ">", in the language "en" only.
SValue DisplayDictionary();
/// Where the module looks for it, and where it saves the check result document.
constexpr const char* kDictionaryPath = "/cfg/multilanguage/strings/info.json";
constexpr const char* kResultPath = "/cfg/2024/checkMetaError.json";

}  // namespace otherhost
