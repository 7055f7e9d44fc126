#include <algorithm>
#include <array>

#include "metareview2024/Path.h"
#include "metareview2024/Totals.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/FindingRow.h"
#include "metareview2024/render/page/Fragment.h"
#include "metareview2024/render/page/Page.h"
#include "metareview2024/render/page/SentenceHtml.h"
#include "metareview2024/words/NoteSentence.h"
#include "metareview2024/words/RuleWords.h"
#include "metareview2024/words/Subject.h"
#include "metareview2024/words/Verdict.h"

namespace metareview::page {

namespace {

/// The verdict as an answer, up to the first full stop, and what follows.
View VerdictView(const CPage& page) {
  const std::string verdict = Plain(VerdictSentence(page.Words(), page.Review()));
  std::size_t end = std::string::npos;
  for (const std::string_view stop : {". ", "。"}) {
    if (const std::size_t found = verdict.find(stop); found != std::string::npos) {
      end = std::min(end, found + (stop == ". " ? 1 : stop.size()));
    }
  }
  View view;
  view["answer"] = verdict.substr(0, end);
  view["rest"] = end == std::string::npos ? std::string() : verdict.substr(end);
  return view;
}

View RiskView(const CPage& page, std::string_view risk) {
  View view;
  view["risk"] = std::string(risk);
  view["name"] = page.Text("page.risk." + std::string(risk));
  return view;
}

/// What the verdict counts.
View CountViews(const CPage& page, const SVerdict& verdict) {
  const std::array<std::pair<std::string_view, std::size_t>, 3> counts = {
      {{"loss", verdict.loss}, {"block", verdict.block}, {"both", verdict.otherConflicts}}};
  View views = ListView();
  for (const auto& [risk, number] : counts) {
    if (number != 0) {
      View view = RiskView(page, risk);
      const std::string_view text = page.Words().Text("page.count." + std::string(risk), number);
      view["text"] = SentenceHtml(FillIn(text, {{"n", AsValue(page.Words().Number(number))}}));
      views.push_back(view);
    }
  }
  return views;
}

View Remarks(const CPage& page) {
  View remarks = ListView();
  if (!page.Review().complete) {
    remarks.push_back(
        SentenceHtml(FillIn(page.Words().Text("report.failed"), {{"problem", AsValue(page.Review().problem)}})));
  }
  for (const ENote note : page.Review().notes) {
    remarks.push_back(SentenceHtml(AsWords(NoteSentence(page.Words(), note))));
  }
  return remarks;
}

/// What the attribute, or the thing as a whole, becomes.
View BecomesView(const CPage& page, const SFinding& finding) {
  View view;
  view["from"] = SentenceHtml(ValueWords(page.Words(), *finding.client));
  view["to"] = SentenceHtml(ValueWords(page.Words(), *finding.original));
  return view;
}

/// Whether its rule asks for stored values.
bool IsCountable(const SFinding& finding) {
  const SRuleWords* rule = FindRuleWords(finding.rule->name);
  return rule != nullptr && rule->isCounted;
}

bool WasCounted(const SFinding& finding) {
  return finding.data != nullptr && HasCounts(*finding.data);
}

/// How many stored values the finding touches, if its rule counts them.
View DataView(const CPage& page, const SFinding& finding) {
  View view;
  const bool isCounted = WasCounted(finding);
  view["counted"] = isCounted;
  if (isCounted) {
    const char* const key = finding.data->problem.empty() ? "page.n-of-m" : "page.at-least-n-of-m";
    view["text"] = page.Filled(key, {{"n", AsWords(page.Words().Number(finding.data->rows))},
                                     {"m", AsWords(page.Words().Number(finding.data->of))}});
  } else {
    view["text"] = page.Text(finding.data == nullptr ? "page.not-counted" : "page.not-countable");
  }
  return view;
}

View GlanceRow(const CPage& page, const Findings& place, const SFinding& finding) {
  View view;
  if (&finding == place.front()) {
    const SPath path = ParsePath(finding.path).value_or(SPath());
    View placeView;
    placeView["span"] = std::to_string(place.size());
    placeView["anchor"] = "d-" + IdText(finding.id);
    placeView["element"] = ShownText(path.element);
    if (!path.part.empty()) {
      placeView["part"] = ShownText(path.part);
    }
    view["place"] = std::move(placeView);
  }
  view["risk"] = std::string(NameOf(finding.risk));
  view["riskName"] = page.Text("page.risk." + std::string(NameOf(finding.risk)));
  view["ruleName"] = page.Text(std::string(finding.rule->name) + ".name");
  view["conflict"] = finding.origin == EOrigin::kBoth;
  if (finding.change == EChange::kChanged) {
    view["becomes"] = BecomesView(page, finding);
  }
  if (IsCountable(finding)) {
    view["data"] = DataView(page, finding);
  }
  return view;
}

View GlanceViews(const CPage& page) {
  View views = ListView();
  for (std::size_t i = 0; i < std::min(page.Places().size(), kMaxPlacesAtGlance); ++i) {
    const Findings& place = page.Places().at(i);
    View rows = ListView();
    for (const SFinding* finding : place) {
      rows.push_back(GlanceRow(page, place, *finding));
    }
    View view;
    view["rows"] = std::move(rows);
    views.push_back(view);
  }
  return views;
}

/// A cell of the totals: a number that leads to what it counts.
View TotalCell(const CPage& page, const std::string& label, std::size_t number, const std::string& fragment) {
  View view;
  view["number"] = page.Words().Number(number);
  view["zero"] = number == 0;
  if (number != 0 && !fragment.empty()) {
    view["link"] = fragment;
    view["label"] = label + ": " + page.Words().Number(number);
  }
  return view;
}

View TotalsRow(const CPage& page, std::optional<EKind> kind, const STotals& totals) {
  const std::string name = page.Text("page.kinds." + std::string(kind.has_value() ? NameOf(*kind) : "all"));
  const auto label = [&](std::string_view risk) {
    return Plain(JoinList(page.Words(), {AsWords(name), AsWords(page.Text("page.risk." + std::string(risk)))}));
  };
  View cells = ListView();
  std::size_t sum = totals.accepted;
  for (const ERisk risk : kRisks) {
    sum += totals.Of(risk);
    cells.push_back(TotalCell(page, label(NameOf(risk)), totals.Of(risk), OpenFragment(kind, risk)));
  }
  cells.push_back(TotalCell(page, label("accepted"), totals.accepted, AcceptedFragment(kind)));
  cells.push_back(TotalCell(page, name, sum, kind.has_value() ? KindFragment(*kind) : ""));
  View view;
  view["name"] = name;
  view["cells"] = std::move(cells);
  return view;
}

/// Kinds that were compared, and all of them together.
View TotalsViews(const CPage& page) {
  const std::array<STotals, 3> totals = CountTotals(page.Review());
  STotals sum;
  View views = ListView();
  for (const EKind kind : page.Review().elements) {
    const STotals& row = totals.at(static_cast<std::size_t>(kind));
    for (std::size_t i = 0; i < sum.risks.size(); ++i) {
      sum.risks.at(i) += row.risks.at(i);
    }
    sum.accepted += row.accepted;
    views.push_back(TotalsRow(page, kind, row));
  }
  views.push_back(TotalsRow(page, std::nullopt, sum));
  return views;
}

class CFacts {
 public:
  explicit CFacts(const CPage& page) : page_(page) {}

  void Add(const std::string& name, const std::string& text, const std::string& link) {
    View view;
    view["name"] = name;
    view["text"] = text;
    if (!link.empty()) {
      view["link"] = link;
    }
    views_.push_back(view);
  }
  void Count(const std::string& name, std::size_t number, const std::string& link) {
    if (number != 0) {
      Add(name, page_.Words().Number(number), link);
    }
  }
  View Take() { return std::move(views_); }

 private:
  const CPage& page_;
  View views_ = ListView();
};

/// How many decisions accept nothing any more, by what became of them; empty where all hold.
std::string LapsedText(const CPage& page) {
  const SReview& review = page.Review();
  const std::array<std::pair<const char*, std::size_t>, 3> counts = {{{"page.n-outdated", review.outdated.size()},
                                                                      {"page.n-expired", review.expired.size()},
                                                                      {"page.n-stale", review.stale.size()}}};
  std::vector<Sentence> texts;
  for (const auto& [key, number] : counts) {
    if (number != 0) {
      texts.push_back(AsWords(page.Count(key, number)));
    }
  }
  return Plain(JoinList(page.Words(), texts));
}

View FactViews(const CPage& page, const SVerdict& verdict) {
  const std::vector<SFinding>& findings = page.Review().findings;
  const auto count = [&](const auto& is) {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), is));
  };
  const auto countSince = [&](ESince since) { return count([&](const SFinding& one) { return one.since == since; }); };
  CFacts facts(page);
  facts.Count(verdict.decideNotReported == 0 ? page.Text("page.fact.not-in-report")
                                             : page.Count("page.fact.not-in-report.decide", verdict.decideNotReported),
              verdict.notReported, kUnreportedFragment);
  facts.Count(page.Text("page.fact.both"), count([](const SFinding& one) { return one.origin == EOrigin::kBoth; }),
              kConflictFragment);
  facts.Count(page.Text("page.fact.new"), countSince(ESince::kNew), SinceFragment(ESince::kNew));
  facts.Count(page.Text("page.fact.changed"), countSince(ESince::kChanged), SinceFragment(ESince::kChanged));
  facts.Count(page.Text("page.fact.gone"), page.Review().gone.size(), "gone");
  if (const std::size_t countable = count(IsCountable); countable != 0) {
    const std::size_t counted = count(WasCounted);
    facts.Add(page.Text("page.fact.counted"),
              page.Filled("page.n-of-m", {{"n", AsWords(page.Words().Number(counted))},
                                          {"m", AsWords(page.Words().Number(countable))}}),
              "");
  }
  if (const std::string lapsed = LapsedText(page); !lapsed.empty()) {
    facts.Add(page.Text("page.fact.lapsed"), lapsed, "decisions");
  }
  return facts.Take();
}

View RiskViews(const CPage& page) {
  View views = ListView();
  for (const ERisk risk : kRisks) {
    views.push_back(RiskView(page, NameOf(risk)));
  }
  views.push_back(RiskView(page, "accepted"));
  return views;
}

}  // namespace

void FillSummary(const CPage& page, View& view) {
  const SReview& review = page.Review();
  const SVerdict verdict = CountVerdict(review);
  view["complete"] = review.complete;
  view["hasBase"] = page.HasBase();
  view["verdict"] = VerdictView(page);
  view["title"] = Plain(VerdictSentence(page.Words(), review)) + " " + page.Text("page.title");
  view["remarks"] = Remarks(page);
  if (!review.complete) {
    return;
  }
  view["hasCounts"] = verdict.decide != 0;
  view["counts"] = CountViews(page, verdict);
  view["subject"] = SentenceHtml(SubjectSentence(page.Words(), review));
  view["hasData"] = std::any_of(review.findings.begin(), review.findings.end(), IsCountable);
  view["glance"] = GlanceViews(page);
  View more = ListView();
  if (page.Places().size() > kMaxPlacesAtGlance) {
    more.push_back(page.Count("page.more-places", page.Places().size() - kMaxPlacesAtGlance));
  }
  view["morePlaces"] = std::move(more);
  view["totalsTitle"] = page.Count("page.all-n", verdict.all);
  view["risks"] = RiskViews(page);
  view["totals"] = TotalsViews(page);
  view["facts"] = FactViews(page, verdict);
}

}  // namespace metareview::page
