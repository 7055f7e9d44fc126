#include "metareview2024/data/Lookups.h"

#include <algorithm>
#include <array>
#include <list>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/Path.h"
#include "metareview2024/data/NumericTypes.h"
#include "metareview2024/rules/Number.h"
#include "upgrademeta2024/MetaDictionary2024.h"

namespace metareview {
namespace {

using Texts = std::vector<std::string>;

std::string Lower(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

/// Each once, ASCII case ignored, in its first spelling.
class CUniqueTexts {
 public:
  void Add(const std::string& text) {
    if (seen_.insert(Lower(text)).second) {
      texts_.push_back(text);
    }
  }
  const Texts& Get() const { return texts_; }

 private:
  Texts texts_;
  std::unordered_set<std::string> seen_;
};

std::string TextOf(const Value& value) {
  const std::string* const text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : std::to_string(std::get<std::uint32_t>(value));
}

// What limits the original sets; nothing where it sets none that a stored value could be held against.

using Limit = std::optional<std::string>;

Limit None(const SFinding& /*finding*/) {
  return "";
}

Limit Characters(const SFinding& finding) {
  constexpr std::array<std::string_view, 6> kTexts = {"string", "text", "url", "e-mail", "ip_address", "password"};
  const bool isText = std::find(kTexts.begin(), kTexts.end(), finding.type.value_or("")) != kTexts.end();
  return isText ? Limit(TextOf(*finding.original)) : std::nullopt;
}

Limit Places(const SFinding& finding) {
  return TextOf(*finding.original);
}

Limit TypeName(const SFinding& finding) {
  const std::string type = TextOf(*finding.original);
  const bool isNumeric = IsNumericType(TextOf(*finding.client)) && IsNumericType(type);
  return isNumeric ? Limit(type) : std::nullopt;
}

Limit Number(const SFinding& finding) {
  const std::string text = TextOf(*finding.original);
  return CompareNumbers(text, "0") ? Limit(text) : std::nullopt;
}

/// The columns that a lookup is about.
enum class EColumns {
  kNone,
  /// That of the client's property.
  kField,
  /// The client's value, where it is the column that differs.
  kClientField,
  /// Those of all properties of the client's behavior.
  kBehavior
};

struct SRow {
  std::string_view rule;
  EMeasure measure;
  EColumns columns;
  Limit (*getLimit)(const SFinding&);
  bool restrictsEntering;
};

constexpr std::array<SRow, 12> kRows = {{
    {"length-shrinks", EMeasure::kLongerThan, EColumns::kField, Characters, true},
    {"precision-shrinks", EMeasure::kRounded, EColumns::kField, Places, true},
    {"type-narrowed", EMeasure::kOutsideType, EColumns::kField, TypeName, true},
    {"max-tightens", EMeasure::kAbove, EColumns::kField, Number, true},
    {"min-tightens", EMeasure::kBelow, EColumns::kField, Number, true},
    {"table-moved", EMeasure::kAnyRow, EColumns::kNone, None, false},
    {"class-withdrawn", EMeasure::kAnyRow, EColumns::kNone, None, false},
    {"link-withdrawn", EMeasure::kAnyRow, EColumns::kNone, None, false},
    {"field-moved", EMeasure::kNotNull, EColumns::kClientField, None, false},
    {"property-withdrawn", EMeasure::kNotNull, EColumns::kField, None, false},
    {"behavior-columns-withdrawn", EMeasure::kNotNull, EColumns::kBehavior, None, false},
    {"listed-behavior-columns-withdrawn", EMeasure::kNotNull, EColumns::kBehavior, None, false},
}};

const SRow* FindRow(std::string_view rule) {
  const auto* const found =
      std::find_if(kRows.begin(), kRows.end(), [rule](const SRow& row) { return row.rule == rule; });
  return found != kRows.end() ? found : nullptr;
}

/// The columns of an element's properties.
class CFields {
 public:
  explicit CFields(const std::list<std::shared_ptr<CMetaProperty2024>>& properties) {
    for (const std::shared_ptr<CMetaProperty2024>& property : properties) {
      byName_.emplace(Lower(property->GetInternalName()), property->GetField());
      all_.Add(property->GetField());
    }
  }

  const Texts& All() const { return all_.Get(); }
  /// Empty where there is no such property.
  std::string Of(const std::string& property) const {
    const auto found = byName_.find(Lower(property));
    return found != byName_.end() ? found->second : std::string();
  }

 private:
  std::unordered_map<std::string, std::string> byName_;
  CUniqueTexts all_;
};

class CLookupMaker {
 public:
  explicit CLookupMaker(const CMetaDictionary2024& client) : client_(client) {
    for (const auto& element : client.GetClasses()) {
      AddListing(*element);
    }
    for (const auto& element : client.GetLinks()) {
      AddListing(*element);
    }
  }

  void Add(std::size_t index, const SFinding& finding) {
    const SRow* const row = FindRow(finding.rule->name);
    const Limit limit = row != nullptr ? row->getLimit(finding) : std::nullopt;
    const std::optional<SPath> path = ParsePath(finding.path);
    if (!limit || !path) {
      return;
    }
    const Texts tables = TablesOf(*path);
    if (tables.empty()) {
      result_.nowhere.push_back(index);
      return;
    }
    const Texts columns = ColumnsOf(row->columns, finding, *path);
    if (const std::string problem = ProblemOf(row->columns, tables, columns); !problem.empty()) {
      result_.problems.push_back({index, problem});
      return;
    }
    for (const std::string& table : tables) {
      result_.lookups.push_back({index, finding.path, row->rule, table, columns, row->measure, *limit});
    }
  }

  SLookups Take() { return std::move(result_); }

 private:
  void AddListing(const CMetaClass2024& element) {
    std::unordered_set<std::string> listed;
    for (const std::string& behavior : element.GetBehaviors()) {
      const std::string name = Lower(behavior);
      if (listed.insert(name).second) {
        listing_[name].Add(element.GetTableName());
      }
    }
  }

  std::shared_ptr<const CMetaClass2024> FindElement(const SPath& path) const {
    if (path.kind == EKind::kClass) {
      return client_.GetClass(path.element);
    }
    return client_.GetLink(path.element);
  }

  /// Those that hold values of what the path leads through.
  Texts TablesOf(const SPath& path) const {
    if (path.kind == EKind::kBehavior) {
      const auto found = listing_.find(Lower(path.element));
      return found != listing_.end() ? found->second.Get() : Texts();
    }
    const auto element = FindElement(path);
    return {element != nullptr ? element->GetTableName() : std::string()};
  }

  /// Findings about one element follow each other.
  const CFields& FieldsOf(EKind kind, const std::string& element) {
    if (!fields_ || fieldsOf_ != std::pair(kind, element)) {
      fieldsOf_ = {kind, element};
      fields_.emplace(PropertiesOf(kind, element));
    }
    return *fields_;
  }

  std::list<std::shared_ptr<CMetaProperty2024>> PropertiesOf(EKind kind, const std::string& name) const {
    const auto list = [](const auto& element) {
      return element != nullptr ? element->GetProperties() : std::list<std::shared_ptr<CMetaProperty2024>>();
    };
    switch (kind) {
      case EKind::kClass:
        return list(client_.GetClass(name));
      case EKind::kLink:
        return list(client_.GetLink(name));
      case EKind::kBehavior:
        break;
    }
    return list(client_.GetBehavior(name));
  }

  Texts ColumnsOf(EColumns columns, const SFinding& finding, const SPath& path) {
    switch (columns) {
      case EColumns::kNone:
        return {};
      case EColumns::kClientField:
        return {TextOf(*finding.client)};
      case EColumns::kField:
        return {FieldsOf(path.kind, path.element).Of(path.part)};
      case EColumns::kBehavior:
        break;
    }
    return FieldsOf(EKind::kBehavior, path.Name()).All();
  }

  static std::string ProblemOf(EColumns kind, const Texts& tables, const Texts& columns) {
    const auto isEmpty = [](const std::string& name) { return name.empty(); };
    if (std::any_of(tables.begin(), tables.end(), isEmpty)) {
      return "the client's metamodel names no table";
    }
    if (kind != EColumns::kNone && (columns.empty() || std::any_of(columns.begin(), columns.end(), isEmpty))) {
      return "the client's metamodel names no column";
    }
    return "";
  }

  const CMetaDictionary2024& client_;
  std::pair<EKind, std::string> fieldsOf_;
  std::optional<CFields> fields_;
  /// The tables of the classes and links that list a behavior, by its lower-cased name.
  std::unordered_map<std::string, CUniqueTexts> listing_;
  SLookups result_;
};

std::string Columns(const SLookup& lookup) {
  std::string text;
  for (const std::string& column : lookup.columns) {
    text += text.empty() ? "" : ", ";
    text += lookup.table;
    text += '.';
    text += column;
  }
  return text;
}

std::string Description(const SLookup& lookup) {
  switch (lookup.measure) {
    case EMeasure::kAnyRow:
      return "rows of " + lookup.table;
    case EMeasure::kNotNull:
      return lookup.columns.size() == 1 ? "values of " + Columns(lookup)
                                        : "rows with a value in at least one of " + Columns(lookup);
    case EMeasure::kLongerThan:
      return "values of " + Columns(lookup) + " longer than " + lookup.limit + " characters";
    case EMeasure::kRounded:
      return "values of " + Columns(lookup) + " that rounding to " + lookup.limit + " decimal places changes";
    case EMeasure::kOutsideType:
      return "values of " + Columns(lookup) + " that " + lookup.limit + " cannot hold";
    case EMeasure::kAbove:
      return "values of " + Columns(lookup) + " greater than " + lookup.limit;
    case EMeasure::kBelow:
      break;
  }
  return "values of " + Columns(lookup) + " less than " + lookup.limit;
}

}  // namespace

SLookups MakeLookups(const SReview& review, const CMetaDictionary2024& client) {
  CLookupMaker maker(client);
  for (std::size_t i = 0; i < review.findings.size(); ++i) {
    maker.Add(i, review.findings[i]);
  }
  return maker.Take();
}

std::string DescribeLookup(const SLookup& lookup) {
  return CStringHelper::ToVisible(Description(lookup));
}

bool RestrictsEntering(std::string_view rule) {
  const SRow* const row = FindRow(rule);
  return row != nullptr && row->restrictsEntering;
}

}  // namespace metareview
