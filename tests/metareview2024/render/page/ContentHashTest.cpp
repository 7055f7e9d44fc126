#include "metareview2024/render/page/ContentHash.h"

#include <gtest/gtest.h>

namespace metareview::page {
namespace {

// Digests that FIPS 180-2 publishes, in base64.

TEST(ContentHashTest, HashesAnEmptyText) {
  EXPECT_EQ(ContentHash(""), "47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
}

TEST(ContentHashTest, HashesAShortText) {
  EXPECT_EQ(ContentHash("abc"), "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
}

}  // namespace
}  // namespace metareview::page
