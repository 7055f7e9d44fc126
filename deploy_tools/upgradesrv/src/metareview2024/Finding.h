#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "metareview2024/Rule.h"
#include "metareview2024/Terms.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// The value of an attribute: a number for class_id, length and precision, a text for every other.
using Value = std::variant<std::string, std::uint32_t>;

/// What holds already what an element or property is to be added with.
struct STaken {
  /// The path of the first holder.
  std::string by;
  /// Those that it holds, as it spells them.
  std::optional<std::uint32_t> classId;
  std::optional<std::string> tableName;
  std::optional<std::string> field;
};

/// How many stored values or rows a finding touches.
struct SData {
  /// With a problem, at least so many.
  std::uint64_t rows = 0;
  /// How many were looked at.
  std::uint64_t of = 0;
  /// Those that were counted; with a problem, none where nothing could be counted.
  std::vector<std::string> tables;
  /// Why nothing could be counted, or not everything; empty where everything was.
  std::string problem;
};

/// Whether `rows` and `of` say something; with a problem they may be too low.
inline bool HasCounts(const SData& data) {
  return data.problem.empty() || !data.tables.empty();
}

/// That somebody has accepted a finding, and why.
struct SAcceptance {
  std::string reason;
  std::optional<std::string> by;
  /// The last day, YYYY-MM-DD.
  std::optional<std::string> until;
};

inline bool operator==(const SAcceptance& a, const SAcceptance& b) {
  return a.reason == b.reason && a.by == b.by && a.until == b.until;
}

/// One difference between client and original. It holds all that it says by itself: one that was read from a saved
/// review is like one that was just made. Copies share what is behind pointers, which nobody changes.
struct SFinding {
  /// See FindingId().
  std::uint64_t id = 0;
  /// What Path.h takes apart; names are spelled as the client has them, else as the original.
  std::string path;
  EChange change = EChange::kChanged;
  /// As in the path.
  EKind kind = EKind::kClass;
  EThing thing = EThing::kClass;
  EAttribute attribute = EAttribute::kNone;
  /// Never null in a review.
  const SRule* rule = nullptr;
  ERisk risk = ERisk::kSafe;
  EOrigin origin = EOrigin::kUnknown;
  /// Whether the check's own report shows the difference.
  bool reported = false;
  std::optional<ESince> since;
  /// What the risk would be without looking at stored data; only where that changed it.
  std::optional<ERisk> riskWithoutData;

  /// Of the element, method or property that the path names or leads through last; none for a listed behavior.
  std::optional<std::string> displayName;
  /// Of the property that the path names or leads through.
  std::optional<std::string> type;

  /// The values of a changed attribute; all three are empty for what was inserted or deleted.
  std::optional<Value> base;
  std::optional<Value> original;
  std::optional<Value> client;

  /// Null where they do not apply.
  std::shared_ptr<const STaken> taken;
  std::shared_ptr<const SData> data;
  std::shared_ptr<const SAcceptance> accepted;
};

/// The first 64 bits of SHA-256 over the path with ASCII letters lower-cased, a line end, and the change.
METAREVIEW2024_EXPORT std::uint64_t FindingId(std::string_view path, EChange change);
/// As documents have it: 16 hexadecimal digits.
METAREVIEW2024_EXPORT std::string IdText(std::uint64_t id);

}  // namespace metareview
