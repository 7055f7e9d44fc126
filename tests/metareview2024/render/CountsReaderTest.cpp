#include "metareview2024/render/CountsReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "metareview2024/MadeReview.h"
#include "metareview2024/render/LookupsDigest.h"

namespace metareview {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kColumns = "path,rule,rows,of\n";
const std::string kCode = "class/Part/property/Code/length";
const std::string kRating = "behavior/Rated/property/Rating/max";

/// Part.Code is counted in one table, Rated.Rating in two.
class CountsReaderTest : public testing::Test {
 protected:
  CountsReaderTest()
      : review_(test::MadeReview({test::MadeChange(kCode, "length-shrinks", 48U, 32U),
                                  test::MadeChange(kRating, "max-tightens", "9", "5")})) {
    lookups_.lookups = {{0, kCode, "length-shrinks", "T_PART", {"F_CODE"}, EMeasure::kLongerThan, "32"},
                        {1, kRating, "max-tightens", "T_A", {"F_RATING"}, EMeasure::kAbove, "5"},
                        {1, kRating, "max-tightens", "T_B", {"F_RATING"}, EMeasure::kAbove, "5"}};
  }

  /// The rows that tell the script of these lookups from others.
  std::string Digests() const {
    std::string rows;
    for (const EKind kind : kKinds) {
      rows.append(NameOf(kind)).append(",").append(LookupsDigest(lookups_, kind)).append(",0,0\n");
    }
    return rows;
  }

  SReadCounts Read(const std::string& rows) const {
    return ReadCounts(kColumns + rows + Digests(), "r.csv", review_, lookups_);
  }

  std::string FaultOfText(const std::string& text) const {
    try {
      ReadCounts(text, "r.csv", review_, lookups_);
    } catch (const CKVXException& error) {
      EXPECT_EQ(error.GetCode(), kvx::kMalformedDocument);
      return error.what();
    }
    return "no fault";
  }
  std::string FaultOf(const std::string& rows) const { return FaultOfText(kColumns + rows); }

  /// "ROWS of OF in TABLES: PROBLEM" of each finding.
  std::vector<std::string> Counts(const std::string& rows) const {
    std::vector<std::string> texts;
    for (const SCount& count : Read(rows).counts) {
      std::string tables;
      for (const std::string& table : count.data.tables) {
        tables += " " + table;
      }
      texts.push_back(std::to_string(count.finding) + ": " + std::to_string(count.data.rows) + " of " +
                      std::to_string(count.data.of) + " in" + tables + ": " + count.data.problem);
    }
    return texts;
  }

  SReview review_;
  SLookups lookups_;
};

TEST_F(CountsReaderTest, TakesCountsAndAddsThoseOfSeveralTables) {
  EXPECT_THAT(
      Counts(kCode + ",length-shrinks,7,420\n" + kRating + ",max-tightens,0,3\n" + kRating + ",max-tightens,2,40\n"),
      ElementsAre("0: 7 of 420 in T_PART: ", "1: 2 of 43 in T_A T_B: "));
}

TEST_F(CountsReaderTest, PathsMatchWhateverTheirCase) {
  EXPECT_EQ(Counts("class/part/property/CODE/length,length-shrinks,7,420\n").front(), "0: 7 of 420 in T_PART: ");
}

TEST_F(CountsReaderTest, WhatIsNotInItHasAProblem) {
  EXPECT_THAT(Counts(""), ElementsAre("0: 0 of 0 in: not in r.csv", "1: 0 of 0 in: not in r.csv"));
}

TEST_F(CountsReaderTest, WhatIsThereInPartHasAProblem) {
  EXPECT_EQ(Counts(kRating + ",max-tightens,0,3\n").back(),
            "1: 0 of 3 in T_A: 1 of its 2 tables is not in r.csv, which does not say which one");
  lookups_.lookups.push_back({1, kRating, "max-tightens", "T_C", {"F_RATING"}, EMeasure::kAbove, "5"});
  EXPECT_EQ(Counts(kRating + ",max-tightens,0,3\n").back(),
            "1: 0 of 3 in T_A: 2 of its 3 tables are not in r.csv, which does not say which ones");
}

TEST_F(CountsReaderTest, ACountThatIsEmptyMeansValuesThatAreNotNumbers) {
  EXPECT_EQ(Counts(kRating + ",max-tightens,,3\n" + kRating + ",max-tightens,2,40\n").back(),
            "1: 2 of 40 in T_B: the column holds values that are not numbers");
}

TEST_F(CountsReaderTest, CountsDifferencesThatAreNoMore) {
  const SReadCounts read =
      Read("class/Old/table_name,table-moved,1,1\n" + kCode + ",field-moved,1,1\n" + kCode + ",length-shrinks,7,420\n");
  EXPECT_EQ(read.gone, 2U);
  EXPECT_EQ(read.counts.front().data.rows, 7U);
}

TEST_F(CountsReaderTest, LeavesOutKindsThatAreNotCompared) {
  review_.elements = {EKind::kClass};
  EXPECT_EQ(Read("link/Uses,link-withdrawn,1,1\nlink,0,0,0\n").gone, 0U);
}

TEST_F(CountsReaderTest, TakesTheCountsOfItsOwnScript) {
  const auto row = [this](EKind kind) {
    return std::string(NameOf(kind)) + "," + LookupsDigest(lookups_, kind) + ",0,0\n";
  };
  EXPECT_THAT(
      Counts(row(EKind::kClass) + row(EKind::kLink) + row(EKind::kBehavior) + kCode + ",length-shrinks,7,420\n"),
      ElementsAre("0: 7 of 420 in T_PART: ", "1: 0 of 0 in: not in r.csv"));
}

TEST_F(CountsReaderTest, RefusesTheCountsOfAnotherScript) {
  const std::string earlier = "class," + LookupsDigest(lookups_, EKind::kClass) + ",0,0\n";
  const std::string behavior = "behavior," + LookupsDigest(lookups_, EKind::kBehavior) + ",0,0\n";
  // None is longer than 40, but one than 32: the path and the rule would be the same.
  lookups_.lookups.front().limit = "40";
  EXPECT_EQ(FaultOf(behavior + earlier + kCode + ",length-shrinks,0,420\n"),
            "r.csv:3: these are the counts of another script: what is to be counted for the kind class has changed "
            "since; write the script anew with -o sql and run that");
  review_.elements = {EKind::kBehavior};
  EXPECT_EQ(FaultOf(behavior + earlier), "no fault");
}

TEST_F(CountsReaderTest, RefusesCountsThatDoNotSayOfWhichScriptTheyAre) {
  const std::string code = kCode + ",length-shrinks,7,420\n";
  EXPECT_EQ(
      FaultOf("behavior," + LookupsDigest(lookups_, EKind::kBehavior) + ",0,0\n" + code),
      "r.csv: the row of the kind class is missing, which tells which script has counted; run the script again and "
      "leave its result whole");
  review_.elements = {EKind::kBehavior};
  EXPECT_EQ(FaultOf(code), "no fault");
}

TEST_F(CountsReaderTest, RefusesALastLineThatIsCutOff) {
  const std::string whole = kColumns + Digests() + kCode + ",length-shrinks,7,420\n";
  EXPECT_EQ(FaultOfText(whole), "no fault");
  const std::string fault = "r.csv:5: the line has no end, so that some of it may be missing; run the script again";
  EXPECT_EQ(FaultOfText(whole.substr(0, whole.size() - 1)), fault);
  EXPECT_EQ(FaultOfText(whole.substr(0, whole.size() - 2)), fault);
  EXPECT_EQ(FaultOfText(kColumns.substr(0, kColumns.size() - 1)), "r.csv:1" + fault.substr(7));
}

TEST_F(CountsReaderTest, SaysThatATextIsInUtf16) {
  EXPECT_EQ(FaultOfText(std::string("\xFF\xFEp\0a\0", 6)), "r.csv:1: the text is in UTF-16; save it as UTF-8");
}

TEST_F(CountsReaderTest, RefusesOtherColumns) {
  const std::string found = "; run the script as it says at its beginning";
  EXPECT_EQ(FaultOfText("rule,path,rows,of\n"),
            "r.csv:1: expected the columns path,rule,rows,of, found \"rule\" and others" + found);
  EXPECT_EQ(FaultOfText("path,rule\n"),
            "r.csv:1: expected the columns path,rule,rows,of, found \"path\" and others" + found);
  EXPECT_EQ(FaultOfText("BEGIN\nSET\npath,rule,rows,of\n"),
            "r.csv:1: expected the columns path,rule,rows,of, found \"BEGIN\"" + found);
  EXPECT_EQ(FaultOfText("path;rule;rows;of\n"),
            "r.csv:1: expected the columns path,rule,rows,of, found \"path;rule;rows;of\"" + found);
  EXPECT_EQ(FaultOfText("path,rule,rows\n"),
            "r.csv:1: expected the columns path,rule,rows,of, found \"path\" and others" + found);
  EXPECT_EQ(FaultOfText("\x1B[2J"), "r.csv:1: expected the columns path,rule,rows,of, found \"\\x1B[2J\"" + found);
}

TEST_F(CountsReaderTest, RefusesAnEmptyFile) {
  const std::string fault = "r.csv:1: there is nothing in it; the script that counts may have failed";
  EXPECT_EQ(FaultOfText(""), fault);
  EXPECT_EQ(FaultOfText("\xEF\xBB\xBF"), fault);
}

TEST_F(CountsReaderTest, RefusesRowsOfAnotherLength) {
  EXPECT_EQ(FaultOf("\n" + kCode + ",length-shrinks,7\n"), "r.csv:3: expected 4 fields, found 3");
  EXPECT_EQ(FaultOf(kCode + ",length-shrinks,7,420,\n"), "r.csv:2: expected 4 fields, found 5");
  EXPECT_EQ(FaultOf("(2 rows)\n"), "r.csv:2: expected 4 fields, found 1");
}

TEST_F(CountsReaderTest, RefusesWhatIsNoPathAndNoRule) {
  EXPECT_EQ(FaultOf("class/Part/Code,length-shrinks,7,420\n"),
            "r.csv:2: \"class/Part/Code\" is not a path of a difference");
  EXPECT_EQ(FaultOf(",length-shrinks,7,420\n"), "r.csv:2: \"\" is not a path of a difference");
  EXPECT_EQ(FaultOf(kCode + ",length-grow,7,420\n"), "r.csv:2: \"length-grow\" is not a rule");
}

TEST_F(CountsReaderTest, RefusesNumbersThatAreNone) {
  for (const std::string number :
       {"-1", "+1", "1.0", "1e3", "0x1", " 1", "1 ", "none", "18446744073709551616", "1000000000000001"}) {
    EXPECT_EQ(FaultOf(kCode + ",length-shrinks," + number + ",420\n"),
              "r.csv:2: rows: \"" + number + "\" is not a number of rows");
    EXPECT_EQ(FaultOf(kCode + ",length-shrinks,0," + number + "\n"),
              "r.csv:2: of: \"" + number + "\" is not a number of rows");
  }
  EXPECT_EQ(FaultOf(kCode + ",length-shrinks,0,\n"), "r.csv:2: of: \"\" is not a number of rows");
  EXPECT_EQ(FaultOf(kCode + ",length-shrinks,421,420\n"), "r.csv:2: rows is greater than of: 421 of 420");
}

TEST_F(CountsReaderTest, RefusesRepeatedRows) {
  const std::string row = kCode + ",length-shrinks,7,420\n";
  EXPECT_EQ(FaultOf(row + row), "r.csv:3: there is a row too many for \"" + kCode + "\" and the rule length-shrinks");
  const std::string rating = kRating + ",max-tightens,0,3\n";
  EXPECT_EQ(FaultOf(rating + rating + rating),
            "r.csv:4: there is a row too many for \"" + kRating + "\" and the rule max-tightens");
}

TEST_F(CountsReaderTest, AddsUpTheGreatestCounts) {
  const std::string most = kRating + ",max-tightens,1000000000000000,1000000000000000\n";
  EXPECT_EQ(Counts(most + most).back(), "1: 2000000000000000 of 2000000000000000 in T_A T_B: ");
}

/// Whatever is done to a result, it is taken or refused with a line; nothing else happens.
TEST_F(CountsReaderTest, EveryCutAndEveryOtherByteIsTakenOrRefusedWithALine) {
  const std::string whole =
      kColumns + "\"" + kCode + "\",length-shrinks,7,420\r\n" + kRating + ",max-tightens,,3\n" + Digests();
  EXPECT_EQ(FaultOfText(whole), "no fault");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_THAT(FaultOfText(whole.substr(0, size)), testing::AnyOf("no fault", HasSubstr("r.csv:")));
    for (const char byte : {'\0', '"', ',', '\n', '\r', '0', '\xFF'}) {
      std::string text = whole;
      text[size] = byte;
      EXPECT_THAT(FaultOfText(text), testing::AnyOf("no fault", HasSubstr("r.csv:")));
    }
  }
}

TEST_F(CountsReaderTest, NothingToCountNeedsNoRows) {
  lookups_.lookups.clear();
  EXPECT_THAT(Read("").counts, IsEmpty());
}

}  // namespace
}  // namespace metareview
