#include "kvxsptfile/OwnLibrary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"

namespace {

using test::ErrorOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kLibrary = "libupgrademeta2024sqlite.so";
constexpr const char* kFunction = "OpenDatabase";

TEST(OwnLibraryTest, ItIsLoadedOnce) {
  void* const first = kvx::FindInOwnLibrary(kLibrary, kFunction);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(kvx::FindInOwnLibrary(kLibrary, kFunction), first);
}

TEST(OwnLibraryTest, MissingOneIsNamedWithTheDirectoryOfTheOthers) {
  const auto [code, message] = ErrorOf([] { kvx::FindInOwnLibrary("libnothing.so", kFunction); });
  EXPECT_EQ(code, kvx::kFileError);
  EXPECT_THAT(message, StartsWith("a library of the host cannot be loaded: /"));
  EXPECT_THAT(message, HasSubstr("/libnothing.so: cannot open shared object file: "));
  EXPECT_THAT(message, EndsWith("; install the host's libraries as a whole, or allow more memory"));
}

TEST(OwnLibraryTest, LibrariesOfTheSystemAreNotLookedFor) {
  EXPECT_EQ(ErrorOf([] { kvx::FindInOwnLibrary("libc.so.6", "malloc"); }).code, kvx::kFileError);
}

TEST(OwnLibraryTest, OneWithoutTheFunctionIsNamed) {
  const auto [code, message] = ErrorOf([] { kvx::FindInOwnLibrary(kLibrary, "CloseDatabase"); });
  EXPECT_EQ(code, kvx::kFileError);
  EXPECT_THAT(message, HasSubstr(kLibrary));
  EXPECT_THAT(message, HasSubstr("CloseDatabase"));
}

}  // namespace
