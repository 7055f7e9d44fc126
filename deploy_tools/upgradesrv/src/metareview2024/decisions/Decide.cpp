#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptstring/Nearest.h"
#include "kvxsptstring/StringHelper.h"
#include "kvxsptstring/Utf8.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Path.h"
#include "metareview2024/decisions/DecisionIndex.h"
#include "metareview2024/decisions/Reason.h"

namespace metareview {
namespace {

using Keys = std::unordered_set<std::string>;

std::string KeyOf(const SDecision& decision) {
  return KeyOf(decision.path, decision.change);
}

[[noreturn]] void Refuse(const std::string& what, const std::string& problem) {
  throw CKVXException(kvx::kRefused, CStringHelper::ToVisible(what) + ": " + problem);
}

/// A decisions file is in UTF-8, as it is read again.
void RequireUtf8(const std::string& what, const std::string& text) {
  if (!kvx::IsUtf8(text)) {
    throw CKVXException(kvx::kRefused,
                        "the " + what + " \"" + CStringHelper::ToVisible(text) +
                            "\" is not UTF-8; give it in UTF-8, for example from a terminal that uses it");
  }
}

void RequireAcceptance(const SAcceptance& acceptance, const std::string& today) {
  if (IsBlank(acceptance.reason)) {
    throw CKVXException(kvx::kRefused, "the reason is empty; say why the findings are accepted");
  }
  RequireUtf8("reason", acceptance.reason);
  RequireUtf8("name", acceptance.by.value_or(""));
  if (acceptance.until && !IsDate(*acceptance.until)) {
    throw CKVXException(kvx::kRefused,
                        "\"" + CStringHelper::ToVisible(*acceptance.until) + "\" is not a day; write YYYY-MM-DD");
  }
  if (acceptance.until && *acceptance.until < today) {
    Refuse(*acceptance.until, "the day has passed; the last day may be today or later");
  }
}

std::string TextOf(const SAcceptance& acceptance) {
  std::string text = acceptance.reason;
  if (acceptance.by) {
    text += ", by " + *acceptance.by;
  }
  if (acceptance.until) {
    text += ", until " + *acceptance.until;
  }
  return CStringHelper::ToVisible(text);
}

/// The findings of a review by their paths.
class CFindings {
 public:
  explicit CFindings(const std::vector<SFinding>& findings) : findings_(findings) {
    for (const SFinding& finding : findings) {
      byPath_.emplace(LowerCase(finding.path), &finding);
    }
  }

  /// Nothing has one path inserted and deleted, so only a pattern finds several.
  std::vector<const SFinding*> Find(const std::string& pattern) const {
    std::vector<const SFinding*> found;
    if (!HasWildcard(pattern)) {
      if (const SFinding* finding = FindOne(pattern); finding != nullptr) {
        found.push_back(finding);
      }
      return found;
    }
    for (const SFinding& finding : findings_) {
      if (MatchesPath(pattern, finding.path)) {
        found.push_back(&finding);
      }
    }
    return found;
  }

  /// A question about the finding that a path without one may be meant for: what the path leads through, what lies
  /// below it, or what is spelled nearly so. Empty when there is none, and for a pattern.
  std::string Question(const std::string& path) const {
    if (HasWildcard(path)) {
      return "";
    }
    for (std::size_t end = path.rfind('/'); end != std::string::npos && end != 0; end = path.rfind('/', end - 1)) {
      if (const SFinding* finding = FindOne(path.substr(0, end)); finding != nullptr) {
        return kvx::DidYouMean(finding->path);
      }
    }
    const std::string above = LowerCase(path + "/");
    kvx::CNearest nearest(path);
    for (const SFinding& finding : findings_) {
      if (LowerCase(finding.path.substr(0, above.size())) == above) {
        return kvx::DidYouMean(finding.path);
      }
      nearest.Offer(finding.path);
    }
    return nearest.Question();
  }

 private:
  const SFinding* FindOne(const std::string& path) const {
    const auto finding = byPath_.find(LowerCase(path));
    return finding == byPath_.end() ? nullptr : finding->second;
  }

  static std::string LowerCase(std::string text) {
    CStringHelper::ToLower(text);
    return text;
  }

  const std::vector<SFinding>& findings_;
  std::unordered_map<std::string, const SFinding*> byPath_;
};

/// The entries that accept the findings at a path.
std::vector<SDecision> EntriesFor(const std::string& path, const CFindings& findings, const SAcceptance& acceptance) {
  if (const auto problem = ProblemOfPattern(path)) {
    Refuse(path, *problem + findings.Question(path));
  }
  const std::vector<const SFinding*> found = findings.Find(path);
  if (found.empty()) {
    Refuse(path, "no finding has this path" + findings.Question(path));
  }
  if (!HasWildcard(path)) {
    const SFinding& finding = *found.front();
    return {{finding.path, finding.change, finding.original, finding.client, acceptance}};
  }
  std::vector<SDecision> entries;
  for (const EChange change : kChanges) {
    const bool accepts = std::any_of(found.begin(), found.end(), [change](const SFinding* finding) {
      return finding->change == change && PatternMayAccept(finding->risk);
    });
    if (accepts) {
      entries.push_back({path, change, std::nullopt, std::nullopt, acceptance});
    }
  }
  if (entries.empty()) {
    Refuse(path, "a path with \"*\" accepts nothing of risk loss or block; name these findings one by one");
  }
  return entries;
}

}  // namespace

SDecisions Decide(const SDecisions& decisions, const SReview& review, const std::vector<std::string>& paths,
                  const SAcceptance& acceptance, const std::string& today) {
  RequireAcceptance(acceptance, today);
  Keys replaceable;
  for (const SOutdated& outdated : review.outdated) {
    replaceable.insert(KeyOf(outdated.decision));
  }
  for (const SDecision& expired : review.expired) {
    replaceable.insert(KeyOf(expired));
  }
  SDecisions result = decisions;
  std::unordered_map<std::string, std::size_t> positions;
  for (const SDecision& decision : result.accepted) {
    positions.emplace(KeyOf(decision), positions.size());
  }
  const CFindings findings(review.findings);
  Keys added;
  for (const std::string& path : paths) {
    for (SDecision& entry : EntriesFor(path, findings, acceptance)) {
      const std::string key = KeyOf(entry);
      if (!added.insert(key).second) {
        continue;
      }
      const auto existing = positions.find(key);
      if (existing == positions.end()) {
        result.accepted.push_back(std::move(entry));
        continue;
      }
      SDecision& decision = result.accepted[existing->second];
      if (replaceable.count(key) == 0) {
        Refuse(path, "is accepted already: " + TextOf(decision.acceptance) +
                         "; to prolong or change that, edit its line in the decisions file");
      }
      decision = std::move(entry);
    }
  }
  return result;
}

SDecisions Prune(const SDecisions& decisions, const SReview& review) {
  Keys stale;
  for (const SDecision& decision : review.stale) {
    stale.insert(KeyOf(decision));
  }
  SDecisions result = decisions;
  result.accepted.erase(
      std::remove_if(result.accepted.begin(), result.accepted.end(),
                     [&stale](const SDecision& decision) { return stale.count(KeyOf(decision)) != 0; }),
      result.accepted.end());
  return result;
}

}  // namespace metareview
