#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "metareview2024/data/CountStored.h"
#include "metareview2024/data/StoredDatabase.h"

using metareview::EMeasure;
using metareview::SLookup;
using test::EStorage;

// Tables of generated values, counted by the databases and, without a database, here.
namespace {

/// A decimal number of four places, as a whole number of ten thousandths; nothing for NULL.
using Number = std::optional<std::int64_t>;

constexpr std::int64_t kOne = 10000;

std::string TextOf(std::int64_t number) {
  const std::uint64_t size = number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  std::string places = std::to_string(kOne + static_cast<std::int64_t>(size % kOne)).substr(1);
  places.erase(places.find_last_not_of('0') + 1);
  return (number < 0 ? "-" : "") + std::to_string(size / kOne) + (places.empty() ? "" : "." + places);
}

/// Numbers around the ends of types, and others.
std::int64_t AnyNumber() {
  const auto end = *rc::gen::element<std::int64_t>(0, 100, 128, -128, 32768, -32768, 2147483648, -2147483648, 16777216);
  const auto places = *rc::gen::element<std::int64_t>(1, 10, 100, 1000, kOne, kOne, kOne);
  return end * kOne + *rc::gen::inRange<std::int64_t>(-3, 4) * places;
}

std::vector<Number> AnyNumbers() {
  std::vector<Number> numbers;
  const int count = *rc::gen::inRange(0, 40);
  for (int i = 0; i < count; ++i) {
    numbers.push_back(*rc::gen::inRange(0, 6) == 0 ? Number() : Number(AnyNumber()));
  }
  return numbers;
}

struct SAsked {
  EMeasure measure;
  std::string limit;
  std::function<bool(std::int64_t)> isTouched;
};

std::function<bool(std::int64_t)> OutsideWhole(std::int64_t least, std::int64_t greatest) {
  return [=](std::int64_t number) { return number < least * kOne || number > greatest * kOne || number % kOne != 0; };
}

SAsked AnyQuestion() {
  const std::int64_t limit = AnyNumber();
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      return {EMeasure::kAbove, TextOf(limit), [limit](std::int64_t number) { return number > limit; }};
    case 1:
      return {EMeasure::kBelow, TextOf(limit), [limit](std::int64_t number) { return number < limit; }};
    case 2: {
      const int places = *rc::gen::inRange(0, 6);
      std::int64_t step = kOne;
      for (int i = 0; i < places; ++i) {
        step = step > 1 ? step / 10 : 1;
      }
      return {EMeasure::kRounded, std::to_string(places), [step](std::int64_t number) { return number % step != 0; }};
    }
    default:
      break;
  }
  switch (*rc::gen::inRange(0, 3)) {
    case 0:
      return {EMeasure::kOutsideType, "int8", OutsideWhole(-128, 127)};
    case 1:
      return {EMeasure::kOutsideType, "int16", OutsideWhole(-32768, 32767)};
    default:
      return {EMeasure::kOutsideType, "int32", OutsideWhole(-2147483648, 2147483647)};
  }
}

struct SCounted {
  std::uint64_t rows = 0;
  std::uint64_t of = 0;
  std::string problem;
};

class GeneratedCountsTest : public testing::TestWithParam<EStorage> {
 protected:
  /// What is counted of the values, which are written as SQL, in a column of the type.
  SCounted Count(const std::string& type, const std::vector<std::string>& values, const SLookup& lookup) {
    database_.Query("DROP TABLE IF EXISTS \"T\"");
    database_.Query("CREATE TABLE \"T\" (\"V\" " + type + ")");
    std::string rows;
    for (const std::string& value : values) {
      rows += (rows.empty() ? "(" : ", (") + value + ")";
    }
    if (!rows.empty()) {
      database_.Query("INSERT INTO \"T\" VALUES " + rows);
    }
    database_.Disconnect();
    const auto counts =
        metareview::CountStored(database_.Location(), {{lookup}, {}, {}}, std::chrono::seconds(30)).counts;
    RC_ASSERT(counts.size() == 1U);
    const metareview::SData& data = counts.front().data;
    return {data.rows, data.of, data.problem};
  }

  test::CStoredDatabase database_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Sqlite, GeneratedCountsTest, testing::Values(EStorage::kSqlite));
INSTANTIATE_TEST_SUITE_P(Postgresql, GeneratedCountsTest, testing::Values(EStorage::kPostgresql));

TEST_P(GeneratedCountsTest, NumbersAreCountedAsTheyAreHere) {
  EXPECT_TRUE(rc::check([this] {
    const std::vector<Number> numbers = AnyNumbers();
    const SAsked asked = AnyQuestion();
    const std::string type = *rc::gen::element<std::string>("numeric", "text", "double precision");
    std::vector<std::string> values;
    std::uint64_t touched = 0;
    for (const Number& number : numbers) {
      const std::string text = number ? TextOf(*number) : "NULL";
      values.push_back(type == "text" && number ? "'" + text + "'" : text);
      touched += number && asked.isTouched(*number) ? 1U : 0U;
    }
    const SCounted counted = Count(type, values, {0, "p", "r", "T", {"V"}, asked.measure, asked.limit});
    RC_ASSERT(counted.problem == "");
    RC_ASSERT(counted.of == numbers.size());
    RC_LOG() << type << " " << asked.limit << "\n";
    RC_ASSERT(counted.rows == touched);
  }));
}

TEST_P(GeneratedCountsTest, CharactersAreCountedAsTheyAreHere) {
  EXPECT_TRUE(rc::check([this] {
    const auto limit = *rc::gen::inRange<std::size_t>(0, 8);
    std::vector<std::string> values;
    std::uint64_t touched = 0;
    const int count = *rc::gen::inRange(0, 40);
    for (int i = 0; i < count; ++i) {
      const auto letters = *rc::gen::container<std::vector<std::string>>(
          rc::gen::element<std::string>("a", "ä", "字", "😀", " ", "%", "\\", "\n", "''"));
      std::string text = "'";
      for (const std::string& letter : letters) {
        text += letter;
      }
      values.push_back(text + "'");
      touched += letters.size() > limit ? 1U : 0U;
    }
    const SCounted counted =
        Count("text", values, {0, "p", "r", "T", {"V"}, EMeasure::kLongerThan, std::to_string(limit)});
    RC_ASSERT(counted.problem == "");
    RC_ASSERT(counted.of == values.size());
    RC_ASSERT(counted.rows == touched);
  }));
}

}  // namespace
