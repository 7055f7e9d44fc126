#include "metareview2024/words/Subject.h"

#include <algorithm>
#include <string>
#include <vector>

#include "metareview2024/words/FindingSentence.h"

namespace metareview {

namespace {

/// The kinds that were compared, or those that were not.
Sentence Kinds(const CWords& words, const SReview& review, bool areCompared) {
  std::vector<Sentence> kinds;
  for (const EKind kind : kKinds) {
    const bool isCompared = std::find(review.elements.begin(), review.elements.end(), kind) != review.elements.end();
    if (isCompared == areCompared) {
      kinds.push_back(AsWords(words.Text("kinds." + std::string(NameOf(kind)))));
    }
  }
  return JoinList(words, kinds);
}

Sentence CountSince(const CWords& words, const SReview& review, ESince since) {
  const auto is = [&](const SFinding& finding) { return finding.since == since; };
  const auto count = std::count_if(review.findings.begin(), review.findings.end(), is);
  return AsWords(words.Number(static_cast<std::uint64_t>(count)));
}

/// The findings whose stored values could not be counted, or not all of them.
std::uint64_t CountProblems(const SReview& review) {
  const auto has = [](const SFinding& finding) { return finding.data != nullptr && !finding.data->problem.empty(); };
  return static_cast<std::uint64_t>(std::count_if(review.findings.begin(), review.findings.end(), has));
}

bool HasAnyCounts(const SReview& review) {
  return std::any_of(review.findings.begin(), review.findings.end(),
                     [](const SFinding& finding) { return finding.data != nullptr && HasCounts(*finding.data); });
}

}  // namespace

Sentence SubjectSentence(const CWords& words, const SReview& review) {
  std::vector<Sentence> sentences;
  const auto say = [&](std::string_view key, const Placeholders& values) {
    sentences.push_back(FillIn(words.Text(key), values));
  };
  say(review.base.has_value() ? "report.compared.base" : "report.compared",
      {{"client", AsValue(review.client)},
       {"original", AsValue(review.original)},
       {"base", AsValue(review.base.value_or(""))}});
  if (!review.base.has_value()) {
    say("report.no-base", {});
  }
  say("report.complete", {{"kinds", Kinds(words, review, true)}});
  if (review.elements.size() < kKinds.size()) {
    say("report.not-compared", {{"kinds", Kinds(words, review, false)}});
  }
  if (review.data.has_value()) {
    const std::uint64_t problems = CountProblems(review);
    const bool isAnyCounted = problems == 0 || HasAnyCounts(review);
    say(isAnyCounted ? "report.data" : "report.data.none", {{"data", AsValue(*review.data)}});
    if (isAnyCounted && problems != 0) {
      sentences.push_back(
          FillIn(words.Text("report.data.problems", problems), {{"n", AsWords(words.Number(problems))}}));
    }
  }
  if (review.against.has_value()) {
    say("report.against", {{"against", AsValue(*review.against)},
                           {"new", CountSince(words, review, ESince::kNew)},
                           {"changed", CountSince(words, review, ESince::kChanged)},
                           {"known", CountSince(words, review, ESince::kKnown)},
                           {"gone", AsWords(words.Number(review.gone.size()))}});
  }
  return JoinSentences(words, sentences);
}

}  // namespace metareview
