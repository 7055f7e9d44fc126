#include <gtest/gtest.h>

#include <algorithm>

#include "support/JsonLetters.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

// The grammar of JSON at every place of a metamodel document, over the tables that every reader of JSON is tested with.
namespace {

using test::LoadText;
using test::Repeat;
using test::SError;
using test::SJsonLetters;

/// Whether a document is read, and if not, that it is refused as it should be.
bool IsRead(const std::string& text, const char* name) {
  const SError error = test::LoadError(text);
  if (error.code != 0) {
    EXPECT_EQ(error.code, kvx::kMalformedDocument) << name << ": " << error.message;
    EXPECT_EQ(error.message.find("meta.json:"), 0U) << name << ": " << error.message;
  }
  return error.code == 0;
}

TEST(DocumentMetaLettersTest, EveryTextThatIsNotJsonIsRefusedAsADocumentAndAtEveryValue) {
  for (const SJsonLetters& row : test::JsonTexts()) {
    if (row.value) {
      continue;
    }
    EXPECT_FALSE(IsRead(row.text, row.name)) << row.name;
    EXPECT_FALSE(IsRead(R"({"generation": )" + row.text + "}", row.name)) << row.name;
    for (const char* member : {"classes", "links", "behaviors"}) {
      EXPECT_FALSE(IsRead(R"({"generation": 2024, ")" + std::string(member) + "\": " + row.text + "}", row.name))
          << row.name << " " << member;
    }
    for (const char* member : {"class_id", "table_name", "behaviors", "properties"}) {
      EXPECT_FALSE(IsRead(test::WithMember(test::kClass, member, row.text), row.name)) << row.name << " " << member;
    }
  }
}

TEST(DocumentMetaLettersTest, EveryStringIsReadAsItsContentOrRefused) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    const std::string text = test::WithMember(test::kClass, "table_name", row.text);
    ASSERT_EQ(IsRead(text, row.name), row.value.has_value()) << row.name;
    if (row.value) {
      EXPECT_EQ(LoadText(text)->GetClass("A")->GetTableName(), *row.value) << row.name;
    }
  }
}

TEST(DocumentMetaLettersTest, EveryStringIsReadAsANameOfABehaviorOrRefused) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    const std::string text = test::WithMember(test::kLink, "behaviors", "[\"first\"," + row.text + " ,\"last\"]");
    ASSERT_EQ(IsRead(text, row.name), row.value.has_value()) << row.name;
    if (row.value) {
      EXPECT_EQ(LoadText(text)->GetLink("A")->GetBehaviors(), (std::list<std::string>{"first", *row.value, "last"}))
          << row.name;
    }
  }
}

TEST(DocumentMetaLettersTest, NoStringButAKnownNameIsReadAsAMember) {
  for (const SJsonLetters& row : test::JsonStrings()) {
    EXPECT_FALSE(IsRead(R"({"generation": 2024, )" + row.text + ": []}", row.name)) << row.name;
  }
}

TEST(DocumentMetaLettersTest, WholeNumbersOf32BitsAreReadAndAllOthersRefused) {
  for (const SJsonLetters& row : test::JsonNumbers()) {
    const bool isWhole =
        row.value && std::all_of(row.text.begin(), row.text.end(), [](char c) { return c >= '0' && c <= '9'; });
    const bool fits = isWhole && row.text.size() <= 19 && std::stoull(row.text) <= 4294967295U;
    const std::string text = test::WithMember(test::kClass, "class_id", row.text);
    ASSERT_EQ(IsRead(text, row.name), fits) << row.name;
    if (fits) {
      EXPECT_EQ(LoadText(text)->GetClass("A")->GetClassId(), std::stoull(row.text)) << row.name;
    }
  }
}

constexpr const char* kGaps =
    R"(~{~"generation"~:~2024~,~"classes"~:~[~{~"internal_name"~:~"A"~,~"class_id"~:~7~,~"behaviors"~:~[~"B"~,~"C"~]~}~,)"
    R"(~{~"internal_name"~:~"D"~}~]~,~"links"~:~[~]~}~)";

TEST(DocumentMetaLettersTest, EverySpaceBetweenTokensIsSkippedOrRefused) {
  for (const SJsonLetters& row : test::JsonSpaces()) {
    for (std::size_t gap = 0; gap < test::CountGaps(kGaps); ++gap) {
      EXPECT_EQ(IsRead(test::FillGap(kGaps, gap, row.text), row.name), row.value.has_value()) << row.name << " " << gap;
    }
  }
}

TEST(DocumentMetaLettersTest, AByteOrderMarkIsSkippedAtTheFrontOnly) {
  for (std::size_t gap = 0; gap < test::CountGaps(kGaps); ++gap) {
    EXPECT_EQ(IsRead(test::FillGap(kGaps, gap, "\xEF\xBB\xBF"), "mark"), gap == 0) << gap;
  }
}

TEST(DocumentMetaLettersTest, DeepNestingIsRefusedAtEveryPlace) {
  for (const std::size_t depth : {512U, 513U, 100000U, 1000000U}) {
    for (const std::string& deep :
         {Repeat("[", depth) + Repeat("]", depth), Repeat(R"({"internal_name":)", depth) + "\"A\"" + Repeat("}", depth),
          Repeat("[", depth), Repeat(R"({"a":)", depth)}) {
      EXPECT_FALSE(IsRead(deep, "root")) << depth;
      EXPECT_FALSE(IsRead(R"({"generation": )" + deep + "}", "generation")) << depth;
      EXPECT_FALSE(IsRead(R"({"generation": 2024, "behaviors": )" + deep + "}", "behaviors")) << depth;
      EXPECT_FALSE(IsRead(R"({"generation": 2024, "unknown": )" + deep + "}", "unknown")) << depth;
      EXPECT_FALSE(IsRead(test::WithMember(test::kClassProperty, "type", deep), "type")) << depth;
    }
  }
}

}  // namespace
