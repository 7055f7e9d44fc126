#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

#include "support/MetaText.h"
#include "upgrademeta2024/storage/document/MetaDocument.h"

// Documents that are not JSON, and JSON that is written in an unusual way.
namespace {

using namespace std::string_literals;
using test::LoadError;
using test::LoadText;
using test::SError;

constexpr const char* kNotJson = "not valid JSON";
constexpr const char* kCutOff = "the document does not end with the } of its object; it is cut off, or text follows it";
constexpr const char* kControl = "a control character in a string is not escaped";
constexpr const char* kEscape = "a string holds an invalid escape sequence";
constexpr const char* kTrailing = "text follows the end of the document";

struct SFault {
  const char* name;
  std::string text;
  /// "LINE:COLUMN".
  const char* place;
  const char* problem;
};

void PrintTo(const SFault& fault, std::ostream* output) {
  *output << fault.name;
}

class DocumentMetaTextTest : public testing::TestWithParam<SFault> {};

TEST_P(DocumentMetaTextTest, IsRefusedWithItsPlace) {
  EXPECT_EQ(LoadError(GetParam().text),
            (SError{kvx::kMalformedDocument, "meta.json:"s + GetParam().place + ": " + GetParam().problem}));
}

std::string NameOf(const testing::TestParamInfo<SFault>& info) {
  return info.param.name;
}

const SFault kEmpty[] = {
    {"EmptyFile", "", "1:1", "the document is empty"},
    {"WhitespaceOnly", " \n\t ", "1:1", "the document is empty"},
    {"LoneByteOrderMark", "\xEF\xBB\xBF", "1:2", "the document is empty"},
};

constexpr const char* kUtf16 = "the text is in UTF-16; save it as UTF-8";
const SFault kUtf16Texts[] = {
    {"Utf16LittleEndianWithMark", "\xFF\xFE{\0}\0"s, "1:1", kUtf16},
    {"Utf16BigEndianWithMark", "\xFE\xFF\0{\0}"s, "1:1", kUtf16},
    {"Utf16LittleEndian", "{\0\"\0"s, "1:1", kUtf16},
    {"Utf16BigEndian", "\0{\0\""s, "1:1", kUtf16},
};

const SFault kStructure[] = {
    {"MissingColon", R"({"generation" 2024})", "1:15", kNotJson},
    {"TwoColons", R"({"generation":: 2024})", "1:15", kNotJson},
    {"MissingCommaBetweenMembers", R"({"generation": 2024 "classes": []})", "1:21", kNotJson},
    {"MissingCommaBetweenItems",
     "{\"generation\": 2024,\n \"classes\": [{\"internal_name\": \"A\"} {\"internal_name\": \"B\"}]}", "2:37",
     kNotJson},
    {"LeadingComma", R"({,"generation": 2024})", "1:2", kNotJson},
    {"TwoCommas", R"({"generation": 2024,, "classes": []})", "1:21", kNotJson},
    {"TrailingCommaInAnObject", R"({"generation": 2024, })", "1:22", kNotJson},
    {"TrailingCommaInAnArray", R"({"generation": 2024, "classes": [{"internal_name": "A"}, ]})", "1:58", kNotJson},
    {"ArrayClosedAsAnObject", R"({"generation": 2024, "classes": [}})", "1:34", kNotJson},
    {"ColonAfterAnItem", R"({"generation": 2024, "classes": [{"internal_name": "A", "behaviors": ["B": 1], "C"]}]})",
     "1:74", kNotJson},
    {"ColonAfterAnItemAndABrace",
     R"({"generation": 2024, "classes": [{"internal_name": "A", "behaviors": ["B": 1}]}]})", "1:74", kNotJson},
    {"ColonAfterAValue", R"({"generation": 2024, "classes": [{"internal_name": "A": 1}, "class_id": 1}]})", "1:55",
     kNotJson},
    {"NumberAsAName", "{1: 2}", "1:2", kNotJson},
    {"SingleQuotes", "{'generation': 2024}", "1:2", kNotJson},
    {"CommentBeforeTheDocument", "// c\n{\"generation\": 2024}", "1:1", kNotJson},
    {"CommentInTheDocument", R"({"generation": 2024 /* c */})", "1:21", kNotJson},
    {"NotANumber", R"({"generation": NaN})", "1:16", kNotJson},
    {"PlusSign", R"({"generation": +2024})", "1:16", kNotJson},
    {"LetterAfterAString", R"({"generation": 2024, "classes": [{"internal_name": "A"x}]})", "1:55", kNotJson},
};

const SFault kEnd[] = {
    {"OpenBraceAlone", "{", "1:2", kCutOff},
    {"CutOffAfterANumber", "{\"generation\":\n2024 \n", "2:5", kCutOff},
    {"CutOffInAList", R"({"generation": 2024, "classes": [)", "1:34", kCutOff},
    {"WordAfterTheDocument", "{\"generation\": 2024} x\n", "1:23", kCutOff},
    {"NulByteAfterTheDocument", "{\"generation\": 2024}\0"s, "1:22", kCutOff},
    {"SecondDocument", "{\"generation\": 2024}\n{}", "2:1", kTrailing},
    {"BraceAfterTheDocument", R"({"generation": 2024}})", "1:21", kTrailing},
    {"NulByteAndDocumentAfterTheDocument", "{\"generation\": 2024}\n\0{}"s, "2:1", kTrailing},
};

const SFault kNulBytes[] = {
    {"BeforeTheDocument", "\0{\"generation\": 2024}"s, "1:1", kNotJson},
    {"BetweenTokens", "{\0\"generation\": 2024}"s, "1:2", kNotJson},
    {"BeforeAValue", "{\"generation\":\0 2024}"s, "1:15", kNotJson},
    {"AfterAString", "{\"generation\": 2024, \"classes\": [{\"internal_name\": \"A\"\0}]}"s, "1:55", kNotJson},
    {"InAString", "{\"generation\": 2024, \"classes\": [{\"internal_name\": \"A\0B\"}]}"s, "1:54", kControl},
    {"InAName", "{\"gener\0ation\": 2024}"s, "1:8", kControl},
};

const SFault kStrings[] = {
    {"TabInAString", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"\u96F6\\\"\tB\"}]}", "2:35",
     kControl},
    {"LineEndInAString", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"A\nB\"}]}", "2:33", kControl},
    {"UnclosedStringOnItsLine", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"A}]\n}", "2:35",
     "a string is not closed"},
    {"UnclosedStringAtTheEnd", R"({"generation": 2024, "classes)", "1:30", "a string is not closed"},
    // The place of an escape sequence is the end of its string.
    {"UnknownEscape", R"({"generation": 2024, "classes": [{"internal_name": "A\x"}]})", "1:56", kEscape},
    {"UnknownEscapeAtTheEndOfALine", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"A\\x\"\n}]}", "2:35",
     kEscape},
    {"BadHexDigit", R"({"generation": 2024, "classes": [{"internal_name": "\u00g0"}]})", "1:59", kEscape},
    {"LoneHighSurrogate", R"({"generation": 2024, "classes": [{"internal_name": "\ud800"}]})", "1:59", kEscape},
    {"HighSurrogateBeforeALetter", R"({"generation": 2024, "classes": [{"internal_name": "\ud800\u0041"}]})", "1:65",
     kEscape},
    {"LoneLowSurrogate", R"({"generation": 2024, "classes": [{"internal_name": "\udc00"}]})", "1:59", kEscape},
    {"UnknownEscapeInAName", R"({"generation": 2024, "a\x": 1})", "1:26", kEscape},
    {"UnknownEscapeInANameBeforeAString", R"({"generation": 2024, "a\x": "1"})", "1:26", kEscape},
};

constexpr const char* kNotUtf8 = "not valid UTF-8";

const SFault kEncodings[] = {
    {"ByteThatNeverStandsInUtf8", "{\"generation\": 2024,\n\"classes\": [{\"internal_name\": \"\u00E9\u96F6\xFF\"}]}",
     "2:34", kNotUtf8},
    {"Latin1", "{\"caf\xE9\": 1}", "1:6", kNotUtf8},
    {"ContinuationByteAlone", "{\"\x80\": 1}", "1:3", kNotUtf8},
    {"OverlongSequence", "{\"\xC0\x80\": 1}", "1:3", kNotUtf8},
    {"EncodedSurrogate", "{\"\xED\xA0\x80\": 1}", "1:3", kNotUtf8},
    {"BeyondTheLastCharacter", "{\"\xF4\x90\x80\x80\": 1}", "1:3", kNotUtf8},
    {"SequenceCutShortByTheEnd", "{\"generation\": 2024}\xE9\x9B", "1:21", kNotUtf8},
    {"OutsideOfStrings", "{\n\xFF", "2:1", kNotUtf8},
    {"TwoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF{\"generation\": 2024}", "1:2", kNotJson},
};

INSTANTIATE_TEST_SUITE_P(Utf16, DocumentMetaTextTest, testing::ValuesIn(kUtf16Texts), NameOf);
INSTANTIATE_TEST_SUITE_P(Empty, DocumentMetaTextTest, testing::ValuesIn(kEmpty), NameOf);
INSTANTIATE_TEST_SUITE_P(Structure, DocumentMetaTextTest, testing::ValuesIn(kStructure), NameOf);
INSTANTIATE_TEST_SUITE_P(End, DocumentMetaTextTest, testing::ValuesIn(kEnd), NameOf);
INSTANTIATE_TEST_SUITE_P(NulByte, DocumentMetaTextTest, testing::ValuesIn(kNulBytes), NameOf);
INSTANTIATE_TEST_SUITE_P(String, DocumentMetaTextTest, testing::ValuesIn(kStrings), NameOf);
INSTANTIATE_TEST_SUITE_P(Encoding, DocumentMetaTextTest, testing::ValuesIn(kEncodings), NameOf);

/// Holds every kind of element, escapes and characters of every length, and ends with its last character.
constexpr const char* kDocument =
    R"({"generation": 2024,
  "classes": [{"internal_name": "Part", "display_name": "\u96f6\ud83d\ude00 零件 😀", "class_id": 1001,
    "table_name": "T_PART", "behaviors": ["Versioned", "é"], "properties": [
      {"internal_name": "Code", "display_name": "\"\\\/\b\f\n\r\t", "field": "F_CODE", "type": "string", "length": 32,
       "default_value": "{", "precision": 2, "max": "9", "min": "-9", "lookup_internal_name": "]"}]}],
  "links": [{"internal_name": "Uses"}],
  "behaviors": [{"internal_name": "Versioned", "methods": [{"internal_name": "Revise"}]}]})";

TEST(DocumentMetaDamageTest, EveryProperPrefixIsRefused) {
  const std::string whole = kDocument;
  EXPECT_NO_THROW(LoadText(whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(LoadError(whole.substr(0, size)).code, kvx::kMalformedDocument) << size;
  }
}

TEST(DocumentMetaDamageTest, AnythingButWhitespaceAfterTheDocumentIsRefused) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const bool isSpace = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    EXPECT_EQ(LoadError(kDocument + std::string(1, c)).code, isSpace ? 0U : kvx::kMalformedDocument) << byte;
  }
}

TEST(DocumentMetaDamageTest, DamagedByteNeverDoesMoreThanFailTheLoad) {
  for (std::size_t i = 0; i < std::string(kDocument).size(); ++i) {
    for (const char c : {'"', '{', '}', ']', ',', '\\', '\0', '\n', '9', '\x80', '\xFF'}) {
      std::string text = kDocument;
      text[i] = c;
      const std::uint32_t code = LoadError(text).code;
      EXPECT_TRUE(code == 0 || code == kvx::kMalformedDocument) << i << " " << static_cast<int>(c);
      if (c == '\0' || c == '\xFF') {
        EXPECT_EQ(code, kvx::kMalformedDocument) << i;
      }
    }
  }
}

TEST(DocumentMetaDamageTest, NulByteInANumberIsRefusedAndShown) {
  EXPECT_EQ(test::LoadErrorAtPointer("{\"generation\": 2024\0xyz}"s),
            test::ContentError("/generation", "expected a whole number from 0 to 4294967295, found 2024\\x00xyz"));
}

TEST(DocumentMetaDamageTest, DeepNestingIsRefused) {
  EXPECT_EQ(test::LoadErrorAtPointer(std::string(2000000, '[')),
            test::ContentError("/", "expected an object, found an array"));
  EXPECT_EQ(test::LoadErrorAtPointer(test::With(test::kClass, std::string(1000000, '[') + std::string(1000000, ']'))),
            test::ContentError("/classes/0", "expected an object, found an array"));
}

TEST(DocumentMetaWritingTest, ByteOrderMarkIsSkipped) {
  EXPECT_EQ(test::TextOf(*LoadText("\xEF\xBB\xBF"s + kDocument)), test::TextOf(*LoadText(kDocument)));
}

TEST(DocumentMetaWritingTest, ByteOrderMarkDoesNotMoveLaterLines) {
  EXPECT_EQ(LoadError("\xEF\xBB\xBF{\n \"generation\" 2024}"),
            (SError{kvx::kMalformedDocument, "meta.json:2:15: not valid JSON"}));
}

TEST(DocumentMetaWritingTest, SpacesAndLineEndsBetweenTokensDoNotMatter) {
  EXPECT_EQ(test::TextOf(*LoadText("\r\n\t {\"generation\"\n:\r\n2024\t, \"classes\"\n:[ {\n\"internal_name\":\"A\" , "
                                   "\"class_id\" : 7\n} ] }\n\n \t\r\n")),
            test::TextOf(*LoadText(R"({"generation":2024,"classes":[{"internal_name":"A","class_id":7}]})")));
}

TEST(DocumentMetaWritingTest, EscapesInStringsAreDecoded) {
  const auto part = LoadText(kDocument)->GetClass("Part");
  EXPECT_EQ(part->GetDisplayName(), "\u96F6\U0001F600 \u96F6\u4EF6 \U0001F600");
  EXPECT_EQ(part->GetProperties().front()->GetDisplayName(), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(LoadText(test::WithMember(test::kClass, "table_name", R"("a\u0000b")"))->GetClass("A")->GetTableName(),
            "a\0b"s);
}

TEST(DocumentMetaWritingTest, OrderOfMembersDoesNotMatter) {
  EXPECT_EQ(test::TextOf(*LoadText(
                R"({"links": [{"table_name": "T", "class_id": 7, "internal_name": "A"}], "generation": 2024})")),
            "link \"A\" \"\" 7 \"T\"\n");
}

}  // namespace
