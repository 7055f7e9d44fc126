#include <gtest/gtest.h>

#include "kvxsptjson/JsonText.h"
#include "support/JsonLetters.h"
#include "support/TemporaryDirectory.h"

// The grammar of JSON, form by form, over the tables that every reader of JSON is tested with.
namespace {

using test::ErrorOf;
using test::Repeat;
using test::SError;
using test::SJsonLetters;

/// Whether a text is read, and if not, that it is refused as it should be.
bool IsRead(const std::string& text, const char* name) {
  CJsonObject object;
  object.SetStringValue("before", "1");
  const SError error = ErrorOf([&] { object.CreateFromText(text, "text"); });
  if (error.code != 0) {
    EXPECT_EQ(error.code, kvx::kMalformedDocument) << name;
    EXPECT_EQ(error.message.find("text:"), 0U) << name << ": " << error.message;
    EXPECT_EQ(test::Compact(object), R"({"before":"1"})") << name;
  }
  return error.code == 0;
}

TEST(JsonObjectLettersTest, EveryFormOfADocumentIsReadOrRefused) {
  for (const SJsonLetters& row : test::JsonTexts()) {
    EXPECT_EQ(IsRead(row.text, row.name), row.value.has_value()) << row.name;
  }
}

TEST(JsonObjectLettersTest, EveryDocumentIsReadOrRefusedAsAMemberToo) {
  for (const SJsonLetters& row : test::JsonTexts()) {
    const bool hasMark = row.text.compare(0, 3, "\xEF\xBB\xBF") == 0;
    EXPECT_EQ(IsRead("{\"m\": " + row.text + "}", row.name), row.value.has_value() && !hasMark) << row.name;
  }
}

TEST(JsonObjectLettersTest, EveryStringIsReadAsItsContentOrRefused) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    const std::string text = "{\"m\": " + row.text + "}";
    ASSERT_EQ(IsRead(text, row.name), row.value.has_value()) << row.name;
    if (row.value) {
      EXPECT_EQ(test::Json(text)->GetStringValue("m"), *row.value) << row.name;
    }
  }
}

TEST(JsonObjectLettersTest, EveryStringIsReadAsANameOrRefused) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    const std::string text = "{" + row.text + ": 1}";
    ASSERT_EQ(IsRead(text, row.name), row.value.has_value()) << row.name;
    if (row.value) {
      EXPECT_TRUE(test::Json(text)->HasMember(*row.value)) << row.name;
    }
  }
}

TEST(JsonObjectLettersTest, EveryStringIsWrittenSoThatItReadsBack) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    if (row.value) {
      CJsonObject object;
      object.SetStringValue(*row.value, *row.value);
      EXPECT_EQ(test::Json(object.ToText())->GetStringValue(*row.value), *row.value) << row.name;
    }
  }
}

TEST(JsonObjectLettersTest, EveryControlCharacterInAStringIsRefused) {
  for (char control = 0; control < 0x20; ++control) {
    EXPECT_FALSE(IsRead("[\"a" + std::string(1, control) + "b\"]", "in a string")) << static_cast<int>(control);
    EXPECT_FALSE(IsRead("{\"a" + std::string(1, control) + "b\": 1}", "in a name")) << static_cast<int>(control);
  }
}

TEST(JsonObjectLettersTest, EveryByteThatIsNotUtf8ByItselfIsRefusedEverywhere) {
  for (int byte = 0x80; byte < 0x100; ++byte) {
    const std::string alone(1, static_cast<char>(byte));
    for (const std::string& text : {"[\"" + alone + "\"]", "[" + alone + "]", alone + "[]", "[]" + alone}) {
      EXPECT_FALSE(IsRead(text, "not UTF-8")) << byte;
    }
  }
}

TEST(JsonObjectLettersTest, EveryNumberIsReadAsItsDigitsOrRefused) {
  for (const SJsonLetters& row : test::JsonNumbers()) {
    const std::string text = "{\"m\": " + row.text + "}";
    ASSERT_EQ(IsRead(text, row.name), row.value.has_value()) << row.name;
    EXPECT_EQ(IsRead(row.text, row.name), row.value.has_value()) << row.name;
    if (row.value) {
      EXPECT_EQ(test::Json(text)->GetStringValue("m"), *row.value) << row.name;
    }
  }
}

TEST(JsonObjectLettersTest, EveryNumberIsWrittenSoThatItReadsBack) {
  for (const SJsonLetters& row : test::JsonNumbers()) {
    if (row.value) {
      const auto object = test::Json("{\"m\": " + row.text + "}");
      EXPECT_EQ(test::Json(object->ToText())->GetStringValue("m"), *row.value) << row.name;
    }
  }
}

TEST(JsonObjectLettersTest, WholeNumbersBeyond64BitsAreReadAsTheNearestDouble) {
  const auto object = test::Json(R"({"max": 18446744073709551616, "min": -9223372036854775809})");
  EXPECT_EQ(std::stod(object->GetStringValue("max")), 18446744073709551616.0);
  EXPECT_EQ(std::stod(object->GetStringValue("min")), -9223372036854775808.0);
}

constexpr const char* kGaps = R"(~{~"a"~:~[~1~,~true~,~"b"~,~[~]~]~,~"c"~:~{~}~}~)";

TEST(JsonObjectLettersTest, EverySpaceBetweenTokensIsSkippedOrRefused) {
  for (const SJsonLetters& row : test::JsonSpaces()) {
    for (std::size_t gap = 0; gap < test::CountGaps(kGaps); ++gap) {
      EXPECT_EQ(IsRead(test::FillGap(kGaps, gap, row.text), row.name), row.value.has_value()) << row.name << " " << gap;
    }
  }
}

TEST(JsonObjectLettersTest, AByteOrderMarkIsSkippedAtTheFrontOnly) {
  for (std::size_t gap = 0; gap < test::CountGaps(kGaps); ++gap) {
    EXPECT_EQ(IsRead(test::FillGap(kGaps, gap, "\xEF\xBB\xBF"), "mark"), gap == 0) << gap;
  }
}

struct SNesting {
  const char* open;
  const char* innermost;
  const char* close;
};

TEST(JsonObjectLettersTest, DeepNestingOfEveryShapeIsRefusedWithoutRunningOutOfStack) {
  for (const SNesting& shape : {SNesting{"[", "", "]"}, SNesting{R"({"a":)", "0", "}"},
                                SNesting{R"([{"a":)", "0", "}]"}, SNesting{R"([1,{"a":[],"b":)", "0", "}]"}}) {
    for (const std::size_t depth : {100000U, 1000000U}) {
      EXPECT_FALSE(IsRead(Repeat(shape.open, depth), shape.open)) << depth;
      EXPECT_FALSE(IsRead(Repeat(shape.open, depth) + shape.innermost + Repeat(shape.close, depth), shape.open));
    }
  }
}

TEST(JsonObjectLettersTest, TheDeepestDocumentCanBeCopiedSavedAndReadBack) {
  const std::string deep = Repeat(R"({"a":[)", 256) + Repeat("]}", 256);
  const auto object = test::Json(deep);
  CJsonObject copy;
  copy.SetObjectArrayValue("copies", {object, object});
  EXPECT_EQ(test::Compact(copy), R"({"copies":[)" + deep + "," + deep + "]}");
  const test::CTemporaryDirectory directory;
  object->SaveToFile(directory.File("deep.json"));
  CJsonObject again;
  again.CreateFromFile(directory.File("deep.json"));
  EXPECT_EQ(test::Compact(again), deep);
}

}  // namespace
