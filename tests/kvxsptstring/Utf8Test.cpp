#include "kvxsptstring/Utf8.h"

#include <gtest/gtest.h>

namespace {

TEST(Utf8Test, CharactersOfEverySizeAreUtf8) {
  EXPECT_TRUE(kvx::IsUtf8(""));
  EXPECT_TRUE(kvx::IsUtf8("z\n\u00C4\u0800\uFFFD\U00010000"));
}

TEST(Utf8Test, BytesThatAreNoCharacterAreNot) {
  EXPECT_FALSE(kvx::IsUtf8("a\xFF"));
  EXPECT_FALSE(kvx::IsUtf8("M\xFCller"));
  EXPECT_FALSE(kvx::IsUtf8("\xC2"));
  EXPECT_FALSE(kvx::IsUtf8("\xED\xA0\x80"));
}

}  // namespace
