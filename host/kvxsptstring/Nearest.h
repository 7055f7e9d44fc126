#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "kvxsptstring/kvxsptstring_export.h"

namespace kvx {

/// Finds what a mistyped text may have been meant to be. ASCII case is ignored. Near is what differs by at most two
/// bytes that are missing, too many or others, and more in a long text: a quarter of its bytes.
class KVXSPTSTRING_EXPORT CNearest {
 public:
  explicit CNearest(std::string_view text);

  void Offer(std::string_view candidate);

  /// "; did you mean X?" with the nearest candidate, the first of several; empty when none is near.
  std::string Question() const;

 private:
  std::string text_;
  std::size_t limit_;
  std::string nearest_;
};

/// The question about any candidate: nothing has to be near.
KVXSPTSTRING_EXPORT std::string DidYouMean(std::string_view candidate);

}  // namespace kvx
