#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "metareview2024/metareview2024_export.h"

/// The words of a review and their spelling in documents and on the command line.
namespace metareview {

/// Kinds of elements, in the order in which a review lists them.
enum class EKind { kClass, kLink, kBehavior };
inline constexpr std::array kKinds = {EKind::kClass, EKind::kLink, EKind::kBehavior};

/// What a difference is about.
enum class EThing { kClass, kLink, kBehavior, kListedBehavior, kMethod, kProperty };

enum class EAttribute {
  /// The difference is about the whole thing.
  kNone,
  kInternalName,
  kDisplayName,
  kClassId,
  kTableName,
  kField,
  kType,
  kLength,
  kDefaultValue,
  kPrecision,
  kMax,
  kMin,
  kLookupInternalName
};

enum class EChange {
  /// Only the client has it.
  kInserted,
  /// Only the original has it.
  kDeleted,
  kChanged
};
inline constexpr std::array kChanges = {EChange::kInserted, EChange::kDeleted, EChange::kChanged};

/// Worst first.
enum class ERisk {
  /// Stored values may be lost or altered.
  kLoss,
  /// The upgrade, or saving afterwards, may be refused.
  kBlock,
  /// Something works differently afterwards.
  kAttention,
  /// Nothing stored is touched.
  kSafe
};
inline constexpr std::array kRisks = {ERisk::kLoss, ERisk::kBlock, ERisk::kAttention, ERisk::kSafe};

enum class EOrigin {
  /// There is no base.
  kUnknown,
  kCustomer,
  kVendor,
  /// A conflict: both sides changed it, differently.
  kBoth
};

/// A finding against an earlier review.
enum class ESince { kNew, kKnown, kChanged };

/// What an element of the kind is as a thing.
METAREVIEW2024_EXPORT EThing ThingOf(EKind kind);
/// Whether the attribute's values are numbers; those of others are texts.
METAREVIEW2024_EXPORT bool IsNumeric(EAttribute attribute);
/// The attributes that are compared, in the order of findings; none for a listed behavior.
METAREVIEW2024_EXPORT const std::vector<EAttribute>& AttributesOf(EThing thing);

METAREVIEW2024_EXPORT std::string_view NameOf(EKind kind);
/// "class", …, "listed-behavior", …: as names of rules begin.
METAREVIEW2024_EXPORT std::string_view NameOf(EThing thing);
/// Empty for kNone.
METAREVIEW2024_EXPORT std::string_view NameOf(EAttribute attribute);
METAREVIEW2024_EXPORT std::string_view NameOf(EChange change);
METAREVIEW2024_EXPORT std::string_view NameOf(ERisk risk);
METAREVIEW2024_EXPORT std::string_view NameOf(EOrigin origin);
METAREVIEW2024_EXPORT std::string_view NameOf(ESince since);

/// The word of that name, spelled exactly so; nothing for another name.
METAREVIEW2024_EXPORT std::optional<EKind> KindOf(std::string_view name);
METAREVIEW2024_EXPORT std::optional<EAttribute> AttributeOf(std::string_view name);
METAREVIEW2024_EXPORT std::optional<EChange> ChangeOf(std::string_view name);
METAREVIEW2024_EXPORT std::optional<ERisk> RiskOf(std::string_view name);
METAREVIEW2024_EXPORT std::optional<EOrigin> OriginOf(std::string_view name);
METAREVIEW2024_EXPORT std::optional<ESince> SinceOf(std::string_view name);

}  // namespace metareview
