#include "metareview2024/words/Verdict.h"

#include <array>

#include "metareview2024/Totals.h"

namespace metareview {

namespace {

struct SVerdictWords {
  std::size_t number;
  std::string_view key;
};

}  // namespace

Sentence VerdictSentence(const CWords& words, const SReview& review) {
  if (!review.complete) {
    return AsWords(words.Text("verdict.failed"));
  }
  const SVerdict verdict = CountVerdict(review);
  // The first that is not 0.
  const std::array<SVerdictWords, 3> kinds = {
      {{verdict.decide, "verdict.decide"}, {verdict.attention, "verdict.look"}, {verdict.safe, "verdict.safe"}}};
  for (const SVerdictWords& kind : kinds) {
    if (kind.number != 0) {
      return FillIn(words.Text(kind.key, kind.number),
                    [&](std::string_view) { return AsWords(words.Number(kind.number)); });
    }
  }
  return AsWords(words.Text(verdict.accepted != 0 ? "verdict.accepted" : "verdict.equal"));
}

}  // namespace metareview
