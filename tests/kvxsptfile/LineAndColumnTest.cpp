#include "kvxsptfile/LineAndColumn.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string PlaceOf(const std::string& text, std::size_t offset) {
  return kvx::LineAndColumn(text.data(), offset);
}

TEST(LineAndColumnTest, BothCountFromOne) {
  EXPECT_EQ(PlaceOf("abc", 0), "1:1");
  EXPECT_EQ(PlaceOf("abc", 2), "1:3");
  EXPECT_EQ(PlaceOf("abc", 3), "1:4");
  EXPECT_EQ(PlaceOf("", 0), "1:1");
}

TEST(LineAndColumnTest, LineEndBelongsToItsLine) {
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 1), "1:2");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 2), "2:1");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 4), "3:1");
  EXPECT_EQ(PlaceOf("a\nb\n\nc", 5), "4:1");
}

TEST(LineAndColumnTest, ColumnsCountCharacters) {
  // One, two, three and four bytes.
  const std::string text = "a\u00E9\u96F6\U0001F600b";
  EXPECT_EQ(PlaceOf(text, 1), "1:2");
  EXPECT_EQ(PlaceOf(text, 3), "1:3");
  EXPECT_EQ(PlaceOf(text, 6), "1:4");
  EXPECT_EQ(PlaceOf(text, 10), "1:5");
}

}  // namespace
