#include "metareview2024/render/page/ValueCells.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "metareview2024/render/ShownText.h"

namespace metareview::page {

namespace {

enum class EPresence { kAbsent, kPresent, kChanged };

/// A word for a side that has no value of its own to show.
SValueCell WordCell(const CWords& words, std::string_view key, bool isMarked) {
  SValueCell cell;
  cell.isWord = true;
  (isMarked ? cell.marked : cell.before) = words.Text("page.value." + std::string(key));
  return cell;
}

SValueCell PresenceCell(const CWords& words, EPresence presence, bool isMarked) {
  const std::array<std::string_view, 3> keys = {"absent", "present", "changed"};
  return WordCell(words, keys[static_cast<std::size_t>(presence)], isMarked);
}

/// What is there as a whole or not: the origin tells what the base has.
std::vector<SValueCell> PresenceCells(const CWords& words, const SFinding& finding, bool hasBase) {
  const bool isInserted = finding.change == EChange::kInserted;
  const EOrigin whoHasItAlone = isInserted ? EOrigin::kCustomer : EOrigin::kVendor;
  const bool isInBase = finding.origin != whoHasItAlone;
  const EPresence base = isInBase ? EPresence::kPresent : EPresence::kAbsent;
  const EPresence there = finding.origin == EOrigin::kBoth ? EPresence::kChanged : EPresence::kPresent;
  const EPresence original = isInserted ? EPresence::kAbsent : there;
  const EPresence client = isInserted ? there : EPresence::kAbsent;
  if (!hasBase) {
    return {PresenceCell(words, original, !isInserted), PresenceCell(words, client, isInserted)};
  }
  return {PresenceCell(words, base, false), PresenceCell(words, original, original != base),
          PresenceCell(words, client, client != base)};
}

/// Whether a value is marked as a whole, and not only the characters in which it differs: a number is another number.
bool IsWholeValue(EAttribute attribute) {
  constexpr std::array<EAttribute, 5> kTexts = {EAttribute::kInternalName, EAttribute::kDisplayName,
                                                EAttribute::kTableName, EAttribute::kField,
                                                EAttribute::kLookupInternalName};
  return std::find(std::begin(kTexts), std::end(kTexts), attribute) == std::end(kTexts);
}

std::string ValueText(const Value& value) {
  const auto* number = std::get_if<std::uint32_t>(&value);
  return number != nullptr ? std::to_string(*number) : std::get<std::string>(value);
}

bool IsInsideCharacter(const std::string& text, std::size_t position) {
  return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U;
}

/// Marks the characters of `text` that are not also at the beginning or the end of `other`; all where none are left.
SValueCell MarkedCell(const std::string& text, const std::string& other) {
  const std::size_t shorter = std::min(text.size(), other.size());
  const auto firstDifference =
      std::mismatch(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(shorter), other.begin());
  auto beginning = static_cast<std::size_t>(firstDifference.first - text.begin());
  while (beginning > 0 && IsInsideCharacter(text, beginning)) {
    --beginning;
  }
  const auto lastDifference =
      std::mismatch(text.rbegin(), text.rbegin() + static_cast<std::ptrdiff_t>(shorter - beginning), other.rbegin());
  std::size_t end = text.size() - static_cast<std::size_t>(lastDifference.first - text.rbegin());
  while (IsInsideCharacter(text, end)) {
    ++end;
  }
  if (beginning == end) {
    beginning = 0;
    end = text.size();
  }
  SValueCell cell;
  cell.before = ShownText(std::string_view(text).substr(0, beginning));
  cell.marked = ShownText(std::string_view(text).substr(beginning, end - beginning));
  cell.after = ShownText(std::string_view(text).substr(end));
  return cell;
}

SValueCell ValueCell(const CWords& words, const SFinding& finding, const std::optional<Value>& value,
                     const std::optional<Value>* compared) {
  const bool isMarked = compared != nullptr && value != *compared;
  if (!value.has_value()) {
    return WordCell(words, "absent", isMarked);
  }
  const std::string text = ValueText(*value);
  if (text.empty()) {
    return WordCell(words, "empty", isMarked);
  }
  if (isMarked) {
    const bool isWhole = IsWholeValue(finding.attribute) || !compared->has_value();
    return MarkedCell(text, isWhole ? std::string() : ValueText(**compared));
  }
  SValueCell cell;
  cell.before = ShownText(text);
  return cell;
}

std::vector<SValueCell> AttributeCells(const CWords& words, const SFinding& finding, bool hasBase) {
  if (!hasBase) {
    return {ValueCell(words, finding, finding.original, &finding.client),
            ValueCell(words, finding, finding.client, &finding.original)};
  }
  return {ValueCell(words, finding, finding.base, nullptr), ValueCell(words, finding, finding.original, &finding.base),
          ValueCell(words, finding, finding.client, &finding.base)};
}

}  // namespace

std::vector<SValueCell> ValueCells(const CWords& words, const SFinding& finding, bool hasBase) {
  std::vector<SValueCell> cells = finding.change == EChange::kChanged ? AttributeCells(words, finding, hasBase)
                                                                      : PresenceCells(words, finding, hasBase);
  const std::array<std::string_view, 3> sides = {"client", "original", "base"};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    cells[cells.size() - 1 - i].side = sides[i];
  }
  return cells;
}

}  // namespace metareview::page
