#include "metareview2024/rules/TypeChange.h"

#include <algorithm>
#include <vector>

namespace metareview {
namespace {

using Types = std::vector<std::string_view>;

/// Each of the client's types against each of the original's.
struct SRow {
  ETypeChange change;
  Types client;
  Types original;
};

const std::vector<SRow>& Rows() {
  static const std::vector<SRow> rows = {
      {ETypeChange::kWidened, {"int8"}, {"int16", "int32", "int64"}},
      {ETypeChange::kWidened, {"int16"}, {"int32", "int64"}},
      {ETypeChange::kWidened, {"int32"}, {"int64"}},
      {ETypeChange::kWidened, {"float32"}, {"float64"}},
      {ETypeChange::kWidened, {"int8", "int16"}, {"float32", "float64"}},
      {ETypeChange::kWidened, {"int32"}, {"float64"}},
      {ETypeChange::kWidened, {"string"}, {"text"}},
      {ETypeChange::kWidened, {"date"}, {"datetime"}},

      {ETypeChange::kNarrowed, {"int64"}, {"int32", "int16", "int8"}},
      {ETypeChange::kNarrowed, {"int32"}, {"int16", "int8"}},
      {ETypeChange::kNarrowed, {"int16"}, {"int8"}},
      {ETypeChange::kNarrowed, {"float64"}, {"float32"}},
      {ETypeChange::kNarrowed, {"float32", "float64"}, {"int8", "int16", "int32", "int64"}},
      {ETypeChange::kNarrowed, {"int32"}, {"float32"}},
      {ETypeChange::kNarrowed, {"int64"}, {"float32", "float64"}},
      {ETypeChange::kNarrowed, {"text"}, {"string"}},
      {ETypeChange::kNarrowed, {"datetime"}, {"date", "time"}},
      {ETypeChange::kNarrowed, {"money"}, {"int8", "int16", "int32", "int64"}},
      {ETypeChange::kNarrowed, {"lookup"}, {"string", "text"}},

      {ETypeChange::kRelaxed, {"url", "e-mail", "ip_address"}, {"string", "text"}},
  };
  return rows;
}

bool Has(const Types& types, std::string_view type) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

}  // namespace

std::optional<ETypeChange> TypeChangeOf(std::string_view client, std::string_view original) {
  const auto found = std::find_if(Rows().begin(), Rows().end(), [&](const SRow& row) {
    return Has(row.client, client) && Has(row.original, original);
  });
  if (found == Rows().end()) {
    return std::nullopt;
  }
  return found->change;
}

}  // namespace metareview
