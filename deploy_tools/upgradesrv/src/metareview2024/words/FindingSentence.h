#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "metareview2024/Decision.h"
#include "metareview2024/Finding.h"
#include "metareview2024/Review.h"
#include "metareview2024/words/Sentence.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// Says in plain sentences what the findings of a review mean. Words and review must stay.
class CFindingSentences {
 public:
  CFindingSentences(const CWords& words, const SReview& review);

  /// What happens, how many stored values it touches, and what else there is to say, in this order.
  Sentence Of(const SFinding& finding) const;

  /// The decision at the finding's path that is about other values; null where there is none.
  const SOutdated* FindOutdated(const SFinding& finding) const;
  /// The decision for the finding whose day has passed; null where there is none.
  const SDecision* FindExpired(const SFinding& finding) const;

 private:
  const CWords& words_;
  // By the id of a finding at their path.
  std::unordered_map<std::uint64_t, const SOutdated*> outdated_;
  std::unordered_map<std::uint64_t, const SDecision*> expired_;
  // Those with a "*" in their path.
  std::vector<const SDecision*> expiredPatterns_;
};

/// A value as it is stored, or the word for an empty one.
Sentence ValueWords(const CWords& words, const Value& value);

/// Who accepted a finding, until when, and why.
Sentence AcceptanceSentence(const CWords& words, const SAcceptance& acceptance);

/// One sentence after the other, as the language writes them.
Sentence JoinSentences(const CWords& words, const std::vector<Sentence>& sentences);

/// What is listed, separated as the language does.
Sentence JoinList(const CWords& words, const std::vector<Sentence>& items);

}  // namespace metareview
