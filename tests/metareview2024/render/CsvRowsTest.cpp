#include "metareview2024/render/CsvRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"

namespace metareview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Rows = std::vector<std::vector<std::string>>;

Rows RowsOf(std::string_view text) {
  CCsvRows csv(text, "r.csv");
  Rows rows;
  while (csv.Next()) {
    rows.push_back(csv.Fields());
  }
  return rows;
}

std::string FaultOf(std::string_view text) {
  try {
    RowsOf(text);
  } catch (const CKVXException& error) {
    EXPECT_EQ(error.GetCode(), kvx::kMalformedDocument);
    return error.what();
  }
  return "no fault";
}

TEST(CsvRowsTest, FieldsAreSeparatedByCommas) {
  EXPECT_THAT(RowsOf("a,b\nc\n"), ElementsAre(ElementsAre("a", "b"), ElementsAre("c")));
  EXPECT_THAT(RowsOf(",a,,"), ElementsAre(ElementsAre("", "a", "", "")));
}

TEST(CsvRowsTest, LinesMayEndInEitherWayAndTheLastOneNotAtAll) {
  EXPECT_THAT(RowsOf("a\r\nb\nc"), ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("c")));
}

TEST(CsvRowsTest, ACarriageReturnAloneIsText) {
  EXPECT_THAT(RowsOf("a\rb,c\r\n"), ElementsAre(ElementsAre("a\rb", "c")));
}

TEST(CsvRowsTest, QuotesHoldWhatWouldEndAField) {
  EXPECT_THAT(RowsOf("\"a,b\",\"c\r\nd\",\"e\"\"f\"\n"), ElementsAre(ElementsAre("a,b", "c\r\nd", "e\"f")));
  EXPECT_THAT(RowsOf("\"\",\"\"\"\"\n"), ElementsAre(ElementsAre("", "\"")));
}

TEST(CsvRowsTest, EmptyLinesAreNoRows) {
  EXPECT_THAT(RowsOf("\n\r\na\n\n\nb\n\n"), ElementsAre(ElementsAre("a"), ElementsAre("b")));
  EXPECT_THAT(RowsOf(""), IsEmpty());
  EXPECT_THAT(RowsOf("\r\n"), IsEmpty());
}

TEST(CsvRowsTest, AByteOrderMarkIsNoText) {
  EXPECT_THAT(RowsOf("\xEF\xBB\xBF\"a\",b\n"), ElementsAre(ElementsAre("a", "b")));
  EXPECT_THAT(RowsOf("\xEF\xBB\xBF"), IsEmpty());
}

TEST(CsvRowsTest, BytesAreKept) {
  EXPECT_THAT(RowsOf(std::string_view("a\0b,\xFF\n", 6)), ElementsAre(ElementsAre(std::string("a\0b", 3), "\xFF")));
}

TEST(CsvRowsTest, BeforeTheFirstRowItIsOnTheFirstLine) {
  const CCsvRows csv("a\n", "r.csv");
  EXPECT_THAT(csv.Fields(), IsEmpty());
  EXPECT_FALSE(csv.IsEnded());
  EXPECT_THAT([&csv] { csv.Fail("why"); }, testing::ThrowsMessage<CKVXException>("r.csv:1: why"));
}

TEST(CsvRowsTest, WhatIsBehindTheTextIsNotRead) {
  EXPECT_THAT(RowsOf(std::string_view("a\n\n", 2)), ElementsAre(ElementsAre("a")));
  EXPECT_THAT(RowsOf(std::string_view("a,b", 1)), ElementsAre(ElementsAre("a")));
  EXPECT_THAT(RowsOf(std::string_view("a,\"b\"", 2)), ElementsAre(ElementsAre("a", "")));
  EXPECT_THAT(RowsOf(std::string_view("\"a\"b", 3)), ElementsAre(ElementsAre("a")));
}

TEST(CsvRowsTest, RefusesQuotesThatAreNotClosed) {
  EXPECT_EQ(FaultOf("a\n\"b,c\nd\n"), "r.csv:2: a quotation mark is not closed");
  EXPECT_EQ(FaultOf("\""), "r.csv:1: a quotation mark is not closed");
  EXPECT_EQ(FaultOf("\"\"\""), "r.csv:1: a quotation mark is not closed");
}

TEST(CsvRowsTest, RefusesQuotesInTheWrongPlace) {
  EXPECT_EQ(FaultOf("\"a\nb\",c\nd,e\"f\n"),
            "r.csv:3: there is a quotation mark within a field that does not begin with one");
  EXPECT_EQ(FaultOf("\"a\"b\n"), "r.csv:1: there is text behind a quotation mark that ends a field");
  EXPECT_EQ(FaultOf("\"a\"\rb\n"), "r.csv:1: there is text behind a quotation mark that ends a field");
}

}  // namespace
}  // namespace metareview
