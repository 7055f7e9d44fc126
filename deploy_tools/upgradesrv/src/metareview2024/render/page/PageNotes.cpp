#include <algorithm>
#include <array>

#include "metareview2024/Totals.h"
#include "metareview2024/render/ShellWord.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/Page.h"
#include "metareview2024/render/page/SentenceHtml.h"

namespace metareview::page {

namespace {

/// The rules under which the page shows findings, those with the worst findings first.
struct SUsedRule {
  const SRule* rule;
  std::vector<ERisk> risks;
};

std::vector<SUsedRule> UsedRules(const Findings& findings) {
  std::vector<SUsedRule> used;
  for (const SRule* rule : Rules()) {
    SUsedRule row{rule, {}};
    for (const ERisk risk : kRisks) {
      if (std::any_of(findings.begin(), findings.end(),
                      [&](const SFinding* one) { return one->rule == rule && one->risk == risk; })) {
        row.risks.push_back(risk);
      }
    }
    if (!row.risks.empty()) {
      used.push_back(row);
    }
  }
  std::stable_sort(used.begin(), used.end(),
                   [](const SUsedRule& a, const SUsedRule& b) { return a.risks.front() < b.risks.front(); });
  return used;
}

View RuleViews(const CPage& page) {
  View views = ListView();
  for (const SUsedRule& used : UsedRules(page.Shown())) {
    const std::string name(used.rule->name);
    View risks = ListView();
    for (const ERisk risk : used.risks) {
      View view;
      view["risk"] = std::string(NameOf(risk));
      view["name"] = page.Text("page.risk." + std::string(NameOf(risk)));
      risks.push_back(view);
    }
    View view;
    view["rule"] = name;
    view["name"] = page.Text(name + ".name");
    view["why"] = page.Text(name + ".why");
    view["todo"] = page.Text(name + ".todo");
    view["risks"] = std::move(risks);
    views.push_back(view);
  }
  return views;
}

/// Sentences in which words of the command line or of metamodels are set apart.
std::string CodeSentence(const CPage& page, std::string_view key, const Placeholders& values) {
  return SentenceHtml(FillIn(page.Words().Text(key), values));
}

View NotCompared(const CPage& page) {
  View sentences = ListView();
  for (const char* key : {"page.limit.outside", "page.limit.order", "page.limit.behavior-spelling", "page.limit.inside",
                          "page.limit.case"}) {
    sentences.push_back(CodeSentence(page, key, {}));
  }
  const SVerdict verdict = CountVerdict(page.Review());
  if (verdict.notReported != 0) {
    sentences.push_back(SentenceHtml(FillIn(page.Words().Text("page.limit.report", verdict.notReported),
                                            {{"command", AsValue("upgradesrv run")},
                                             {"n", AsWords(page.Words().Number(verdict.notReported))},
                                             {"m", AsWords(page.Words().Number(verdict.all))}})));
  }
  return sentences;
}

View Assumed(const CPage& page) {
  View sentences = ListView();
  for (const char* key : {"page.assumed.shipped", "page.assumed.stays"}) {
    sentences.push_back(CodeSentence(page, key, {}));
  }
  sentences.push_back(
      CodeSentence(page, "page.assumed.columns", {{"table_name", AsValue("table_name")}, {"field", AsValue("field")}}));
  return sentences;
}

/// The parts that the page has, as it has them.
View Contents(const CPage& page, const View& view) {
  const bool hasGone = !page.Review().gone.empty();
  const bool hasDecisions = view.get("hasDecisions")->is_true();
  struct SPart {
    const char* id;
    const char* key;
    bool isThere;
  };
  const std::array<SPart, 6> parts = {{{"decide", "page.decide", !page.Places().empty()},
                                       {"all", "page.contents.all", !page.Shown().empty()},
                                       {"decisions", "page.contents.decisions", hasDecisions},
                                       {"gone", "page.contents.gone", hasGone},
                                       {"limits", "page.contents.limits", true},
                                       {"rules", "page.contents.rules", !page.Shown().empty()}}};
  View views = ListView();
  for (const SPart& part : parts) {
    if (part.isThere) {
      View entry;
      entry["id"] = part.id;
      entry["name"] = page.Text(part.key);
      views.push_back(entry);
    }
  }
  return views;
}

}  // namespace

void FillNotes(const CPage& page, View& view) {
  view["contents"] = Contents(page, view);
  view["legend"] = CodeSentence(page, page.HasBase() ? "page.legend.base" : "page.legend",
                                {{"marked", AsValue(page.Text("page.marked"))}});
  view["staleIntro"] =
      CodeSentence(page, "page.stale-intro",
                   {{"command", AsValue("upgradesrv decide --prune " + ShellWord(page.Review().directory))}});
  view["notCompared"] = NotCompared(page);
  view["assumed"] = Assumed(page);
  view["hasRules"] = !page.Shown().empty();
  view["rules"] = RuleViews(page);
  view["rulesIntro"] =
      CodeSentence(page, "page.rules-intro",
                   {{"command", AsValue("upgradesrv explain")}, {"n", AsWords(page.Words().Number(Rules().size()))}});
}

}  // namespace metareview::page
