#include "metareview2024/words/RuleWords.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_map>

namespace metareview {

namespace {

bool IsText(const std::optional<Value>& value, std::string_view text) {
  return value.has_value() && std::holds_alternative<std::string>(*value) && std::get<std::string>(*value) == text;
}

template <std::size_t N>
bool IsOneOf(const std::optional<Value>& value, const std::array<std::string_view, N>& texts) {
  return std::any_of(texts.begin(), texts.end(), [&](std::string_view text) { return IsText(value, text); });
}

bool IsUnset(const std::optional<Value>& value) {
  return value == Value(std::string()) || value == Value(0U);
}

constexpr std::array<std::string_view, 4> kIntegers = {"int8", "int16", "int32", "int64"};
constexpr std::array<std::string_view, 2> kFloats = {"float32", "float64"};

bool BecomesInteger(const SFinding& finding) {
  return IsOneOf(finding.original, kIntegers);
}

const SVariant kPlain = {"", nullptr};
const SVariant kOriginBoth = {".both", [](const SFinding& finding) { return finding.origin == EOrigin::kBoth; }};
const SVariant kOriginUnknown = {".unknown",
                                 [](const SFinding& finding) { return finding.origin == EOrigin::kUnknown; }};
const SVariant kClientUnset = {".client-unset", [](const SFinding& finding) { return IsUnset(finding.client); }};
const SVariant kOriginalUnset = {".original-unset", [](const SFinding& finding) { return IsUnset(finding.original); }};
const SVariant kLookup = {".lookup",
                          [](const SFinding& finding) { return finding.attribute == EAttribute::kLookupInternalName; }};

// Types that become narrower.
const SVariant kIntegerToSmaller = {".integer-to-smaller", [](const SFinding& finding) {
                                      return IsOneOf(finding.client, kIntegers) && BecomesInteger(finding);
                                    }};
const SVariant kFloatToInteger = {".float-to-integer", [](const SFinding& finding) {
                                    return IsOneOf(finding.client, kFloats) && BecomesInteger(finding);
                                  }};
const SVariant kMoneyToInteger = {".money-to-integer",
                                  [](const SFinding& finding) { return IsText(finding.client, "money"); }};
const SVariant kNumberToLessExact = {".number-to-less-exact",
                                     [](const SFinding& finding) { return IsOneOf(finding.original, kFloats); }};
const SVariant kTextToString = {".text-to-string",
                                [](const SFinding& finding) { return IsText(finding.client, "text"); }};
const SVariant kDatetimeToDate = {".datetime-to-date",
                                  [](const SFinding& finding) { return IsText(finding.original, "date"); }};
const SVariant kDatetimeToTime = {".datetime-to-time",
                                  [](const SFinding& finding) { return IsText(finding.original, "time"); }};
const SVariant kLookupToText = {".lookup-to-text", nullptr};

constexpr bool kCounted = true;
constexpr bool kNotCounted = false;

using Variants = std::vector<const SVariant*>;

}  // namespace

const std::vector<SRuleWords>& AllRuleWords() {
  static const Variants plain = {&kPlain};
  static const Variants withdrawn = {&kOriginBoth, &kPlain};
  static const Variants deleted = {&kOriginBoth, &kOriginUnknown, &kPlain};
  static const Variants setOrUnset = {&kClientUnset, &kOriginalUnset};
  static const Variants setUnsetOrChanged = {&kClientUnset, &kOriginalUnset, &kPlain};
  static const Variants setOrChanged = {&kClientUnset, &kPlain};
  static const Variants unsetOrChanged = {&kOriginalUnset, &kPlain};
  static const Variants narrowed = {&kIntegerToSmaller, &kFloatToInteger, &kMoneyToInteger, &kNumberToLessExact,
                                    &kTextToString,     &kDatetimeToDate, &kDatetimeToTime, &kLookupToText};
  static const std::vector<SRuleWords> rules = {
      {"class-withdrawn", withdrawn, kCounted, nullptr},
      {"link-withdrawn", withdrawn, kCounted, nullptr},
      {"behavior-columns-withdrawn", withdrawn, kCounted, nullptr},
      {"behavior-withdrawn", withdrawn, kNotCounted, nullptr},
      {"listed-behavior-columns-withdrawn", plain, kCounted, nullptr},
      {"listed-behavior-withdrawn", plain, kNotCounted, nullptr},
      {"method-withdrawn", withdrawn, kNotCounted, nullptr},
      {"property-withdrawn", withdrawn, kCounted, nullptr},

      {"class-inserted", plain, kNotCounted, nullptr},
      {"link-inserted", plain, kNotCounted, nullptr},
      {"behavior-inserted", plain, kNotCounted, nullptr},
      {"listed-behavior-inserted", plain, kNotCounted, nullptr},
      {"method-inserted", plain, kNotCounted, nullptr},
      {"property-inserted", plain, kNotCounted, nullptr},

      {"class-identity-taken", plain, kNotCounted, nullptr},
      {"link-identity-taken", plain, kNotCounted, nullptr},
      {"property-field-taken", plain, kNotCounted, nullptr},

      {"class-new", plain, kNotCounted, nullptr},
      {"link-new", plain, kNotCounted, nullptr},
      {"behavior-new", plain, kNotCounted, nullptr},
      {"listed-behavior-new", plain, kNotCounted, nullptr},
      {"method-new", plain, kNotCounted, nullptr},
      {"property-new", plain, kNotCounted, nullptr},

      {"class-deleted", deleted, kNotCounted, nullptr},
      {"link-deleted", deleted, kNotCounted, nullptr},
      {"behavior-deleted", deleted, kNotCounted, nullptr},
      {"listed-behavior-deleted", {&kOriginUnknown, &kPlain}, kNotCounted, nullptr},
      {"method-deleted", deleted, kNotCounted, nullptr},
      {"property-deleted", deleted, kNotCounted, nullptr},

      {"spelling", {&kLookup, &kPlain}, kNotCounted, nullptr},
      {"display-name", setUnsetOrChanged, kNotCounted, nullptr},
      {"class-id", setUnsetOrChanged, kNotCounted, nullptr},
      {"table-moved", plain, kCounted, nullptr},
      {"table-unset", setOrUnset, kNotCounted, nullptr},
      {"field-moved", plain, kCounted, nullptr},
      {"field-unset", setOrUnset, kNotCounted, nullptr},
      {"lookup-moved", plain, kNotCounted, nullptr},
      {"lookup-unset", setOrUnset, kNotCounted, nullptr},
      {"type-widened", plain, kNotCounted, nullptr},
      {"type-narrowed", narrowed, kCounted, nullptr},
      {"type-relaxed", plain, kNotCounted, nullptr},
      {"type-changed", plain, kNotCounted, nullptr},
      {"follows-type", plain, kNotCounted, nullptr},
      {"length-unset", setOrUnset, kNotCounted, nullptr},
      {"length-shrinks", plain, kCounted, &SFinding::original},
      {"length-grows", plain, kNotCounted, nullptr},
      {"precision-shrinks", plain, kCounted, &SFinding::client},
      {"precision-takes-digits", plain, kNotCounted, &SFinding::original},
      {"precision-grows", plain, kNotCounted, &SFinding::client},
      {"same-number", plain, kNotCounted, nullptr},
      {"max-tightens", setOrChanged, kCounted, nullptr},
      {"max-relaxes", unsetOrChanged, kNotCounted, nullptr},
      {"min-tightens", setOrChanged, kCounted, nullptr},
      {"min-relaxes", unsetOrChanged, kNotCounted, nullptr},
      {"limit-unclear", plain, kNotCounted, nullptr},
      {"default-changes", setUnsetOrChanged, kNotCounted, nullptr},
  };
  return rules;
}

const SRuleWords* FindRuleWords(std::string_view rule) {
  static const std::unordered_map<std::string_view, const SRuleWords*> byName = [] {
    std::unordered_map<std::string_view, const SRuleWords*> names;
    for (const SRuleWords& words : AllRuleWords()) {
      names.emplace(words.rule, &words);
    }
    return names;
  }();
  const auto found = byName.find(rule);
  return found == byName.end() ? nullptr : found->second;
}

std::string HappensKey(const SRuleWords& words, const SFinding& finding) {
  const auto applies = [&](const SVariant* variant) { return variant->applies(finding); };
  const auto found = std::find_if(words.variants.begin(), std::prev(words.variants.end()), applies);
  return std::string(words.rule) + ".happens" + std::string((*found)->suffix);
}

}  // namespace metareview
