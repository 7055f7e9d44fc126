#include "metareview2024/data/CountFixture.h"

using metareview::EMeasure;
using metareview::SCount;
using metareview::SLookup;

namespace test {

SLookup AnyRow(std::size_t finding, const std::string& table) {
  return {finding, "class/P" + std::to_string(finding), "class-withdrawn", table, {}, EMeasure::kAnyRow, ""};
}

SLookup Longer(std::size_t finding, const std::string& table, const std::string& column) {
  return {finding, "class/P" + std::to_string(finding), "length-shrinks", table, {column}, EMeasure::kLongerThan, "3"};
}

std::vector<std::string> Texts(const std::vector<SCount>& counts) {
  std::vector<std::string> texts;
  for (const SCount& count : counts) {
    std::string text = std::to_string(count.finding) + ": " + std::to_string(count.data.rows) + " of " +
                       std::to_string(count.data.of) + " in";
    for (const std::string& table : count.data.tables) {
      text += " " + table;
    }
    texts.push_back(text + (count.data.problem.empty() ? "" : "; " + count.data.problem));
  }
  return texts;
}

std::vector<std::string> Count(const std::string& location, const std::vector<SLookup>& lookups,
                               std::chrono::milliseconds limit, const metareview::CountObserver& observer) {
  return Texts(CountStored(location, {lookups, {}, {}}, limit, observer).counts);
}

void CCountFixture::MakeTable(const std::string& name, int rows) {
  const std::string quoted = metareview::QuoteIdentifier(name);
  database_.Query("CREATE TABLE " + quoted + " (\"V\" text)");
  for (int i = 0; i < rows; ++i) {
    database_.Query("INSERT INTO " + quoted + " VALUES ('abcd')");
  }
}

std::vector<std::string> CCountFixture::CountHere(const std::vector<SLookup>& lookups) {
  database_.Disconnect();
  return Count(database_.Location(), lookups);
}

void CRoleFixture::TearDown() {
  if (isRoleMade_) {
    database_.Query("DROP OWNED BY " + Role());
    database_.Query("DROP ROLE " + Role());
  }
}

std::string CRoleFixture::Role() {
  return "role_" + Schema();
}

std::string CRoleFixture::LocationOfRole() {
  database_.Query("CREATE ROLE " + Role() + " LOGIN PASSWORD 'secret'");
  isRoleMade_ = true;
  database_.Query("GRANT USAGE ON SCHEMA " + Schema() + " TO " + Role());
  return database_.Storage().LocationWith("user=" + Role() + " password=secret");
}

}  // namespace test
