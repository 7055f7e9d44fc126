#include "kvxsptstring/StringHelper.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

using namespace std::string_literals;

std::string Lower(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

TEST(StringHelperTest, ToLowerChangesTheAsciiCapitalsInPlace) {
  std::string text = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  CStringHelper::ToLower(text);
  EXPECT_EQ(text, "abcdefghijklmnopqrstuvwxyz");
}

TEST(StringHelperTest, ToLowerLeavesEveryOtherAsciiCharacter) {
  // @ and [ are just outside A to Z, ` and { just outside a to z.
  EXPECT_EQ(Lower("@[`{az09_-. \t\n\x7F"), "@[`{az09_-. \t\n\x7F");
  EXPECT_EQ(Lower(""), "");
}

TEST(StringHelperTest, ToLowerLeavesNonAsciiLetters) {
  EXPECT_EQ(Lower("\u00C4\u00D6\u00DC \u00C9 \u042F \u0130 \u212A"), "\u00C4\u00D6\u00DC \u00C9 \u042F \u0130 \u212A");
  EXPECT_EQ(Lower("\u96F6\u4EF6A"), "\u96F6\u4EF6a");
}

TEST(StringHelperTest, ToLowerLeavesBytesThatAreNotUtf8) {
  EXPECT_EQ(Lower("\xC4\xFF\x80Z"), "\xC4\xFF\x80z");
}

TEST(StringHelperTest, ToLowerGoesPastANulByte) {
  EXPECT_EQ(Lower("A\0B"s), "a\0b"s);
}

TEST(StringHelperTest, ToLowerDoesNotDependOnTheLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"tr_TR.UTF-8", "de_DE.ISO-8859-1", "C.UTF-8", "C"}) {
    if (std::setlocale(LC_ALL, locale) != nullptr) {
      EXPECT_EQ(Lower("I\xC4"), "i\xC4") << locale;
    }
  }
  std::setlocale(LC_ALL, before.c_str());
}

TEST(StringHelperTest, CompareIsZeroForEqualStrings) {
  for (const bool ignoreCase : {false, true}) {
    EXPECT_EQ(CStringHelper::StringCompare("", "", ignoreCase), 0);
    EXPECT_EQ(CStringHelper::StringCompare("Code", "Code", ignoreCase), 0);
    EXPECT_EQ(CStringHelper::StringCompare("\u96F6\u4EF6", "\u96F6\u4EF6", ignoreCase), 0);
    EXPECT_EQ(CStringHelper::StringCompare("a\0b"s, "a\0b"s, ignoreCase), 0);
  }
}

TEST(StringHelperTest, CompareSeesCaseUnlessToldToIgnoreIt) {
  EXPECT_NE(CStringHelper::StringCompare("Code", "code", false), 0);
  EXPECT_EQ(CStringHelper::StringCompare("Code", "cODE", true), 0);
}

TEST(StringHelperTest, CompareIgnoresTheCaseOfAsciiLettersOnly) {
  EXPECT_NE(CStringHelper::StringCompare("\u00C4", "\u00E4", true), 0);
  EXPECT_NE(CStringHelper::StringCompare("@", "`", true), 0);
  EXPECT_NE(CStringHelper::StringCompare("[", "{", true), 0);
}

TEST(StringHelperTest, CompareSeesWhatFollowsANulByte) {
  EXPECT_NE(CStringHelper::StringCompare("a\0b"s, "a\0c"s, false), 0);
  EXPECT_NE(CStringHelper::StringCompare("a"s, "a\0"s, true), 0);
}

TEST(StringHelperTest, CompareSeesSpaces) {
  EXPECT_NE(CStringHelper::StringCompare("a", "a ", false), 0);
  EXPECT_NE(CStringHelper::StringCompare(" a", "a", true), 0);
}

TEST(StringHelperTest, CompareOrdersByUnsignedBytes) {
  for (const bool ignoreCase : {false, true}) {
    EXPECT_LT(CStringHelper::StringCompare("a", "b", ignoreCase), 0);
    EXPECT_GT(CStringHelper::StringCompare("b", "a", ignoreCase), 0);
    EXPECT_LT(CStringHelper::StringCompare("a", "aa", ignoreCase), 0);
    EXPECT_GT(CStringHelper::StringCompare("aa", "a", ignoreCase), 0);
    EXPECT_LT(CStringHelper::StringCompare("", "a", ignoreCase), 0);
    EXPECT_LT(CStringHelper::StringCompare("z", "\u00E4", ignoreCase), 0);
    EXPECT_GT(CStringHelper::StringCompare("\xFF", "\x7F", ignoreCase), 0);
  }
}

TEST(StringHelperTest, CompareOrdersLettersByTheirLowerCaseWhenCaseIsIgnored) {
  // 'B' < 'a' < 'b' as bytes.
  EXPECT_LT(CStringHelper::StringCompare("B", "a", false), 0);
  EXPECT_GT(CStringHelper::StringCompare("B", "a", true), 0);
}

TEST(StringHelperTest, ToVisibleShowsLineEndsAndTabsByTheirEscapes) {
  EXPECT_EQ(CStringHelper::ToVisible("a\nb\tc\r\n"), R"(a\nb\tc\x0D\n)");
}

TEST(StringHelperTest, ToVisibleShowsOtherControlCharactersInHexadecimal) {
  EXPECT_EQ(CStringHelper::ToVisible("\0\x01\x1B\x1F\x7F"s), R"(\x00\x01\x1B\x1F\x7F)");
}

TEST(StringHelperTest, ToVisibleLeavesEverythingElse) {
  EXPECT_EQ(CStringHelper::ToVisible(""), "");
  EXPECT_EQ(CStringHelper::ToVisible(" ~\\n\"\u96F6\u4EF6 \u00E4"), " ~\\n\"\u96F6\u4EF6 \u00E4");
}

}  // namespace

TEST(StringHelperTest, ToVisibleShowsC1ControlsAndKeepsTheirNeighbours) {
  EXPECT_EQ(CStringHelper::ToVisible("a\xC2\x9B"
                                     "2J\xC2\x80\xC2\x9F"),
            "a\\u009B2J\\u0080\\u009F");
  // U+00A0, U+00BF, U+00E4, U+015B.
  EXPECT_EQ(CStringHelper::ToVisible("\xC2\xA0\xC2\xBF\xC3\xA4\xC5\x9B"), "\xC2\xA0\xC2\xBF\xC3\xA4\xC5\x9B");
}

TEST(StringHelperTest, ToVisibleShowsControlsOfTheDirectionAndKeepsTheirNeighbours) {
  EXPECT_EQ(CStringHelper::ToVisible("a\u202Ab\u202Ec\u2066d\u2069"), R"(a\u202Ab\u202Ec\u2066d\u2069)");
  EXPECT_EQ(CStringHelper::ToVisible("\u202F\u2065\u206A"), "\u202F\u2065\u206A");
}

TEST(StringHelperTest, ToVisibleShowsMarksOfTheDirectionAndKeepsTheirNeighbours) {
  EXPECT_EQ(CStringHelper::ToVisible("a\u200Eb\u200Fc\u061Cd"), R"(a\u200Eb\u200Fc\u061Cd)");
  EXPECT_EQ(CStringHelper::ToVisible("\u200D\u2010\u061B\u061D"), "\u200D\u2010\u061B\u061D");
}

TEST(StringHelperTest, ToVisibleShowsLineEndsBeyondAscii) {
  EXPECT_EQ(CStringHelper::ToVisible("a\u2028b\u2029c"), R"(a\u2028b\u2029c)");
  EXPECT_EQ(CStringHelper::ToVisible("\u2027"), "\u2027");
}

TEST(StringHelperTest, ToVisibleShowsBytesThatAreNotUtf8) {
  // Alone, the second of these begins an escape sequence on some terminals.
  EXPECT_EQ(CStringHelper::ToVisible("a\x80\x9B"
                                     "b\xFF"),
            "a\\x80\\x9Bb\\xFF");
  // Cut off; longer than need be; half of a pair; beyond the last character.
  EXPECT_EQ(CStringHelper::ToVisible("\xC2"), "\\xC2");
  EXPECT_EQ(CStringHelper::ToVisible("\xE2\x80z"), "\\xE2\\x80z");
  EXPECT_EQ(CStringHelper::ToVisible("\xC1\x9B"), "\\xC1\\x9B");
  EXPECT_EQ(CStringHelper::ToVisible("\xE0\x82\x9B"), "\\xE0\\x82\\x9B");
  EXPECT_EQ(CStringHelper::ToVisible("\xF0\x80\x82\x9B"), "\\xF0\\x80\\x82\\x9B");
  EXPECT_EQ(CStringHelper::ToVisible("\xED\xA0\x80"), "\\xED\\xA0\\x80");
  EXPECT_EQ(CStringHelper::ToVisible("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");
  EXPECT_EQ(CStringHelper::ToVisible("\xF5\x80\x80\x80"), "\\xF5\\x80\\x80\\x80");
}

TEST(StringHelperTest, ToVisibleLeavesCharactersOfEverySize) {
  const std::string text = "z\u00C4\u07FF\u0800\uD7FF\uE000\uFFFD\U00010000\U0010FFFF";
  EXPECT_EQ(CStringHelper::ToVisible(text), text);
}
