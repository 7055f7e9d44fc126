#include "metareview2024/words/DecisionSentence.h"

#include <string>

#include "metareview2024/words/FindingSentence.h"

namespace metareview {

Sentence OutdatedSentence(const CWords& words, const SOutdated& outdated) {
  const SDecision& decision = outdated.decision;
  return FillIn(words.Text("decision.outdated"),
                {{"path", AsValue(decision.path)},
                 {"accepted_client", ValueWords(words, decision.client.value_or(Value()))},
                 {"accepted_original", ValueWords(words, decision.original.value_or(Value()))},
                 {"client", ValueWords(words, outdated.client)},
                 {"original", ValueWords(words, outdated.original)},
                 {"reason", AsValue(decision.acceptance.reason)}});
}

Sentence ExpiredSentence(const CWords& words, const SDecision& expired) {
  return FillIn(words.Text("decision.expired"), {{"path", AsValue(expired.path)},
                                                 {"until", AsValue(expired.acceptance.until.value_or(""))},
                                                 {"reason", AsValue(expired.acceptance.reason)}});
}

Sentence StaleSentence(const CWords& words, const SDecision& stale) {
  return FillIn(words.Text("decision.stale"),
                {{"path", AsValue(stale.path)}, {"reason", AsValue(stale.acceptance.reason)}});
}

Sentence GoneSentence(const CWords& words, const SGone& gone) {
  return FillIn(words.Text("decision.gone." + std::string(NameOf(gone.change))), {{"path", AsValue(gone.path)}});
}

}  // namespace metareview
