#include "metareview2024/Finding.h"

#include <gtest/gtest.h>

namespace {

using metareview::EChange;
using metareview::FindingId;
using metareview::IdText;

// Expected identifiers are the first 16 digits that sha256sum prints.

TEST(FindingTest, TheIdIsOfTheLowerCasedPathALineEndAndTheChange) {
  EXPECT_EQ(IdText(FindingId("class/part", EChange::kInserted)), "12ffaa03be95ccf2");
  EXPECT_EQ(IdText(FindingId("class/Part/property/CODE/length", EChange::kChanged)), "e4f333239954eb46");
}

TEST(FindingTest, TheIdLowerCasesAsciiOnly) {
  EXPECT_EQ(IdText(FindingId("behavior/GRößE/method/A~1B", EChange::kDeleted)), "a23587a817e63cdf");
}

TEST(FindingTest, AnIdIsWrittenWithItsLeadingZeros) {
  EXPECT_EQ(IdText(0), "0000000000000000");
  EXPECT_EQ(IdText(0x00ABCDEF01234567U), "00abcdef01234567");
}

}  // namespace
