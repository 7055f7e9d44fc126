#include "metareview2024/render/TextLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

namespace metareview {
namespace {

using testing::ElementsAre;

TEST(TextLayoutTest, WideCharactersTakeTwoColumns) {
  EXPECT_EQ(DisplayWidth("Part"), 4U);
  EXPECT_EQ(DisplayWidth("苏州"), 4U);
  EXPECT_EQ(DisplayWidth("ﾊﾝ"), 2U);
  EXPECT_EQ(DisplayWidth("한"), 2U);
  EXPECT_EQ(DisplayWidth("，"), 2U);
  EXPECT_EQ(DisplayWidth("ü€"), 2U);
  EXPECT_EQ(DisplayWidth("20\u202F341"), 6U);
}

TEST(TextLayoutTest, CombiningCharactersTakeNone) {
  EXPECT_EQ(DisplayWidth("e\u0301"), 1U);
}

TEST(TextLayoutTest, AnEmptyTextHasNoWidth) {
  EXPECT_EQ(DisplayWidth(""), 0U);
}

TEST(TextLayoutTest, PadsToColumns) {
  EXPECT_EQ(PadRight("苏", 4), "苏  ");
  EXPECT_EQ(PadLeft("苏", 4), "  苏");
  EXPECT_EQ(PadRight("Part", 2), "Part");
  EXPECT_EQ(PadLeft("Part", 2), "Part");
}

TEST(TextLayoutTest, BreaksAtSpaces) {
  EXPECT_THAT(WrapText("one two three", 7), ElementsAre("one two", "three"));
  EXPECT_THAT(WrapText("one two three", 8), ElementsAre("one two", "three"));
  EXPECT_THAT(WrapText("one two three", 6), ElementsAre("one", "two", "three"));
  EXPECT_THAT(WrapText("one two three", 13), ElementsAre("one two three"));
}

TEST(TextLayoutTest, KeepsPathsAndValuesWhole) {
  EXPECT_THAT(WrapText("a class/Part/property-x b", 10), ElementsAre("a", "class/Part/property-x", "b"));
}

TEST(TextLayoutTest, AWordThatIsTooLongHasItsOwnLine) {
  EXPECT_THAT(WrapText("sixteen to two", 5), ElementsAre("sixteen", "to", "two"));
}

TEST(TextLayoutTest, WhatFollowsTheTextDoesNotMatter) {
  EXPECT_THAT(WrapText(std::string_view("three two sixty").substr(0, 13), 7), ElementsAre("three", "two six"));
}

TEST(TextLayoutTest, BreaksBetweenWideCharacters) {
  EXPECT_THAT(WrapText("升级将其移除", 6), ElementsAre("升级将", "其移除"));
  EXPECT_THAT(WrapText("升级将其移除", 7), ElementsAre("升级将", "其移除"));
}

TEST(TextLayoutTest, DoesNotBeginALineWithAWidePunctuationMark) {
  EXPECT_THAT(WrapText("升级将。其", 6), ElementsAre("升级", "将。其"));
}

TEST(TextLayoutTest, BreaksBetweenScripts) {
  EXPECT_THAT(WrapText("升级Code", 6), ElementsAre("升级", "Code"));
  EXPECT_THAT(WrapText("Code升级", 5), ElementsAre("Code", "升级"));
}

TEST(TextLayoutTest, AnEmptyTextIsOneLine) {
  EXPECT_THAT(WrapText("", 10), ElementsAre(""));
}

TEST(TextLayoutTest, NoLineEndsWithASpace) {
  EXPECT_THAT(WrapText("one  two ", 4), ElementsAre("one", "two"));
  EXPECT_THAT(WrapText("  ", 4), ElementsAre(""));
}

}  // namespace
}  // namespace metareview
