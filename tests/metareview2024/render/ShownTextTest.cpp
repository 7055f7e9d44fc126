#include "metareview2024/render/ShownText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace metareview {
namespace {

TEST(ShownTextTest, AnOrdinaryTextStaysAsItIs) {
  EXPECT_EQ(ShownText("Übersetzung 中文 <b>"), "Übersetzung 中文 <b>");
}

TEST(ShownTextTest, ControlCharactersAreVisible) {
  EXPECT_EQ(ShownText(std::string("a\nb\0", 4)), "a\\nb\\x00");
}

TEST(ShownTextTest, SixHundredBytesAreShownWhole) {
  EXPECT_EQ(ShownText(std::string(600, 'x')), std::string(600, 'x'));
}

TEST(ShownTextTest, OfAVeryLongTextTheBeginningAndTheEndAreShown) {
  EXPECT_EQ(ShownText(std::string(400, 'a') + std::string(1000000, 'b') + std::string(100, 'c')),
            std::string(400, 'a') + " … " + std::string(100, 'c'));
  EXPECT_EQ(ShownText(std::string(400, 'a') + std::string(101, 'b') + std::string(100, 'c')),
            std::string(400, 'a') + " … " + std::string(100, 'c'));
}

TEST(ShownTextTest, NoCharacterIsCutApart) {
  // 3 bytes each: 400 bytes would end in the 134th, and the last 100 begin in one.
  std::string text;
  std::string beginning;
  std::string end;
  for (int i = 0; i < 1000; ++i) {
    text += "中";
    beginning += i < 133 ? "中" : "";
    end += i < 33 ? "中" : "";
  }
  EXPECT_EQ(ShownText(text), beginning + " … " + end);
}

TEST(ShownTextTest, OfBytesThatAreNoCharactersNothingIsShown) {
  const std::string bytes(2000, '\x80');
  EXPECT_EQ(ShownText(std::string_view(bytes).substr(0, 1000)), " … ");
}

}  // namespace
}  // namespace metareview
