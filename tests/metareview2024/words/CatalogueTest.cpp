#include "metareview2024/words/Catalogue.h"

#include <gtest/gtest.h>

#include <string>

namespace metareview {
namespace {

std::string Number(unsigned number) {
  return {static_cast<char>(number & 0xFFU), static_cast<char>(number >> 8U), '\0', '\0'};
}

/// The header's message and "a", which has two plural forms.
std::string SmallCatalogue() {
  std::string bytes = "\xDE\x12\x04\x95";
  bytes += Number(0) + Number(2) + Number(28) + Number(44) + Number(0) + Number(0);
  // Keys: "" and "a" with the plural "as"; texts: "head", and "one" with "many".
  bytes += Number(0) + Number(60) + Number(4) + Number(61);
  bytes += Number(4) + Number(66) + Number(8) + Number(71);
  bytes += std::string("\0", 1) + std::string("a\0as\0", 5) + std::string("head\0", 5) + std::string("one\0many\0", 9);
  return bytes;
}

class CatalogueTest : public testing::Test {
 protected:
  const std::string bytes_ = SmallCatalogue();
  const CCatalogue catalogue_{bytes_};
};

TEST_F(CatalogueTest, FindsTheTextOfAKey) {
  EXPECT_EQ(catalogue_.Find(""), "head");
}

TEST_F(CatalogueTest, FindsAllPluralFormsUnderTheKeyOfTheSingular) {
  EXPECT_EQ(catalogue_.Find("a"), std::string("one\0many", 8));
}

TEST_F(CatalogueTest, HasNothingForAnUnknownKey) {
  EXPECT_EQ(catalogue_.Find("as"), "");
  EXPECT_EQ(catalogue_.Find("b"), "");
  // The first text follows the last key.
  EXPECT_EQ(catalogue_.Find("head"), "");
}

TEST_F(CatalogueTest, ListsItsKeys) {
  ASSERT_EQ(catalogue_.Size(), 2U);
  EXPECT_EQ(catalogue_.Key(0), "");
  EXPECT_EQ(catalogue_.Key(1), "a");
}

}  // namespace
}  // namespace metareview
