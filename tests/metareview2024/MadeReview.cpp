#include "metareview2024/MadeReview.h"

#include <stdexcept>
#include <utility>

#include "metareview2024/Path.h"

namespace test {

using namespace metareview;

SFinding Made(const std::string& path, EChange change, const std::string& rule, EOrigin origin) {
  const SPath parts = ParsePath(path).value();
  SFinding finding;
  finding.id = FindingId(path, change);
  finding.path = path;
  finding.change = change;
  finding.kind = parts.kind;
  finding.thing = parts.thing;
  finding.attribute = parts.attribute;
  finding.rule = FindRule(rule);
  if (finding.rule == nullptr) {
    throw std::invalid_argument(rule);
  }
  finding.risk = finding.rule->risk;
  finding.origin = origin;
  finding.reported = true;
  return finding;
}

SFinding MadeChange(const std::string& path, const std::string& rule, const Value& client, const Value& original,
                    EOrigin origin) {
  SFinding finding = Made(path, EChange::kChanged, rule, origin);
  finding.client = client;
  finding.original = original;
  if (origin != EOrigin::kUnknown) {
    finding.base = origin == EOrigin::kVendor ? client : original;
  }
  return finding;
}

SFinding Counted(SFinding finding, std::uint64_t rows, std::uint64_t of, const std::string& table) {
  finding.data = std::make_shared<const SData>(SData{rows, of, {table}, {}});
  return finding;
}

SFinding CountedInPart(SFinding finding, std::uint64_t rows, std::uint64_t of, const std::string& problem) {
  finding.data = std::make_shared<const SData>(SData{rows, of, {"T"}, problem});
  return finding;
}

SFinding NotCountable(SFinding finding, const std::string& problem) {
  finding.data = std::make_shared<const SData>(SData{0, 0, {}, problem});
  return finding;
}

SFinding Accepted(SFinding finding, const SAcceptance& acceptance) {
  finding.accepted = std::make_shared<const SAcceptance>(acceptance);
  return finding;
}

SReview MadeReview(const std::vector<SFinding>& findings) {
  SReview review;
  review.client = "client.json";
  review.original = "original.json";
  review.base = "base.json";
  review.directory = "upgrade";
  review.elements = {EKind::kClass, EKind::kLink, EKind::kBehavior};
  review.findings = findings;
  return review;
}

}  // namespace test
