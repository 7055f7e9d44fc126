// The script of "review -o sql", run as it says, and its result taken back with --data.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "upgradesrv/UpgradeDirectory.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// Part.Code may have 48 characters here and 32 afterwards; the table of Plant is another one.
constexpr const char* kClient = R"({"generation": 2024, "classes": [
  {"internal_name": "Part", "table_name": "T_PART", "properties": [
    {"internal_name": "Code", "field": "F_CODE", "type": "string", "length": 48}]},
  {"internal_name": "Plant", "table_name": "T_OLD"}]})";
constexpr const char* kOriginal = R"({"generation": 2024, "classes": [
  {"internal_name": "Part", "table_name": "T_PART", "properties": [
    {"internal_name": "Code", "field": "F_CODE", "type": "string", "length": 32}]},
  {"internal_name": "Plant", "table_name": "T_NEW"}]})";
// Three parts, none of which has a long code; two plants.
constexpr const char* kStored =
    "CREATE TABLE T_PART (F_CODE TEXT); INSERT INTO T_PART VALUES ('a'), ('ü'), ('12345678901234567890123456789012');"
    "CREATE TABLE T_OLD (F_ID TEXT); INSERT INTO T_OLD VALUES (1), (2);";

class ReviewScriptTest : public testing::Test {
 protected:
  ReviewScriptTest() {
    upgrade_.Write("installation.json", kClient);
    upgrade_.Write("2024/metamodel.json", kOriginal);
  }

  test::SProcessResult Review(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), "review");
    options.push_back(upgrade_.Path());
    return test::RunTool(options);
  }
  std::string Trouble(const std::vector<std::string>& options) const { return test::TroubleOf(Review(options)); }

  void Store(const std::string& sql) const {
    const test::SProcessResult result = test::Run({SQLITE3, upgrade_.File("data.db"), sql});
    ASSERT_EQ(result.status, 0) << result.errors;
  }
  /// Runs the script as it says at its beginning.
  test::SProcessResult RunScript() const {
    return test::Run({"/bin/sh", "-c",
                      "'" SQLITE3 "' -readonly -batch -bail -header -csv -cmd '.timeout 30000' \"$0/data.db\" < "
                      "\"$0/data.sql\" > \"$0/result.csv\"",
                      upgrade_.Path()});
  }
  void WriteScript() const {
    ASSERT_NE(Review({"-o", "sql=" + upgrade_.File("data.sql"), "--dialect", "sqlite"}).status, 2);
  }

  test::CUpgradeDirectory upgrade_;
  const std::string result_ = upgrade_.File("result.csv");
};

TEST_F(ReviewScriptTest, ItsResultTellsWhatIsTouched) {
  Store(kStored);
  WriteScript();
  const test::SProcessResult script = RunScript();
  ASSERT_EQ(script.status, 0) << script.errors;
  EXPECT_THAT(test::ReadFile(result_), StartsWith("path,rule,rows,of\n"));
  const test::SProcessResult review = Review({"--data", result_, "-o", "json"});
  EXPECT_EQ(review.status, 1);
  EXPECT_EQ(review.errors, "");
  EXPECT_THAT(review.output, HasSubstr("\"data\": \"" + result_ + "\","));
  EXPECT_THAT(review.output, HasSubstr("\"data\":{\"rows\":0,\"of\":3,\"tables\":[\"T_PART\"]},"
                                       "\"risk_without_data\":\"loss\""));
  EXPECT_THAT(review.output, HasSubstr("\"data\":{\"rows\":2,\"of\":2,\"tables\":[\"T_OLD\"]}}"));
}

TEST_F(ReviewScriptTest, TheVerdictAndTheSentencesFollowItsResult) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  const test::SProcessResult text = Review({"--data", result_});
  // The length asks for attention only: nothing stored is longer.
  EXPECT_THAT(text.output, StartsWith("Not yet. One difference has to be decided first.\n"));
  EXPECT_THAT(text.output, HasSubstr("\nLOSS      The upgrade keeps Plant in table T_NEW"));
  EXPECT_THAT(text.output, HasSubstr("\nattention class/Part/property/Code/length"));
  const std::string sentences = Review({"--data", result_, "-o", "csv"}).output;
  EXPECT_THAT(sentences, HasSubstr("None of 3 stored values is longer. Without the count it would be judged loss."));
  EXPECT_THAT(sentences, HasSubstr("The rows in T_OLD would be left behind. There are 2 of them."));
  EXPECT_THAT(sentences, Not(HasSubstr("were not counted")));
}

TEST_F(ReviewScriptTest, TheRiskThatCountsLeaveDecidesOnTheStatus) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  upgrade_.Write("decisions.json", R"({"accepted": [{"path": "class/Plant/table_name", "change": "changed",
    "original": "T_NEW", "client": "T_OLD", "reason": "moved by our own script"}]})");
  EXPECT_EQ(Review({"--fail-on", "loss"}).status, 1);
  EXPECT_EQ(Review({"--fail-on", "loss", "--data", result_}).status, 0);
  EXPECT_EQ(Review({"--fail-on", "attention", "--data", result_}).status, 1);
}

TEST_F(ReviewScriptTest, ADecisionWithAWildcardAcceptsWhatTheCountLeavesHarmless) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  upgrade_.Write("decisions.json", R"({"accepted": [
    {"path": "class/*/property/Code/length", "change": "changed", "reason": "r"}]})");
  EXPECT_THAT(Review({"-o", "json"}).output, Not(HasSubstr("\"accepted\":{")));
  EXPECT_THAT(Review({"-o", "json", "--data", result_}).output, HasSubstr("\"accepted\":{\"reason\":\"r\"}"));
}

TEST_F(ReviewScriptTest, TheDatabaseIsNotChanged) {
  Store(kStored);
  WriteScript();
  const std::string before = test::ReadFile(upgrade_.File("data.db"));
  ASSERT_EQ(RunScript().status, 0);
  EXPECT_EQ(test::ReadFile(upgrade_.File("data.db")), before);
}

TEST_F(ReviewScriptTest, NamesOfAnyKindStayNames) {
  const std::string name = R"(a\"; DROP TABLE T_KEPT; --\n.quit\n*/ '%s' \\ ü)";
  const std::string table = R"("a""; DROP TABLE T_KEPT; --)"
                            "\n.quit\n"
                            R"(*/ '%s' \ ü")";
  const auto named = [&name](const std::string& model) {
    return test::Replaced(test::Replaced(test::Replaced(model, "T_PART", name), "F_CODE", name), "Code", name);
  };
  upgrade_.Write("installation.json", named(kClient));
  upgrade_.Write("2024/metamodel.json", named(kOriginal));
  Store("CREATE TABLE T_KEPT (a); CREATE TABLE T_OLD (a); CREATE TABLE " + table + " (" + table + "); INSERT INTO " +
        table + " VALUES ('x'), ('123456789012345678901234567890123');");
  WriteScript();
  const test::SProcessResult script = RunScript();
  ASSERT_EQ(script.status, 0) << script.errors;
  const test::SProcessResult review = Review({"--data", result_, "-o", "json"});
  EXPECT_EQ(review.errors, "");
  EXPECT_THAT(review.output, HasSubstr("\"data\":{\"rows\":1,\"of\":2,"));
  EXPECT_THAT(review.output, HasSubstr("\"data\":{\"rows\":0,\"of\":0,\"tables\":[\"T_OLD\"]}"));
}

TEST_F(ReviewScriptTest, StopsWhereATableIsMissingAndItsResultIsRefused) {
  Store("CREATE TABLE T_PART (F_CODE TEXT)");
  WriteScript();
  const test::SProcessResult script = RunScript();
  EXPECT_NE(script.status, 0);
  EXPECT_THAT(script.errors, HasSubstr("no such table: T_OLD"));
  EXPECT_EQ(Trouble({"--data", result_}),
            result_ + ":1: there is nothing in it; the script that counts may have failed");
}

TEST_F(ReviewScriptTest, WhatIsTakenOutOfItIsNotInItsResult) {
  Store("CREATE TABLE T_PART (F_CODE TEXT)");
  WriteScript();
  std::string script = test::ReadFile(upgrade_.File("data.sql"));
  const std::size_t table = script.find("UNION ALL\n\n-- Table T_OLD");
  ASSERT_NE(table, std::string::npos);
  upgrade_.Write("data.sql", script.erase(table, script.find(';', table) - table));
  const test::SProcessResult run = RunScript();
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_THAT(Review({"--data", result_}).output, HasSubstr("\nLOSS      The upgrade keeps Plant in table T_NEW"));
  EXPECT_THAT(Review({"--data", result_, "-o", "csv"}).output,
              HasSubstr("Stored values could not be counted: not in " + result_ + "."));
}

TEST_F(ReviewScriptTest, ItsResultIsRefusedWhereTheMetamodelsHaveChangedSince) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  upgrade_.Write("2024/metamodel.json", test::Replaced(kOriginal, "32", "31"));
  EXPECT_EQ(Trouble({"--data", result_, "-o", "json=" + upgrade_.File("r.json")}),
            result_ +
                ":2: these are the counts of another script: what is to be counted for the kind class has changed "
                "since; write the script anew with -o sql and run that");
  EXPECT_THAT(test::ReadFile(upgrade_.File("r.json")), HasSubstr("\"complete\": false"));
}

TEST_F(ReviewScriptTest, RowsOfWhatIsNoMoreAreNoted) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  upgrade_.Write("result.csv", test::ReadFile(result_) + "class/Old/table_name,table-moved,1,1\n");
  EXPECT_EQ(Review({"--data", result_}).errors,
            "upgradesrv: " + result_ + ": 1 row is about a difference of which there is nothing to count any more\n");
}

TEST_F(ReviewScriptTest, IsOneOfSeveralOutputs) {
  ASSERT_EQ(Review({"-o", "sql=" + upgrade_.File("data.sql"), "-o", "json"}).status, 1);
  EXPECT_THAT(test::ReadFile(upgrade_.File("data.sql")), HasSubstr("\nBEGIN ISOLATION LEVEL"));
}

TEST_F(ReviewScriptTest, CountsFindingsThatAreKnownToBeHarmlessToo) {
  Store(kStored);
  WriteScript();
  ASSERT_EQ(RunScript().status, 0);
  const std::string script = test::ReadFile(upgrade_.File("data.sql"));
  ASSERT_EQ(Review({"--data", result_, "-o", "sql=" + upgrade_.File("again.sql"), "--dialect", "sqlite"}).status, 1);
  EXPECT_EQ(test::ReadFile(upgrade_.File("again.sql")), script);
}

TEST_F(ReviewScriptTest, HasTheDialectOfTheClientMetamodelsDatabase) {
  const std::string client = upgrade_.File("client.db");
  ASSERT_EQ(test::RunTool({"metamodel", "copy", upgrade_.File("installation.json"), client}).status, 0);
  EXPECT_THAT(Review({"--client", client, "-o", "sql"}).output, HasSubstr("\nPRAGMA query_only = ON;\n"));
  EXPECT_THAT(Review({"--client", client, "-o", "sql", "--dialect", "postgresql"}).output, HasSubstr("READ ONLY;\n"));
  EXPECT_THAT(Review({"-o", "sql"}).output, HasSubstr("READ ONLY;\n"));
}

TEST_F(ReviewScriptTest, TheTimeForATableIsThatOfTheCommandLine) {
  EXPECT_THAT(Review({"-o", "sql", "--data-timeout", "7"}).output, HasSubstr("statement_timeout = '14s'"));
  EXPECT_THAT(Review({"-o", "sql", "--data-timeout", "0.5"}).output, HasSubstr("statement_timeout = '2s'"));
}

TEST_F(ReviewScriptTest, RefusesUnknownDialectsAndOptionsWithoutUse) {
  EXPECT_EQ(Trouble({"-o", "sql", "--dialect", "SQLite"}),
            "--dialect: unknown dialect \"SQLite\"; the dialects are sqlite, postgresql");
  EXPECT_EQ(Trouble({"--dialect", "sqlite"}), "--dialect: there is no script; ask for one with -o sql=FILE");
  EXPECT_THAT(Trouble({"--data-timeout", "5"}), StartsWith("--data-timeout: "));
  EXPECT_THAT(Trouble({"-o", "sql", "--data-timeout", "0"}), HasSubstr("must be a number of seconds above 0"));
}

TEST_F(ReviewScriptTest, ASavedReviewHasNone) {
  ASSERT_EQ(Review({"-o", "json=" + upgrade_.File("r.json")}).status, 1);
  const std::string saved = upgrade_.File("r.json");
  EXPECT_EQ(test::TroubleOf(test::RunTool({"review", "--from", saved, "-o", "sql=" + upgrade_.File("data.sql")})),
            "-o sql: a saved review does not say where values are stored; leave out --from");
  EXPECT_THAT(test::ReadFile(upgrade_.File("data.sql")), HasSubstr("-- The review failed: -o sql: "));
  EXPECT_THAT(test::TroubleOf(test::RunTool({"review", "--from", saved, "--data", result_})), HasSubstr("--data"));
  EXPECT_THAT(test::TroubleOf(test::RunTool({"review", "--from", saved, "--dialect", "sqlite"})),
              HasSubstr("--dialect"));
}

TEST_F(ReviewScriptTest, OutputNeverReplacesItsResult) {
  upgrade_.Write("result.csv", "path,rule,rows,of\n");
  EXPECT_THAT(Trouble({"--data", result_, "-o", "csv=" + result_}), HasSubstr("is one that the review is made from"));
  EXPECT_EQ(test::ReadFile(result_), "path,rule,rows,of\n");
}

TEST_F(ReviewScriptTest, AResultThatCannotBeReadIsTrouble) {
  EXPECT_THAT(Trouble({"--data", upgrade_.File("none.csv")}), HasSubstr("none.csv: cannot be read: "));
  upgrade_.Write("result.csv", "path,rule\n");
  EXPECT_THAT(Trouble({"--data", result_}), StartsWith(result_ + ":1: expected the columns path,rule,rows,of"));
}

TEST_F(ReviewScriptTest, ARunWritesItToo) {
  EXPECT_EQ(upgrade_.Run({"--review", "sql=" + upgrade_.File("data.sql")}).status, 1);
  EXPECT_THAT(test::ReadFile(upgrade_.File("data.sql")), HasSubstr("-- Table T_PART\n"));
}

}  // namespace
