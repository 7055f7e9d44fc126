#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <list>
#include <string>
#include <utility>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::string_literals;
using test::Compact;
using test::ErrorOf;
using test::SError;

class JsonObjectFileTest : public testing::Test {
 protected:
  /// What CreateFromFile makes of a file of that content, compact.
  std::string Read(const std::string& content) const {
    CJsonObject object;
    object.CreateFromFile(directory_.Write("document.json", content));
    return Compact(object);
  }

  test::CTemporaryDirectory directory_;
};

TEST_F(JsonObjectFileTest, CreateFromFileReadsEveryKindOfValue) {
  EXPECT_EQ(
      Read(R"( { "s" : "x" , "n" : -1.5e2 , "t" : true , "f" : false , "0" : null , "a" : [ 1 , [ ] ] , "o" : { } } )"),
      R"({"s":"x","n":-150.0,"t":true,"f":false,"0":null,"a":[1,[]],"o":{}})");
}

TEST_F(JsonObjectFileTest, CreateFromFileReadsARootOfAnyType) {
  EXPECT_EQ(Read("[1]"), "[1]");
  EXPECT_EQ(Read("\"text\"\n"), "\"text\"");
  EXPECT_EQ(Read("null"), "null");
}

TEST_F(JsonObjectFileTest, CreateFromFileSkipsAByteOrderMark) {
  EXPECT_EQ(Read("\xEF\xBB\xBF{\"a\": 1}"), R"({"a":1})");
}

TEST_F(JsonObjectFileTest, CreateFromFileKeepsAByteOrderMarkInAString) {
  EXPECT_EQ(Read("{\"a\": \"\xEF\xBB\xBF\"}"), "{\"a\":\"\xEF\xBB\xBF\"}");
}

TEST_F(JsonObjectFileTest, CreateFromFileAcceptsASurrogatePair) {
  EXPECT_EQ(Read(R"(["\ud83d\ude00", "\uD800\uDC00", "\uDBFF\uDFFF"])"),
            "[\"\U0001F600\",\"\U00010000\",\"\U0010FFFF\"]");
}

TEST_F(JsonObjectFileTest, CreateFromFileAcceptsTheCharactersBesideTheSurrogates) {
  EXPECT_EQ(Read("[\"\\ud7ff\\ue000\", \"\uD7FF\uE000\"]"), "[\"\uD7FF\uE000\",\"\uD7FF\uE000\"]");
}

TEST_F(JsonObjectFileTest, CreateFromFileKeepsAnEscapedNul) {
  CJsonObject object;
  object.CreateFromFile(directory_.Write("document.json", R"({"a": "x\u0000y"})"));
  EXPECT_EQ(object.GetStringValue("a"), "x\0y"s);
}

TEST_F(JsonObjectFileTest, CreateFromFileKeepsDuplicateMembersAndReadsTheFirst) {
  CJsonObject object;
  object.CreateFromFile(directory_.Write("document.json", R"({"a": "1", "a": "2"})"));
  EXPECT_EQ(object.GetStringValue("a"), "1");
  EXPECT_EQ(Compact(object), R"({"a":"1","a":"2"})");
}

TEST_F(JsonObjectFileTest, CreateFromFileNamesAMissingFile) {
  const std::string path = directory_.File("absent.json");
  EXPECT_EQ(ErrorOf([&] { CJsonObject().CreateFromFile(path); }),
            (SError{kvx::kFileError, path + ": cannot be read: No such file or directory"}));
}

TEST_F(JsonObjectFileTest, CreateFromFileRefusesADirectory) {
  EXPECT_EQ(ErrorOf([&] { CJsonObject().CreateFromFile(directory_.Path()); }),
            (SError{kvx::kFileError, directory_.Path() + ": cannot be read: is a directory, not a regular file"}));
}

TEST_F(JsonObjectFileTest, FailedReadLeavesTheViewAsItWas) {
  CJsonObject object;
  object.SetStringValue("before", "1");
  EXPECT_EQ(ErrorOf([&] { object.CreateFromFile(directory_.File("absent.json")); }).code, kvx::kFileError);
  EXPECT_EQ(Compact(object), R"({"before":"1"})");
}

TEST_F(JsonObjectFileTest, MessagesShowControlCharactersOfTheName) {
  EXPECT_EQ(ErrorOf([] { CJsonObject().CreateFromText("", "a\nb\x1B"); }),
            (SError{kvx::kMalformedDocument, "a\\nb\\x1B:1:1: The document is empty."}));
  EXPECT_EQ(ErrorOf([] { CJsonObject().CreateFromFile("absent\n.json"); }),
            (SError{kvx::kFileError, "absent\\n.json: cannot be read: No such file or directory"}));
}

TEST_F(JsonObjectFileTest, SaveToFileWritesTheDocumentIndentedByTwoSpacesWithALineEnd) {
  CJsonObject object;
  object.SetStringValue("internal_name", "Part");
  object.SetUInt32Value("length", 32);
  object.SetStringArrayValue("names", {"a", "b"});
  object.SetObjectArrayValue("none", {});
  object.SetObjectValue("inner", test::Json(R"({"x": "y"})"));
  object.SaveToFile(directory_.File("out.json"));
  EXPECT_EQ(test::ReadFile(directory_.File("out.json")),
            "{\n"
            "  \"internal_name\": \"Part\",\n"
            "  \"length\": 32,\n"
            "  \"names\": [\n"
            "    \"a\",\n"
            "    \"b\"\n"
            "  ],\n"
            "  \"none\": [],\n"
            "  \"inner\": {\n"
            "    \"x\": \"y\"\n"
            "  }\n"
            "}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileOfAnEmptyObjectWritesTwoBraces) {
  CJsonObject().SaveToFile(directory_.File("out.json"));
  EXPECT_EQ(test::ReadFile(directory_.File("out.json")), "{}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileEscapesWhatMustBeEscapedAndNothingElse) {
  CJsonObject object;
  object.SetStringValue("s", "\u96F6 \U0001F600 \"\\/\b\f\n\r\t\x01\x1F\x7F\0"s);
  object.SaveToFile(directory_.File("out.json"));
  EXPECT_EQ(test::ReadFile(directory_.File("out.json")),
            "{\n  \"s\": \"\u96F6 \U0001F600 \\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001F\x7F\\u0000\"\n}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileEscapesAByteWhereverItStands) {
  constexpr std::size_t kLongest = 18;
  std::list<std::string> texts;
  std::string expected;
  for (std::size_t size = 1; size <= kLongest; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (const auto& [byte, escaped] : {std::pair("\0"s, "\\u0000"s),
                                          {"\x1F"s, "\\u001F"s},
                                          {" "s, " "s},
                                          {"!"s, "!"s},
                                          {"\""s, "\\\""s},
                                          {"#"s, "#"s},
                                          {"["s, "["s},
                                          {"\\"s, "\\\\"s},
                                          {"]"s, "]"s},
                                          {"\x7F"s, "\x7F"s},
                                          // Bytes that are those of characters to be escaped but for the high bit.
                                          {"\u00A2"s, "\u00A2"s},
                                          {"\u071C"s, "\u071C"s}}) {
        const std::string before(at, 'a');
        const std::string after(size - at - 1, 'z');
        texts.push_back(before + byte + after);
        expected += (expected.empty() ? "" : ",") + ("\n    \"" + before).append(escaped).append(after) + "\"";
      }
    }
  }
  CJsonObject object;
  object.SetStringArrayValue("k", texts);
  object.SaveToFile(directory_.File("document.json"));
  EXPECT_EQ(test::ReadFile(directory_.File("document.json")), "{\n  \"k\": [" + expected + "\n  ]\n}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileWritesTheWholeDocumentOfAView) {
  const auto object = test::Json(R"({"a": {"b": {}}})");
  object->GetObjectValue("a")->SaveToFile(directory_.File("out.json"));
  EXPECT_EQ(test::ReadFile(directory_.File("out.json")), "{\n  \"a\": {\n    \"b\": {}\n  }\n}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileReplacesALongerFile) {
  const std::string path = directory_.Write("out.json", std::string(1000, 'x'));
  CJsonObject().SaveToFile(path);
  EXPECT_EQ(test::ReadFile(path), "{}\n");
}

TEST_F(JsonObjectFileTest, SaveToFileOfADocumentLargerThanAnyBufferWritesAllOfIt) {
  std::list<std::string> items;
  std::string expected = "{\n  \"items\": [";
  for (int i = 0; i < 20000; ++i) {
    items.push_back("item " + std::to_string(i));
    expected += (i == 0 ? "\n    \"" : ",\n    \"") + items.back() + '"';
  }
  CJsonObject object;
  object.SetStringArrayValue("items", items);
  object.SaveToFile(directory_.File("out.json"));
  EXPECT_TRUE(test::ReadFile(directory_.File("out.json")) == expected + "\n  ]\n}\n");
}

TEST_F(JsonObjectFileTest, SavedDocumentReadsBackAsItWas) {
  const std::string text = R"({"s":"x\u0000\"零件","n":[0,-1,18446744073709551615,-9223372036854775808,0.1,1.5e300],)"
                           R"("l":[true,false,null],"":{"a":{},"b":[]},"dup":1,"dup":2})";
  test::Json(text)->SaveToFile(directory_.File("out.json"));
  CJsonObject object;
  object.CreateFromFile(directory_.File("out.json"));
  EXPECT_EQ(Compact(object), text);
}

TEST_F(JsonObjectFileTest, SavedDocument512LevelsDeepReadsBack) {
  const std::string deep = std::string(512, '[') + std::string(512, ']');
  test::Json(deep)->SaveToFile(directory_.File("out.json"));
  CJsonObject object;
  object.CreateFromFile(directory_.File("out.json"));
  EXPECT_EQ(Compact(object), deep);
}

TEST_F(JsonObjectFileTest, FailedSaveNamesTheFileAndTheReason) {
  const std::string path = directory_.File("absent/out.json");
  EXPECT_EQ(ErrorOf([&] { CJsonObject().SaveToFile(path); }),
            (SError{kvx::kFileError, path + ": cannot be saved: No such file or directory; nothing was changed"}));
  EXPECT_TRUE(std::filesystem::is_empty(directory_.Path()));
}

}  // namespace
