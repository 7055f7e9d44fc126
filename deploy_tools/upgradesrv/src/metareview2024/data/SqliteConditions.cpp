#include "metareview2024/data/Conditions.h"
#include "metareview2024/data/NumericTypes.h"

namespace metareview {
namespace {

// A value that is compared with a number of this kind is taken for a number if it looks like one, whatever the type of
// its column; otherwise it is greater than every number.
std::string Numeric(const std::string& number) {
  return "CAST(" + number + " AS NUMERIC)";
}

std::string IsNumber(const std::string& column) {
  return column + " <= " + Numeric("9e999");
}

/// length() sees nothing behind a NUL character: a text with one counts by its bytes.
std::string IsLonger(const std::string& column, const std::string& limit) {
  const std::string text = "CAST(" + column + " AS TEXT)";
  return "length(CAST(" + column + " AS BLOB)) > " + limit + " AND (length(" + text + ") > " + limit + " OR instr(" +
         text + ", char(0)) > 0)";
}

/// Whole numbers have no digits to lose, and as floating point numbers some would. Of a floating point number that is
/// so great that its last digits are beyond the places nothing is lost either.
std::string IsRounded(const std::string& column, const std::string& places) {
  const std::string number = Numeric(column);
  const std::string begin = "CASE WHEN ";
  const std::string end = "typeof(" + number + ") <> 'real' OR abs(" + number + ") >= 9007199254740992e-" + places +
                          " THEN 0 ELSE " + number + " <> round(" + number + ", " + places + ") END";
  // Powers of ten are exact as far as this one.
  constexpr std::size_t kMostPlaces = 22;
  if (places.size() > 2 || std::stoul(places) > kMostPlaces) {
    return begin + end;
  }
  // Adding 1.5 * 2^52 leaves the nearest whole number of units of the last place, and the quotient is the number next
  // to that decimal: what is left as it was has no more places. What changes and is small has more. round() takes
  // several times as long.
  const std::string power = "1e" + places;
  const std::string small = "1125899906842624e-" + places;
  return "(" + column + " * " + power + " + 6755399441055744.0 - 6755399441055744.0) / " + power + " - " + column +
         " <> 0 AND " + begin + column + " BETWEEN " + Numeric("-" + small) + " AND " + Numeric(small) +
         " THEN 1 WHEN " + end;
}

/// 29 of the 53 digits of the number are cut off by way of a greater one.
std::string IsOutsideFloat32(const std::string& column) {
  const std::string real = "CAST(" + column + " AS REAL)";
  const std::string greater = real + " * 536870913.0";
  return "CASE WHEN " + real + " = 0 OR abs(" + real + ") > 1.7976931348623157e308 THEN 0 WHEN abs(" + real +
         ") NOT BETWEEN " + kLeastFloat32 + " AND " + kGreatestFloat32 + " THEN 1 ELSE " + greater + " - (" + greater +
         " - " + real + ") <> " + real + " OR " + real + " <> " + Numeric(column) + " END";
}

std::string IsOutside(const std::string& column, const std::string& typeName) {
  const SNumericType& type = NumericType(typeName);
  if (!type.IsWhole()) {
    return type.digits == 53 ? "CAST(" + column + " AS REAL) <> " + Numeric(column) : IsOutsideFloat32(column);
  }
  return column + " < " + Numeric(std::string(type.least)) + " OR " + column +
         " >= " + Numeric(std::string(type.tooGreat)) + " OR " + column + " <> CAST(" + Numeric(column) +
         " AS INTEGER)";
}

std::string NumberCondition(const std::string& column, EMeasure measure, const std::string& limit) {
  switch (measure) {
    case EMeasure::kRounded:
      return IsRounded(column, limit);
    case EMeasure::kOutsideType:
      return IsOutside(column, limit);
    case EMeasure::kBelow:
      return column + " < " + Numeric(limit);
    default:
      return column + " > " + Numeric(limit);
  }
}

}  // namespace

SCondition SqliteCondition(const std::string& column, EMeasure measure, const std::string& limit) {
  if (measure == EMeasure::kLongerThan) {
    return {IsLonger(column, limit), ""};
  }
  // Few values get as far as the second condition.
  return {"(" + NumberCondition(column, measure, limit) + ") AND " + IsNumber(column),
          "NOT " + IsNumber(column) + " AND " + column + " <> ''"};
}

}  // namespace metareview
