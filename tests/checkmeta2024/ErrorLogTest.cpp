#include "checkmeta2024/ErrorLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>

#include "support/LogCapture.h"

namespace {

using checkmeta::CodedMessage;
using testing::ElementsAre;

/// Groups digits by three, as the locales of many languages do.
class CGrouping : public std::numpunct<char> {
 protected:
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ErrorLogTest, ACodedMessageEndsInTheCodeInUpperCaseHexadecimal) {
  EXPECT_EQ(CodedMessage("what went wrong:x", 0xA452000F), "what went wrong:x<hr=0xA452000F>");
}

TEST(ErrorLogTest, ACodeHasNoLeadingZeros) {
  EXPECT_EQ(CodedMessage("m", 0x0000BEEF), "m<hr=0xBEEF>");
  EXPECT_EQ(CodedMessage("m", 0), "m<hr=0x0>");
}

TEST(ErrorLogTest, TheLargestCodeIsWrittenWhole) {
  EXPECT_EQ(CodedMessage("m", 0xFFFFFFFF), "m<hr=0xFFFFFFFF>");
}

TEST(ErrorLogTest, TheMessageIsKeptAsItStands) {
  EXPECT_EQ(CodedMessage("", 1), "<hr=0x1>");
  EXPECT_EQ(CodedMessage("a<hr=0x2>\n%d 类", 1), "a<hr=0x2>\n%d 类<hr=0x1>");
}

TEST(ErrorLogTest, AGlobalLocaleThatGroupsDigitsDoesNotReachTheCode) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CGrouping));
  const std::string message = CodedMessage("m", 0xA4520008);
  std::locale::global(before);
  EXPECT_EQ(message, "m<hr=0xA4520008>");
}

TEST(ErrorLogTest, LogErrorWritesOneErrorLineWithThePlaceThatItIsGiven) {
  const test::CLogCapture log;
  checkmeta::LogError({"a/b.cpp", 17, "CName::Operation"}, "what went wrong", 0xA4520008);
  EXPECT_THAT(log.Lines(), ElementsAre(test::SLogLine{"a/b.cpp", 17, "CName::Operation", "errormsg", 40000,
                                                      "what went wrong<hr=0xA4520008>"}));
}

}  // namespace
