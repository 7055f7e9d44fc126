#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "support/Error.h"
#include "support/MetaText.h"
#include "support/Process.h"
#include "support/TestStorage.h"
#include "upgrademeta2024/storage/LargeMetamodel.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgrademeta2024/storage/RunningProcess.h"
#include "upgrademeta2024/storage/database/Proxy.h"

namespace test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kUpgradesrv = UPGRADESRV_EXECUTABLE;
constexpr std::size_t kInMidRead = 100000;

class PostgresqlFaultTest : public testing::Test {
 protected:
  void Save() const { OpenMetaStorage(storage_.Location())->Save(*sample_); }
  std::string Loaded(const std::string& words = "") const {
    return TextOf(*OpenMetaStorage(storage_.LocationWith(words))->Load());
  }
  SError LoadError(const std::string& words) const {
    return ErrorOf([&] { Loaded(words); });
  }

  static void ExpectOneLine(const SError& error, std::uint32_t code, const std::string& problem,
                            const std::string& wayOut) {
    EXPECT_EQ(error.code, code) << error.message;
    EXPECT_THAT(error.message, AllOf(HasSubstr(problem), HasSubstr("; " + wayOut), Not(HasSubstr("\n"))));
  }

  CTestStorage storage_{EStorage::kPostgresql};
  std::shared_ptr<CMetaDictionary2024> sample_ = LargeMetamodel(30);
};

TEST_F(PostgresqlFaultTest, ServerNotRunning) {
  ExpectOneLine(LoadError("host=127.0.0.1 port=1"), kvx::kFileError, "cannot be opened: connection to server at ",
                "check that the server runs and that host, port");
}

TEST_F(PostgresqlFaultTest, UnknownDatabase) {
  ExpectOneLine(LoadError("dbname=nowhere"), kvx::kFileError, "database \"nowhere\" does not exist",
                "check that the server runs and that host, port, database");
}

TEST_F(PostgresqlFaultTest, WrongPasswordIsNotShown) {
  const SError error = LoadError("password=geheim");
  ExpectOneLine(error, kvx::kFileError, ": cannot be opened: ", "check that the server runs");
  EXPECT_THAT(error.message, HasSubstr("password=***"));
  EXPECT_THAT(error.message, HasSubstr("authentication failed"));
  EXPECT_THAT(error.message, Not(HasSubstr("geheim")));

  const std::string host = std::string("localhost:") + std::getenv("PGPORT");
  for (const std::string& location :
       {"postgresql://postgres:geheim@" + host, "postgresql://" + host + "/postgres?user=postgres&password=geheim"}) {
    const SProcessResult result = test::Run({kUpgradesrv, "metamodel", "show", location});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, AllOf(HasSubstr("authentication failed"), Not(HasSubstr("geheim"))));
  }
}

TEST_F(PostgresqlFaultTest, PasswordIsNotShownWhereTheLocationIsReported) {
  Save();
  const std::string location = storage_.LocationWith(std::string("password=") + std::getenv("PGPASSWORD"));
  for (const std::string format : {"text", "json"}) {
    const SProcessResult result = test::Run({kUpgradesrv, "metamodel", "show", "--format", format, location});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, AllOf(HasSubstr("password=***"), Not(HasSubstr(std::getenv("PGPASSWORD")))));
  }
  const SProcessResult result = test::Run({kUpgradesrv, "metamodel", "copy", location, location});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, AllOf(HasSubstr("exists already"), Not(HasSubstr(std::getenv("PGPASSWORD")))));
}

TEST_F(PostgresqlFaultTest, NoteSaysWhereALocationHasLed) {
  Save();
  const std::string database = storage_.Query("SELECT current_database()::text");
  const std::string host = std::getenv("PGHOST");
  const std::string place = " is database " + database + " on host " + host + ", port " + std::getenv("PGPORT") + "\n";
  const auto errors = [](const std::string& location) {
    const SProcessResult result = test::Run({kUpgradesrv, "metamodel", "show", location});
    EXPECT_EQ(result.status, 0);
    return result.errors;
  };
  EXPECT_EQ(errors(storage_.Location()), "upgradesrv: " + OpenMetaStorage(storage_.Location())->Describe() + place);
  const std::string onlyHost = storage_.LocationWith("host=" + host);
  EXPECT_EQ(errors(onlyHost), "upgradesrv: " + OpenMetaStorage(onlyHost)->Describe() + place);
  // Said already, with the metamodels that a run takes.
  EXPECT_EQ(errors(storage_.LocationWith("host=" + host + " dbname=" + database)), "");
}

TEST_F(PostgresqlFaultTest, NoPermission) {
  Save();
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  const std::string reader = schema + "_reader";
  storage_.Execute(
      {"CREATE ROLE " + reader + " LOGIN PASSWORD 'geheim'", "GRANT USAGE ON SCHEMA " + schema + " TO " + reader});
  const std::string words = "user=" + reader + " password=geheim";
  ExpectOneLine(LoadError(words), kvx::kFileError, "permission denied for table metamodel", "grant the user");
  storage_.Execute({"GRANT SELECT ON ALL TABLES IN SCHEMA " + schema + " TO " + reader});
  EXPECT_EQ(Loaded(words), TextOf(*sample_)) << "reading needs no right to write";
  const SError error = ErrorOf([&] { OpenMetaStorage(storage_.LocationWith(words))->Save(CMetaDictionary2024()); });
  ExpectOneLine(error, kvx::kFileError, "what was there is unchanged: ", "run as the owner of the tables");
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  storage_.Execute({"DROP OWNED BY " + reader, "DROP ROLE " + reader});
}

TEST_F(PostgresqlFaultTest, RowsThatAPolicyKeepsFromTheUser) {
  Save();
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  const std::string reader = schema + "_reader";
  storage_.Execute({"CREATE ROLE " + reader + " LOGIN PASSWORD 'geheim'",
                    "GRANT USAGE ON SCHEMA " + schema + " TO " + reader,
                    "GRANT SELECT ON ALL TABLES IN SCHEMA " + schema + " TO " + reader});
  const std::string words = "user=" + reader + " password=geheim";
  for (const std::string table : {"metamodel", "meta_links", "meta_class_properties"}) {
    storage_.Execute({"ALTER TABLE " + table + " ENABLE ROW LEVEL SECURITY"});
    ExpectOneLine(LoadError(words), kvx::kFileError,
                  "table " + table + " cannot be read: the server would keep rows from this user: ",
                  "give the user the right BYPASSRLS, or switch the row-level security of the table off");
    // A policy that shows all rows today may hide some tomorrow.
    storage_.Execute({"CREATE POLICY all_rows ON " + table + " USING (true)"});
    EXPECT_THAT(LoadError(words).message, HasSubstr("row-level security policy for table \"" + table + "\""));
    storage_.Execute({"ALTER TABLE " + table + " DISABLE ROW LEVEL SECURITY"});
  }
  storage_.Execute({"ALTER TABLE meta_links ENABLE ROW LEVEL SECURITY", "ALTER ROLE " + reader + " BYPASSRLS"});
  EXPECT_EQ(Loaded(words), TextOf(*sample_));
  storage_.Execute({"DROP OWNED BY " + reader, "DROP ROLE " + reader});
}

TEST_F(PostgresqlFaultTest, TablesOfAnotherOwner) {
  Save();
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  const std::string writer = schema + "_writer";
  storage_.Execute({"CREATE ROLE " + writer + " LOGIN PASSWORD 'geheim'",
                    "GRANT ALL ON SCHEMA " + schema + " TO " + writer,
                    "GRANT ALL ON ALL TABLES IN SCHEMA " + schema + " TO " + writer});
  const std::string location = storage_.LocationWith("user=" + writer + " password=geheim");
  ExpectOneLine(ErrorOf([&] { OpenMetaStorage(location)->Save(CMetaDictionary2024()); }), kvx::kFileError,
                "what was there is unchanged: ERROR:  must be owner of table ", "run as the owner of the tables");
  EXPECT_EQ(Loaded(), TextOf(*sample_));
  storage_.Execute({"DROP OWNED BY " + writer, "DROP ROLE " + writer});
}

TEST_F(PostgresqlFaultTest, SchemaThatTheUserMayNotCreateIn) {
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  const std::string writer = schema + "_writer";
  storage_.Execute(
      {"CREATE ROLE " + writer + " LOGIN PASSWORD 'geheim'", "GRANT USAGE ON SCHEMA " + schema + " TO " + writer});
  const std::string location = storage_.LocationWith("user=" + writer + " password=geheim");
  ExpectOneLine(ErrorOf([&] { OpenMetaStorage(location)->Save(*sample_); }), kvx::kFileError,
                "permission denied for schema " + schema, "grant the user the rights on the schema");
  storage_.Execute({"DROP OWNED BY " + writer, "DROP ROLE " + writer});
}

TEST_F(PostgresqlFaultTest, UnknownSchema) {
  const auto storage = OpenMetaStorage("postgresql://options=-csearch_path=nowhere");
  EXPECT_FALSE(storage->Exists());
  ExpectOneLine(ErrorOf([&] { storage->Save(*sample_); }), kvx::kFileError, "no schema has been selected to create in",
                "create the schema that search_path names, or correct search_path");
}

TEST_F(PostgresqlFaultTest, LockedByAnotherProgram) {
  Save();
  const std::unique_ptr<soci::session> writer = storage_.OpenSession();
  *writer << "BEGIN";
  *writer << "LOCK TABLE meta_methods IN ACCESS EXCLUSIVE MODE";
  ExpectOneLine(LoadError(""), kvx::kFileError, "another program has locked the tables for more than 5 seconds",
                "try again when that program is done");
  ExpectOneLine(ErrorOf([&] { Save(); }), kvx::kFileError, "another program has locked the tables",
                "try again when that program is done");
  *writer << "ROLLBACK";
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(PostgresqlFaultTest, StatementTimeoutIsNoLostConnection) {
  Save();
  storage_.Execute({"ALTER TABLE meta_methods RENAME TO methods",
                    "CREATE VIEW meta_methods AS SELECT methods.* FROM methods, pg_sleep(60)"});
  const std::string schema = storage_.Query("SELECT current_schema()::text");
  ExpectOneLine(LoadError("options='-csearch_path=" + schema + " -cstatement_timeout=100'"), kvx::kFileError,
                "table meta_methods cannot be read: the server has ended the query: ERROR:  canceling statement due to "
                "statement timeout",
                "raise statement_timeout for the user, or try again");
}

TEST_F(PostgresqlFaultTest, ConnectionLostInMidRead) {
  Save();
  const CProxy proxy(kInMidRead, [] { return false; });
  ExpectOneLine(LoadError(proxy.Words()), kvx::kFileError,
                "table meta_class_properties cannot be read: the connection was lost: ", "check the server, then");
  EXPECT_TRUE(proxy.HasInterrupted());
}

TEST_F(PostgresqlFaultTest, AMetamodelThatIsEditedMeanwhileIsSeenAsOfOneMoment) {
  Save();
  const CProxy proxy(kInMidRead, [this] {
    storage_.Execute({"UPDATE meta_class_properties SET display_name = 'edited'", "DELETE FROM meta_methods",
                      "UPDATE metamodel SET meta_methods_rows = 0"});
    return true;
  });
  EXPECT_EQ(Loaded(proxy.Words()), TextOf(*sample_));
  EXPECT_TRUE(proxy.HasInterrupted());
  EXPECT_NE(Loaded(), TextOf(*sample_));
}

TEST_F(PostgresqlFaultTest, KilledCopyLeavesTheMetamodel) {
  Save();
  const std::string large = storage_.Directory().File("large.json");
  OpenMetaStorage(large)->Save(*LargeMetamodel(300));
  CRunningProcess copy({kUpgradesrv, "metamodel", "copy", "--replace", large, storage_.Location()});
  const std::string inserting =
      "SELECT count(*) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND query LIKE 'INSERT INTO "
      "%meta_class_properties%'";
  for (int i = 0; i < 20000 && storage_.Query(inserting) == "0"; ++i) {
    std::this_thread::sleep_for(1ms);
  }
  ASSERT_TRUE(copy.Kill());
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(PostgresqlFaultTest, FailedSaveLeavesTheMetamodel) {
  Save();
  CMetaDictionary2024 refused;
  refused.AddBehavior(MakeBehavior({"B", {"M", "m"}, {}}));
  const SError error = ErrorOf([&] { OpenMetaStorage(storage_.Location())->Save(refused); });
  ExpectOneLine(error, kvx::kFileError, "what was there is unchanged: ", "see the server's log");
  EXPECT_EQ(Loaded(), TextOf(*sample_));
}

TEST_F(PostgresqlFaultTest, MetacharactersOfConnectionWordsReachTheServer) {
  storage_.Execute({"DROP DATABASE IF EXISTS \"odd 'na%me\\; \"", "CREATE DATABASE \"odd 'na%me\\; \""});
  const auto odd = OpenMetaStorage("postgresql://dbname='odd \\'na%me\\\\; '");
  odd->Save(*sample_);
  EXPECT_EQ(TextOf(*odd->Load()), TextOf(*sample_));
  const auto uri = OpenMetaStorage("postgresql:///odd%20%27na%25me%5C%3B%20");
  EXPECT_EQ(TextOf(*uri->Load()), TextOf(*sample_));
  EXPECT_EQ(uri->Describe(), odd->Describe());
  storage_.Execute({"DROP DATABASE \"odd 'na%me\\; \""});
}

/// Has a server of its own, which is gone afterwards.
class ServerStopTest : public PostgresqlFaultTest {};

TEST_F(ServerStopTest, ServerStoppedInMidRead) {
  Save();
  const CProxy proxy(kInMidRead, [] {
    test::Run({"/usr/bin/pg_ctlcluster", std::getenv("PGVERSION"), "regress", "stop", "--mode", "immediate"});
    return true;
  });
  ExpectOneLine(LoadError(proxy.Words()), kvx::kFileError,
                "table meta_class_properties cannot be read: the connection was lost: ", "check the server, then");
  EXPECT_TRUE(proxy.HasInterrupted());
  ExpectOneLine(LoadError(""), kvx::kFileError, "cannot be opened: ", "check that the server runs");
}

}  // namespace
}  // namespace test
