#include "metareview2024/render/page/Fragment.h"

namespace metareview::page {

namespace {

std::string Joined(const std::vector<std::string>& parts) {
  std::string fragment;
  for (const std::string& part : parts) {
    fragment += (fragment.empty() ? "" : "&") + part;
  }
  return fragment;
}

}  // namespace

std::string KindFragment(EKind kind) {
  return "kind=" + std::string(NameOf(kind));
}

std::string SinceFragment(ESince since) {
  return "since=" + std::string(NameOf(since));
}

std::string OpenFragment(std::optional<EKind> kind, std::optional<ERisk> risk) {
  std::vector<std::string> parts;
  if (kind.has_value()) {
    parts.push_back(KindFragment(*kind));
  }
  if (risk.has_value()) {
    parts.push_back("risk=" + std::string(NameOf(*risk)));
  }
  parts.emplace_back("decision=open");
  return Joined(parts);
}

std::string AcceptedFragment(std::optional<EKind> kind) {
  const std::string accepted = "decision=accepted";
  return kind.has_value() ? Joined({KindFragment(*kind), accepted}) : accepted;
}

std::vector<std::string> FragmentsOf(const SFinding& finding) {
  std::vector<std::string> fragments = {KindFragment(finding.kind)};
  if (finding.accepted != nullptr) {
    fragments.push_back(AcceptedFragment(finding.kind));
    fragments.push_back(AcceptedFragment(std::nullopt));
  } else {
    fragments.push_back(OpenFragment(finding.kind, finding.risk));
    fragments.push_back(OpenFragment(std::nullopt, finding.risk));
  }
  if (finding.origin == EOrigin::kBoth) {
    fragments.emplace_back(kConflictFragment);
  }
  if (finding.since.has_value()) {
    fragments.push_back(SinceFragment(*finding.since));
  }
  if (!finding.reported) {
    fragments.emplace_back(kUnreportedFragment);
  }
  return fragments;
}

}  // namespace metareview::page
