#include "kvxsptstring/Nearest.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  CStringHelper::ToLower(lower);
  return lower;
}

/// How many bytes have to be inserted, removed or replaced to make one text of the other; anything above `limit` when
/// it is more than that.
std::size_t Distance(std::string_view a, std::string_view b, std::size_t limit) {
  if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > limit) {
    return limit + 1;
  }
  // A row of the usual table: the distances of a's first bytes from each beginning of b.
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    std::size_t least = row[0];
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
      least = std::min(least, row[j + 1]);
    }
    if (least > limit) {
      return limit + 1;
    }
  }
  return row.back();
}

}  // namespace

CNearest::CNearest(std::string_view text) : text_(LowerCase(text)), limit_(std::max<std::size_t>(2, text.size() / 4)) {}

void CNearest::Offer(std::string_view candidate) {
  if (candidate.empty()) {
    return;
  }
  // What shares nothing with the text is not near, however short both are.
  const std::size_t limit = std::min(limit_, std::max(text_.size(), candidate.size()) - 1);
  const std::size_t distance = Distance(text_, LowerCase(candidate), limit);
  if (distance <= limit && (nearest_.empty() || distance < limit_)) {
    nearest_ = candidate;
    limit_ = distance;
  }
}

std::string CNearest::Question() const {
  return nearest_.empty() ? "" : DidYouMean(nearest_);
}

std::string DidYouMean(std::string_view candidate) {
  return "; did you mean " + CStringHelper::ToVisible(std::string(candidate)) + "?";
}

}  // namespace kvx
