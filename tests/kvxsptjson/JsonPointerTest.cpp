#include "kvxsptjson/JsonPointer.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The text from the value at a pointer on.
std::string From(const std::string& text, const std::string& pointer) {
  return text.substr(kvx::FindJsonValue(text, pointer));
}

TEST(JsonPointerTest, AppendsAKeyWithItsEscapes) {
  std::string pointer = "/a";
  kvx::AppendToJsonPointer(pointer, "b~c/d");
  EXPECT_EQ(pointer, "/a/b~0c~1d");
  kvx::AppendToJsonPointer(pointer, "");
  EXPECT_EQ(pointer, "/a/b~0c~1d/");
}

TEST(JsonPointerTest, FindsTheRoot) {
  EXPECT_EQ(From(" \n[1]", ""), "[1]");
  EXPECT_EQ(From("\xEF\xBB\xBF 7", ""), "7");
}

TEST(JsonPointerTest, FindsMembersAndItems) {
  const std::string text = R"({ "a" : [ 1 , "x]" , { "b" : true , "c" : null } ] , "d" : -2.5e1 })";
  EXPECT_EQ(From(text, "/a"), R"([ 1 , "x]" , { "b" : true , "c" : null } ] , "d" : -2.5e1 })");
  EXPECT_EQ(From(text, "/a/0"), R"(1 , "x]" , { "b" : true , "c" : null } ] , "d" : -2.5e1 })");
  EXPECT_EQ(From(text, "/a/1"), R"("x]" , { "b" : true , "c" : null } ] , "d" : -2.5e1 })");
  EXPECT_EQ(From(text, "/a/2/b"), R"(true , "c" : null } ] , "d" : -2.5e1 })");
  EXPECT_EQ(From(text, "/a/2/c"), R"(null } ] , "d" : -2.5e1 })");
  EXPECT_EQ(From(text, "/d"), "-2.5e1 }");
}

TEST(JsonPointerTest, PassesOverBracketsAndQuotesInStrings) {
  EXPECT_EQ(From(R"({"a":"}\"{\\","b":["]",2]})", "/b/1"), "2]}");
}

TEST(JsonPointerTest, FindsKeysThatAreEscaped) {
  EXPECT_EQ(From(R"({"a/b":1,"c~d":2})", "/a~1b"), R"(1,"c~d":2})");
  EXPECT_EQ(From(R"({"a/b":1,"c~d":2})", "/c~0d"), "2}");
  EXPECT_EQ(From(R"({"\u0061":1})", "/a"), "1}");
  EXPECT_EQ(From(R"({"":{"":3}})", "//"), "3}}");
}

TEST(JsonPointerTest, FindsTheLastOfTwoMembersOfOneName) {
  EXPECT_EQ(From(R"({"a":1,"a":2})", "/a"), "2}");
}

TEST(JsonPointerTest, FindsWhatIsAroundAValueThatIsNotThere) {
  EXPECT_EQ(From(R"([{"a":[1]}])", "/0/b"), R"({"a":[1]}])");
  EXPECT_EQ(From(R"([{"a":[1]}])", "/0/a/1"), "[1]}]");
  EXPECT_EQ(From(R"([{"a":[1]}])", "/0/a/0/x"), "1]}]");
  EXPECT_EQ(From("[]", "/0"), "[]");
  EXPECT_EQ(From("{}", "/a"), "{}");
}

TEST(JsonPointerTest, EndsOnTextsThatAreNotJson) {
  for (const char* text :
       {"", "{", "[", "[1", "{\"a", "{\"a\":", "\"", "{\"a\":\"\\", "]", "[[[[", "{\"a\" 1", "[,", "{,}"}) {
    EXPECT_LE(kvx::FindJsonValue(text, "/0/a"), std::string(text).size()) << text;
    EXPECT_LE(kvx::FindJsonValue(text, "/a"), std::string(text).size()) << text;
  }
}

}  // namespace
