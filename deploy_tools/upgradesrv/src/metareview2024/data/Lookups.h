#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/metareview2024_export.h"

class CMetaDictionary2024;

namespace metareview {

/// Which rows of a table a finding touches. NULL is never touched, nor is an empty text where numbers are looked at.
enum class EMeasure {
  /// Every row.
  kAnyRow,
  /// Rows in which at least one of the columns holds something.
  kNotNull,
  /// Values of more characters than the limit.
  kLongerThan,
  /// Numbers that change when they are rounded to as many decimal places as the limit says.
  kRounded,
  /// Numbers that the type, which the limit names, cannot hold as they are: beyond its range, or with digits for which
  /// it has no room.
  kOutsideType,
  /// Numbers greater than the limit, or less.
  kAbove,
  kBelow
};

/// What is counted in one table for one finding.
struct SLookup {
  /// The finding's place in SReview::findings.
  std::size_t finding = 0;
  std::string path;
  std::string_view rule;
  /// As the client's metamodel spells them. kAnyRow has no columns, kNotNull one or more, every other one.
  std::string table;
  std::vector<std::string> columns;
  EMeasure measure = EMeasure::kAnyRow;
  /// A number, the name of a type, or empty; see EMeasure.
  std::string limit;
};

/// Why nothing can be counted for a finding whose rule asks for it.
struct SNoLookup {
  std::size_t finding = 0;
  std::string problem;
};

/// What is to be counted for a review.
struct SLookups {
  /// In the order of findings. A finding about a behavior's properties has one for each table of the classes and links
  /// of the client that list the behavior; its counts are the sums.
  std::vector<SLookup> lookups;
  /// Findings about properties of behaviors that no class or link lists: no table holds values, so none is touched.
  std::vector<std::size_t> nowhere;
  /// Findings for which the metamodel does not say where the values are.
  std::vector<SNoLookup> problems;
};

/// The lookups for the findings of a review of `client`. Findings under rules of which nothing can be counted have
/// none.
METAREVIEW2024_EXPORT SLookups MakeLookups(const SReview& review, const CMetaDictionary2024& client);

/// What is counted, in English and on one line: "values of T_PART.F_CODE longer than 32 characters".
METAREVIEW2024_EXPORT std::string DescribeLookup(const SLookup& lookup);

/// Whether a finding of the rule changes what people may enter, not what is stored: with no stored value touched it
/// still asks for attention.
bool RestrictsEntering(std::string_view rule);

}  // namespace metareview
