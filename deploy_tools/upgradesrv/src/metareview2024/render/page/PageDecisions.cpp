#include <algorithm>
#include <unordered_set>

#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/Page.h"
#include "metareview2024/render/page/SentenceHtml.h"

namespace metareview::page {

namespace {

View AcceptanceView(const SAcceptance& acceptance, const std::string& path) {
  View view;
  view["path"] = ShownText(path);
  view["reason"] = ShownText(acceptance.reason);
  view["by"] = ShownText(acceptance.by.value_or(""));
  view["until"] = ShownText(acceptance.until.value_or(""));
  return view;
}

View ChangeView(const CPage& page, const Value& from, const Value& to) {
  View view;
  view["from"] = SentenceHtml(ValueWords(page.Words(), from));
  view["to"] = SentenceHtml(ValueWords(page.Words(), to));
  return view;
}

std::string ChangeName(const CPage& page, EChange change) {
  return page.Text("page.change." + std::string(NameOf(change)));
}

class CDecisions {
 public:
  explicit CDecisions(const CPage& page) : page_(page) {
    for (const SFinding* finding : page.Shown()) {
      shown_.insert(finding->id);
    }
  }

  /// A list with a title that counts it and a row each; nothing for an empty one.
  template <typename Item, typename RowOf>
  void Fill(View& view, const char* name, const std::string& titleKey, const std::vector<Item>& items,
            const RowOf& rowOf) const {
    if (items.empty()) {
      return;
    }
    View rows = ListView();
    const std::size_t count = std::min(items.size(), kMaxDecisions);
    for (std::size_t i = 0; i < count; ++i) {
      rows.push_back(rowOf(items.at(i)));
    }
    View more = ListView();
    if (items.size() > count) {
      more.push_back(page_.Count("page.rows-left", items.size() - count));
    }
    View list;
    list["title"] = page_.Count(titleKey, items.size());
    list["rows"] = std::move(rows);
    list["more"] = std::move(more);
    view[name] = std::move(list);
  }

  /// Leads to the finding at that path, if the page shows it.
  void Link(View& row, const std::string& path, EChange change) const {
    const std::uint64_t id = FindingId(path, change);
    if (shown_.count(id) != 0) {
      row["anchor"] = "f-" + IdText(id);
    }
  }

 private:
  const CPage& page_;
  std::unordered_set<std::uint64_t> shown_;
};

Findings Accepted(const Findings& findings) {
  Findings accepted;
  std::copy_if(findings.begin(), findings.end(), std::back_inserter(accepted),
               [](const SFinding* finding) { return finding->accepted != nullptr; });
  return accepted;
}

}  // namespace

void FillDecisions(const CPage& page, View& view) {
  const SReview& review = page.Review();
  const CDecisions decisions(page);
  const Findings accepted = Accepted(page.Shown());
  view["hasDecisions"] =
      !(accepted.empty() && review.outdated.empty() && review.expired.empty() && review.stale.empty());
  decisions.Fill(view, "accepted", "page.accepted-title", accepted, [&](const SFinding* finding) {
    View row = AcceptanceView(*finding->accepted, finding->path);
    row["anchor"] = "f-" + IdText(finding->id);
    row["risk"] = std::string(NameOf(finding->risk));
    row["riskName"] = page.Text("page.risk." + std::string(NameOf(finding->risk)));
    return row;
  });
  decisions.Fill(view, "outdated", "page.outdated-title", review.outdated, [&](const SOutdated& outdated) {
    const SDecision& decision = outdated.decision;
    View row = AcceptanceView(decision.acceptance, decision.path);
    decisions.Link(row, decision.path, decision.change);
    row["before"] = ChangeView(page, decision.client.value_or(Value()), decision.original.value_or(Value()));
    row["now"] = ChangeView(page, outdated.client, outdated.original);
    return row;
  });
  decisions.Fill(view, "expired", "page.expired-title", review.expired, [&](const SDecision& decision) {
    View row = AcceptanceView(decision.acceptance, decision.path);
    decisions.Link(row, decision.path, decision.change);
    return row;
  });
  decisions.Fill(view, "stale", "page.stale-title", review.stale, [&](const SDecision& decision) {
    View row = AcceptanceView(decision.acceptance, decision.path);
    row["change"] = ChangeName(page, decision.change);
    return row;
  });
  decisions.Fill(view, "gone", "page.gone-title", review.gone, [&](const SGone& gone) {
    View row;
    row["path"] = ShownText(gone.path);
    row["change"] = ChangeName(page, gone.change);
    return row;
  });
}

}  // namespace metareview::page
