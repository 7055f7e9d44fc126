#pragma once

#include <memory>
#include <string>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/Terms.h"
#include "support/MetaMaker.h"

class CMetaDictionary2024;

namespace test {

struct SMetamodel {
  std::vector<SClass> classes;
  std::vector<SClass> links;
  std::vector<SBehavior> behaviors;
};

std::shared_ptr<const CMetaDictionary2024> MakeMetamodel(const SMetamodel& model);

/// Compares all kinds.
metareview::SReview Review(const SMetamodel& client, const SMetamodel& original);
metareview::SReview Review(const SMetamodel& client, const SMetamodel& original, const SMetamodel& base);

/// "PATH CHANGE RULE" of each finding.
std::vector<std::string> Judgements(const metareview::SReview& review);

/// The one finding at a path; fails the test when there is none.
metareview::SFinding FindingAt(const metareview::SReview& review, const std::string& path);

}  // namespace test
