#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"
#include "support/JsonLetters.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace std::string_literals;
using test::ErrorOf;
using test::Repeat;
using test::SError;

struct SMalformed {
  const char* name;
  std::string text;
  /// "LINE:COLUMN: what is wrong".
  const char* problem;
};

void PrintTo(const SMalformed& malformed, std::ostream* output) {
  *output << malformed.name;
}

class JsonObjectMalformedTest : public testing::TestWithParam<SMalformed> {};

TEST_P(JsonObjectMalformedTest, IsRefusedWithItsPlaceAndTheObjectIsAsBefore) {
  const test::CTemporaryDirectory directory;
  const std::string path = directory.Write("document.json", GetParam().text);
  CJsonObject object;
  object.SetStringValue("before", "1");
  EXPECT_EQ(ErrorOf([&] { object.CreateFromFile(path); }),
            (SError{kvx::kMalformedDocument, path + ":" + GetParam().problem}));
  EXPECT_EQ(test::Compact(object), R"({"before":"1"})");
}

const SMalformed kEmptyDocuments[] = {
    {"EmptyFile", "", "1:1: The document is empty."},
    {"WhitespaceOnly", " \n\t ", "2:3: The document is empty."},
    {"LoneByteOrderMark", "\xEF\xBB\xBF", "1:2: The document is empty."},
    {"ByteOrderMarkAndWhitespace", "\xEF\xBB\xBF\n", "2:1: The document is empty."},
    {"NulByteAlone", "\0"s, "1:1: The document is empty."},
};

const SMalformed kTrailingText[] = {
    {"WordAfterTheDocument", "{} x", "1:4: The document root must not be followed by other values."},
    {"SecondDocument", "{}\n{}", "2:1: The document root must not be followed by other values."},
    {"BraceAfterTheDocument", "{}}", "1:3: The document root must not be followed by other values."},
    {"CommentAfterTheDocument", "{} // x", "1:4: The document root must not be followed by other values."},
    {"NulAfterTheDocument", "{}\0"s, "1:3: a NUL byte follows the end of the document."},
    {"NulAndTextAfterTheDocument", "{}\n\0{}"s, "2:1: a NUL byte follows the end of the document."},
};

const SMalformed kNulBytes[] = {
    {"NulBeforeTheDocument", "\0{}"s, "1:1: The document is empty."},
    {"NulInAString", "{\"a\": \"x\0y\"}"s, "1:9: Missing a closing quotation mark in string."},
    {"NulInAName", "{\"a\0\": 1}"s, "1:4: Missing a closing quotation mark in string."},
    {"NulBeforeAMember", "{\"a\": 1,\0\"b\": 2}"s, "1:9: Missing a name for object member."},
    {"NulAfterAMember", "{\"a\": 1\0}"s, "1:8: Missing a comma or '}' after an object member."},
    {"NulAfterAnItem", "[1\0]"s, "1:3: Missing a comma or ']' after an array element."},
    {"NulInALiteral", "[tr\0ue]"s, "1:4: Invalid value."},
};

const SMalformed kStructure[] = {
    {"OpenBraceAlone", "{", "1:2: Missing a name for object member."},
    {"UnclosedObject", "{\"a\": 1", "1:8: Missing a comma or '}' after an object member."},
    {"UnclosedArray", "[1", "1:3: Missing a comma or ']' after an array element."},
    {"ArrayClosedAsAnObject", "[1}", "1:3: Missing a comma or ']' after an array element."},
    {"MissingColon", "{\"a\" 1}", "1:6: Missing a colon after a name of object member."},
    {"MissingComma", "{\"a\": 1 \"b\": 2}", "1:9: Missing a comma or '}' after an object member."},
    {"MissingValue", "{\"a\": }", "1:7: Invalid value."},
    {"NumberAsAName", "{1: 2}", "1:2: Missing a name for object member."},
    {"BareWordAsAName", "{a: 2}", "1:2: Missing a name for object member."},
    {"SingleQuotedName", "{'a': 1}", "1:2: Missing a name for object member."},
    {"SingleQuotedString", "['a']", "1:2: Invalid value."},
    {"TrailingCommaInAnArray", "[1, ]", "1:5: Invalid value."},
    {"TrailingCommaInAnObject", "{\"a\": 1, }", "1:10: Missing a name for object member."},
    {"CommentBeforeTheDocument", "/* c */ {}", "1:1: Invalid value."},
    {"CommentInTheDocument", "[1, // c\n2]", "1:5: Invalid value."},
    {"CapitalLiteral", "[True]", "1:2: Invalid value."},
    {"TruncatedLiteral", "tru", "1:4: Invalid value."},
};

const SMalformed kNumbers[] = {
    {"NotANumber", "[NaN]", "1:2: Invalid value."},
    {"Infinity", "[Infinity]", "1:2: Invalid value."},
    {"NegativeInfinity", "[-Infinity]", "1:3: Invalid value."},
    {"LeadingZero", "[01]", "1:3: Missing a comma or ']' after an array element."},
    {"LeadingZeroAfterASign", "[-01]", "1:4: Missing a comma or ']' after an array element."},
    {"PlusSign", "[+1]", "1:2: Invalid value."},
    {"NoDigitBeforeThePoint", "[.5]", "1:2: Invalid value."},
    {"NoDigitAfterThePoint", "[1.]", "1:4: Miss fraction part in number."},
    {"NoDigitInTheExponent", "[1e]", "1:4: Miss exponent in number."},
    {"Hexadecimal", "[0x10]", "1:3: Missing a comma or ']' after an array element."},
    {"TooBig", "[1e400]", "1:2: Number too big to be stored in double."},
    {"TooBigByItsDigits", "[1.8e308]", "1:2: Number too big to be stored in double."},
    {"TooBigByItsDigitsMinus", "{\"a\": -1.8e308}", "1:7: Number too big to be stored in double."},
};

const SMalformed kStrings[] = {
    {"UnclosedString", "[\"abc", "1:6: Missing a closing quotation mark in string."},
    {"TabInAString", "[\"a\tb\"]", "1:4: Invalid escape character in string."},
    {"LineEndInAString", "[\"a\nb\"]", "1:4: Invalid escape character in string."},
    {"UnknownEscape", "[\"\\x\"]", "1:3: Invalid escape character in string."},
    {"BadHexDigit", "[\"\\u12g4\"]", "1:3: Incorrect hex digit after \\u escape in string."},
    {"LoneHighSurrogate", "[\"a\\ud800\"]", "1:4: The surrogate pair in string is invalid."},
    {"HighSurrogateBeforeALetter", "[\"a\\ud800A\"]", "1:4: The surrogate pair in string is invalid."},
    {"TwoHighSurrogates", "[\"a\\ud800\\ud800\"]", "1:4: The surrogate pair in string is invalid."},
    // These two are found when the string is complete; its end is their place.
    {"LoneLowSurrogate", "[\"ab\\udc00\"]", "1:12: The surrogate pair in string is invalid."},
    {"LoneLowSurrogateInAName", "{\"\\uDFFF\": 1}", "1:10: The surrogate pair in string is invalid."},
};

const SMalformed kEncodings[] = {
    {"ByteThatNeverStandsInUtf8", "[\"\u00E9\xFF\"]", "1:4: Invalid encoding in string."},
    {"Latin1", "[\"caf\xE9\"]", "1:6: Invalid encoding in string."},
    {"ContinuationByteAlone", "[\"\x80\"]", "1:3: Invalid encoding in string."},
    {"OverlongSequence", "[\"\xC0\x80\"]", "1:3: Invalid encoding in string."},
    {"EncodedSurrogate", "[\"\xED\xA0\x80\"]", "1:3: Invalid encoding in string."},
    {"BeyondTheLastCharacter", "[\"\xF4\x90\x80\x80\"]", "1:3: Invalid encoding in string."},
    {"SequenceCutShort", "[\"\xE9\x9B\"]", "1:3: Invalid encoding in string."},
    {"InAName", "{\"\xFF\": 1}", "1:3: Invalid encoding in string."},
    {"OutsideOfStrings", "[\xFF]", "1:2: Invalid value."},
    {"Utf16LittleEndianWithMark", "\xFF\xFE{\0}\0"s, "1:1: the text is in UTF-16; save it as UTF-8"},
    {"Utf16BigEndian", "\0{\0}"s, "1:1: the text is in UTF-16; save it as UTF-8"},
    {"TwoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF{}", "1:2: Invalid value."},
};

const SMalformed kColumns[] = {
    {"TwoAndThreeByteCharactersAreOneColumnEach", "{\n  \"\u96F6\u4EF6\": \"\u65E5\u672C\", \"\u00E9\": nope}",
     "2:21: Invalid value."},
    {"FourByteCharacterIsOneColumn", "[\"\U0001F600\" 1]", "1:6: Missing a comma or ']' after an array element."},
    {"CarriageReturnDoesNotBeginALine", "[\r\n1 2]", "2:3: Missing a comma or ']' after an array element."},
    {"ByteOrderMarkDoesNotMoveLaterLines", "\xEF\xBB\xBF{\n  \"a\" 1}",
     "2:7: Missing a colon after a name of object member."},
};

std::string NameOf(const testing::TestParamInfo<SMalformed>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EmptyDocument, JsonObjectMalformedTest, testing::ValuesIn(kEmptyDocuments), NameOf);
INSTANTIATE_TEST_SUITE_P(TrailingText, JsonObjectMalformedTest, testing::ValuesIn(kTrailingText), NameOf);
INSTANTIATE_TEST_SUITE_P(NulByte, JsonObjectMalformedTest, testing::ValuesIn(kNulBytes), NameOf);
INSTANTIATE_TEST_SUITE_P(Structure, JsonObjectMalformedTest, testing::ValuesIn(kStructure), NameOf);
INSTANTIATE_TEST_SUITE_P(Number, JsonObjectMalformedTest, testing::ValuesIn(kNumbers), NameOf);
INSTANTIATE_TEST_SUITE_P(String, JsonObjectMalformedTest, testing::ValuesIn(kStrings), NameOf);
INSTANTIATE_TEST_SUITE_P(Encoding, JsonObjectMalformedTest, testing::ValuesIn(kEncodings), NameOf);
INSTANTIATE_TEST_SUITE_P(Column, JsonObjectMalformedTest, testing::ValuesIn(kColumns), NameOf);

SError TooDeep(const std::string& place) {
  return {kvx::kMalformedDocument, "text:" + place + ": nested more than 512 levels deep"};
}

TEST(JsonObjectDepthTest, Accepts512Levels) {
  EXPECT_FALSE(test::Json(Repeat("[", 512) + Repeat("]", 512))->IsObject());
  const std::string objects = Repeat("{\"a\":", 511) + "{}" + Repeat("}", 511);
  EXPECT_EQ(test::Compact(*test::Json(objects)), objects);
}

TEST(JsonObjectDepthTest, Accepts512LevelsAgainAndAgain) {
  const std::string deep = Repeat("[", 511) + Repeat("]", 511);
  EXPECT_EQ(test::Compact(*test::Json("[" + deep + "," + deep + "]")), "[" + deep + "," + deep + "]");
}

TEST(JsonObjectDepthTest, Refuses513LevelsAtTheBracketThatOpensTheLast) {
  EXPECT_EQ(ErrorOf([] { test::Json(Repeat("[", 513) + Repeat("]", 513)); }), TooDeep("1:513"));
  EXPECT_EQ(ErrorOf([] { test::Json(Repeat("{\"a\":", 512) + "{}" + Repeat("}", 512)); }), TooDeep("1:2561"));
}

TEST(JsonObjectDepthTest, RefusesTwoMillionBracketsWithoutRunningOutOfStack) {
  EXPECT_EQ(ErrorOf([] { test::Json(std::string(2000000, '[')); }), TooDeep("1:513"));
  EXPECT_EQ(ErrorOf([] { test::Json(std::string(1000000, '[') + std::string(1000000, ']')); }), TooDeep("1:513"));
}

}  // namespace
