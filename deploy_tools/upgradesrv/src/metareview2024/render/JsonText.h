#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kvxsptjson/JsonWriter.h"
#include "metareview2024/Review.h"

/// A saved review as JSON text, in parts; the formats that use it differ in where they break lines.
namespace metareview {

/// The format that a saved review says it has.
constexpr std::string_view kReviewFormat = "upgradesrv-review";

/// Writes findings one after the other into the same memory.
class CFindingJson {
 public:
  CFindingJson() : writer_(buffer_) {}

  /// An object without line ends; valid until the next call.
  std::string_view Of(const SFinding& finding);

 private:
  kvx::JsonTextBuffer buffer_;
  kvx::JsonWriter<kvx::JsonTextBuffer> writer_;
};

/// A member of the document besides its findings. Values and items are JSON text without line ends.
struct SJsonMember {
  std::string_view name;
  /// Empty for a list.
  std::string value;
  std::vector<std::string> items;
};

/// In the order of the document; of a review that failed there are only a few.
std::vector<SJsonMember> MembersBeforeFindings(const SReview& review);
std::vector<SJsonMember> MembersAfterFindings(const SReview& review);

}  // namespace metareview
