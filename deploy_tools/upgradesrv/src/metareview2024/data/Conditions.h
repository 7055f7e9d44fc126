#pragma once

#include <string>

#include "metareview2024/data/Sql.h"

namespace metareview {

struct SCondition {
  /// Whether a value is touched; of values that are no numbers it says nothing.
  std::string touched;
  /// Whether a value should be a number and is none; empty where there is no such value.
  std::string notNumber;
};

/// For the measures of one column but kNotNull. `column` is quoted.
SCondition SqliteCondition(const std::string& column, EMeasure measure, const std::string& limit);
SCondition PostgresqlCondition(const std::string& column, EColumnKind kind, EMeasure measure, const std::string& limit);

}  // namespace metareview
