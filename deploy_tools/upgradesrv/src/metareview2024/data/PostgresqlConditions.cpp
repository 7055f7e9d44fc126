#include "metareview2024/data/Conditions.h"
#include "metareview2024/data/NumericTypes.h"

namespace metareview {
namespace {

constexpr const char* kNumberPattern = "'^ *[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]{1,3})? *$'";

// The greatest whole number less than 2^63 that float64 holds.
constexpr const char* kGreatestWhole = "9223372036854774784";
constexpr const char* kPower63 = "9223372036854775808";

std::string Text(const std::string& column) {
  return column + "::text";
}

/// The number that the value shows as text; NULL for one that is no number. A cast could fail, and the order of AND is
/// not certain: that of CASE is.
std::string NumberOfText(const std::string& column) {
  const std::string text = Text(column);
  return "(CASE WHEN octet_length(" + text + ") > 1000 THEN NULL WHEN " + text + " ~ " + kNumberPattern + " THEN " +
         text + "::numeric WHEN " + text + " IN ('Infinity', 'NaN') THEN 1e400 WHEN " + text +
         " = '-Infinity' THEN -1e400 END)";
}

/// What a float32 is shown as is the number that is meant: as a float64 it has digits that nobody has entered.
std::string Number(const std::string& column, EColumnKind kind) {
  return kind == EColumnKind::kAny || kind == EColumnKind::kSingle ? NumberOfText(column) : column;
}

/// Bytes, which are counted faster, are never fewer than characters.
std::string IsLonger(const std::string& column, const std::string& limit) {
  return "octet_length(" + Text(column) + ") > " + limit + " AND char_length(" + Text(column) + ") > " + limit;
}

std::string IsRounded(const std::string& column, EColumnKind kind, const std::string& places) {
  if (kind == EColumnKind::kInteger) {
    return "false";
  }
  // Of a floating point number those digits count that it is shown with.
  const std::string number = kind == EColumnKind::kFloat ? NumberOfText(column) : Number(column, kind);
  return number + " <> round(" + number + ", " + places + ")";
}

/// Whether a float64 has more digits than float32: 29 of its 53 are cut off by way of a greater number.
std::string HasDigitsOfFloat64(const std::string& number) {
  const std::string greater = number + " * 536870913";
  return greater + " - (" + greater + " - " + number + ") <> " + number;
}

std::string IsOutsideFloat32(const std::string& number) {
  return "abs(" + number + ") NOT BETWEEN " + kLeastFloat32 + " AND " + kGreatestFloat32;
}

/// `digits` are those of the floating point type.
std::string IsIntegerOutsideFloat(const std::string& column, int digits) {
  const std::string real = column + "::float8";
  return "CASE WHEN " + real + " >= " + kPower63 + " THEN true WHEN " + real + "::int8 <> " + column +
         " THEN true ELSE " + (digits == 53 ? "false" : HasDigitsOfFloat64(real)) + " END";
}

std::string IsFloat64OutsideFloat32(const std::string& column) {
  const std::string real = column + "::float8";
  return "CASE WHEN " + real + " IN (0, 'Infinity', '-Infinity', 'NaN') THEN false WHEN " + IsOutsideFloat32(real) +
         " THEN true ELSE " + HasDigitsOfFloat64(real) + " END";
}

std::string IsDecimalOutsideFloat(const std::string& number, int digits) {
  const std::string real = number + "::float8";
  const std::string isOtherWhole = number + "::int8::float8::int8 <> " + number;
  const std::string begin = "CASE WHEN " + number + " IN (0, -" + kPower63 + ") THEN false WHEN ";
  if (digits == 53) {
    return begin + "abs(" + number + ") NOT BETWEEN 1e-300 AND " + kGreatestWhole + " THEN true WHEN " + number +
           " = trunc(" + number + ") THEN " + isOtherWhole + " ELSE " + real + "::text::numeric <> " + number + " END";
  }
  return begin + IsOutsideFloat32(number) + " THEN true WHEN " + HasDigitsOfFloat64(real) + " THEN true WHEN " +
         number + " <> trunc(" + number + ") THEN false WHEN abs(" + number + ") > " + kGreatestWhole + " THEN abs(" +
         number + ") < " + kPower63 + " ELSE " + isOtherWhole + " END";
}

std::string IsOutside(const std::string& column, EColumnKind kind, const std::string& typeName) {
  const SNumericType& type = NumericType(typeName);
  const std::string number = Number(column, kind);
  if (type.IsWhole()) {
    const std::string beyond =
        number + " < " + std::string(type.least) + " OR " + number + " >= " + std::string(type.tooGreat);
    return kind == EColumnKind::kInteger ? beyond : beyond + " OR " + number + " <> trunc(" + number + ")";
  }
  switch (kind) {
    case EColumnKind::kInteger:
      return IsIntegerOutsideFloat(column, type.digits);
    case EColumnKind::kFloat:
      return type.digits == 53 ? "false" : IsFloat64OutsideFloat32(column);
    case EColumnKind::kSingle:
      return "false";
    default:
      return IsDecimalOutsideFloat(number, type.digits);
  }
}

std::string NumberCondition(const std::string& column, EColumnKind kind, EMeasure measure, const std::string& limit) {
  switch (measure) {
    case EMeasure::kRounded:
      return IsRounded(column, kind, limit);
    case EMeasure::kOutsideType:
      return IsOutside(column, kind, limit);
    case EMeasure::kBelow:
      return Number(column, kind) + " < " + limit;
    default:
      return Number(column, kind) + " > " + limit;
  }
}

}  // namespace

SCondition PostgresqlCondition(const std::string& column, EColumnKind kind, EMeasure measure,
                               const std::string& limit) {
  if (measure == EMeasure::kLongerThan) {
    return {IsLonger(column, limit), ""};
  }
  return {NumberCondition(column, kind, measure, limit),
          kind == EColumnKind::kAny ? Text(column) + " <> '' AND " + NumberOfText(column) + " IS NULL" : ""};
}

}  // namespace metareview
