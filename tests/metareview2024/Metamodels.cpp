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

std::shared_ptr<const CMetaDictionary2024> MakeMetamodel(const SMetamodel& model) {
  auto dictionary = std::make_shared<CMetaDictionary2024>();
  for (const SClass& element : model.classes) {
    EXPECT_TRUE(dictionary->AddClass(MakeClass(element)));
  }
  for (const SClass& element : model.links) {
    EXPECT_TRUE(dictionary->AddLink(MakeLink(element)));
  }
  for (const SBehavior& element : model.behaviors) {
    EXPECT_TRUE(dictionary->AddBehavior(MakeBehavior(element)));
  }
  return dictionary;
}

metareview::SReview Review(const SMetamodel& client, const SMetamodel& original) {
  return Review({MakeMetamodel(client), MakeMetamodel(original), nullptr});
}

metareview::SReview Review(const SMetamodel& client, const SMetamodel& original, const SMetamodel& base) {
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
