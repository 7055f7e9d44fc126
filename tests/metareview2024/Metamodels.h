#pragma once

#include <string>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/Terms.h"
#include "support/MetaMaker.h"

namespace test {

/// Compares all kinds.
metareview::SReview Review(const SModel& client, const SModel& original);
metareview::SReview Review(const SModel& client, const SModel& original, const SModel& base);

/// "PATH CHANGE RULE" of each finding.
std::vector<std::string> Judgements(const metareview::SReview& review);

/// The one finding at a path; fails the test when there is none.
metareview::SFinding FindingAt(const metareview::SReview& review, const std::string& path);

}  // namespace test
