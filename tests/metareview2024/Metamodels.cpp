#include "metareview2024/Metamodels.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "metareview2024/ReviewSteps.h"

namespace test {
namespace {

metareview::SReview Review(metareview::SMetamodels metamodels) {
  return CompareMetamodels(metamodels, {metareview::kKinds.begin(), metareview::kKinds.end()});
}

}  // namespace

metareview::SReview Review(const SModel& client, const SModel& original) {
  return Review({MakeMetamodel(client), MakeMetamodel(original), nullptr});
}

metareview::SReview Review(const SModel& client, const SModel& original, const SModel& base) {
  return Review({MakeMetamodel(client), MakeMetamodel(original), MakeMetamodel(base)});
}

std::vector<std::string> Judgements(const metareview::SReview& review) {
  std::vector<std::string> texts;
  for (const metareview::SFinding& finding : review.findings) {
    texts.push_back(finding.path + " " + std::string(NameOf(finding.change)) + " " + std::string(finding.rule->name));
  }
  return texts;
}

metareview::SFinding FindingAt(const metareview::SReview& review, const std::string& path) {
  const auto found = std::find_if(review.findings.begin(), review.findings.end(),
                                  [&path](const metareview::SFinding& finding) { return finding.path == path; });
  if (found == review.findings.end()) {
    ADD_FAILURE() << "no finding at " << path;
    return {};
  }
  return *found;
}

}  // namespace test
