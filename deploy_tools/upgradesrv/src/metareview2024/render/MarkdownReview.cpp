#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "metareview2024/Totals.h"
#include "metareview2024/render/MarkdownText.h"
#include "metareview2024/render/ShellWord.h"
#include "metareview2024/render/ToDecide.h"
#include "metareview2024/render/Writers.h"
#include "metareview2024/words/DecisionSentence.h"
#include "metareview2024/words/FindingSentence.h"
#include "metareview2024/words/NoteSentence.h"
#include "metareview2024/words/Subject.h"
#include "metareview2024/words/Verdict.h"

namespace metareview {

namespace {

// Below the 1,000,000 bytes that servers take, together with what has no limit of its own. What one section leaves of
// its share, the next ones may use.
constexpr std::size_t kDecideShare = 400000;
constexpr std::size_t kAllShare = 300000;
constexpr std::size_t kListShare = 50000;

class CMarkdown {
 public:
  CMarkdown(const SReview& review, const SRenderOptions& options)
      : review_(review), words_(*options.words), sentences_(words_, review) {}

  std::string Write() {
    Line("# " + Plain(VerdictSentence(words_, review_)));
    if (!review_.complete) {
      Line(MarkdownText(FillIn(words_.Text("report.failed"), {{"problem", AsValue(review_.problem)}}), false));
      return text_;
    }
    Line(MarkdownText(SubjectSentence(words_, review_), false));
    for (const ENote note : review_.notes) {
      Line(NoteSentence(words_, note));
    }
    WriteTotals();
    WriteToDecide();
    WriteAll();
    WriteDecisions();
    return text_;
  }

 private:
  std::string Text(std::string_view key) const { return std::string(words_.Text(key)); }
  std::string RiskName(std::string_view risk) const { return Text("page.risk." + std::string(risk)); }

  /// A paragraph.
  void Line(const std::string& line) { text_ += line + "\n\n"; }

  void WriteTotals() {
    const std::array<STotals, kKinds.size()> totals = CountTotals(review_);
    std::string heads = "| |";
    std::string rulers = "|:--|";
    for (const ERisk risk : kRisks) {
      heads += " " + RiskName(NameOf(risk)) + " |";
      rulers += "--:|";
    }
    text_ += heads + " " + RiskName("accepted") + " | " + Text("page.total") + " |\n" + rulers + "--:|--:|\n";
    STotals all;
    for (const EKind kind : review_.elements) {
      const STotals& row = totals.at(static_cast<std::size_t>(kind));
      WriteTotalsRow(Text("page.kinds." + std::string(NameOf(kind))), row);
      for (std::size_t i = 0; i < all.risks.size(); ++i) {
        all.risks.at(i) += row.risks.at(i);
      }
      all.accepted += row.accepted;
    }
    WriteTotalsRow(Text("page.kinds.all"), all);
    text_ += "\n";
  }

  void WriteTotalsRow(const std::string& name, const STotals& totals) {
    std::size_t sum = totals.accepted;
    text_ += "| " + name + " |";
    for (const ERisk risk : kRisks) {
      sum += totals.Of(risk);
      text_ += " " + words_.Number(totals.Of(risk)) + " |";
    }
    text_ += " " + words_.Number(totals.accepted) + " | " + words_.Number(sum) + " |\n";
  }

  /// Under a heading, as many of the items as there is room for, and how many more there are. `begin` is what comes
  /// before the first one.
  template <typename Items, typename ItemText>
  void WriteSection(const std::string& heading, const std::string& begin, std::size_t share, const Items& items,
                    const ItemText& itemText) {
    room_ += share;
    if (items.empty()) {
      return;
    }
    const std::size_t start = text_.size();
    Line("## " + heading);
    text_ += begin;
    std::size_t count = 0;
    for (const auto& item : items) {
      const std::string line = itemText(item);
      if (text_.size() - start + line.size() > room_) {
        break;
      }
      text_ += line;
      ++count;
    }
    text_ += "\n";
    if (const std::size_t left = items.size() - count; left != 0) {
      Line(Plain(FillIn(words_.Text("page.rows-left", left), {{"n", AsWords(words_.Number(left))}})));
    }
    room_ -= std::min(room_, text_.size() - start);
  }

  /// Who changed it, that it is new, that the check's report leaves it out, that it is accepted. Values are only in
  /// what is said of an acceptance, which the table alone shows.
  std::string Judgement(const SFinding& finding) const {
    std::vector<Sentence> parts;
    const auto add = [&](const std::string& key) { parts.push_back(AsWords(words_.Text(key))); };
    if (review_.base.has_value()) {
      add("origin." + std::string(NameOf(finding.origin)));
    }
    if (finding.since.has_value() && *finding.since != ESince::kKnown) {
      add("page.note.since." + std::string(NameOf(*finding.since)));
    }
    if (!finding.reported) {
      add("page.note.not-in-report");
    }
    if (finding.accepted != nullptr) {
      parts.push_back(AcceptanceSentence(words_, *finding.accepted));
    }
    return MarkdownText(JoinList(words_, parts), true);
  }

  void WriteToDecide() {
    Findings findings;
    for (const Findings& place : GroupsToDecide(AllFindings(review_))) {
      findings.insert(findings.end(), place.begin(), place.end());
    }
    WriteSection(Text("page.decide"), "", kDecideShare, findings, [&](const SFinding* finding) {
      const std::string judgement = Judgement(*finding);
      return "- **" + RiskName(NameOf(finding->risk)) + "** " + MarkdownCode(finding->path, false) + "  \n  " +
             MarkdownText(sentences_.Of(*finding), false) + "  \n  *" +
             Text(std::string(finding->rule->name) + ".name") + "*" + (judgement.empty() ? "" : " · " + judgement) +
             "\n";
    });
    if (!findings.empty()) {
      Line(std::string(words_.Text("page.accept", 1)) + ": " +
           MarkdownCode("upgradesrv decide --reason '' " + ShellWord(review_.directory) + " PATH...", false));
    }
  }

  void WriteAll() {
    const std::string head =
        "| " + Text("page.risk") + " | " + Text("page.difference") + " | " + Text("page.what-happens") + " | " +
        Text(review_.base.has_value() ? "page.changed-by" : "page.notes") + " |\n|:--|:--|:--|:--|\n";
    WriteSection(Text("page.contents.all"), head, kAllShare, AllFindings(review_), [&](const SFinding* finding) {
      return "| " + RiskName(finding->accepted != nullptr ? "accepted" : NameOf(finding->risk)) + " | " +
             MarkdownCode(finding->path, true) + " | " + MarkdownText(sentences_.Of(*finding), true) + " | " +
             Judgement(*finding) + " |\n";
    });
  }

  void WriteDecisions() {
    WriteSentences("page.outdated-title", review_.outdated, OutdatedSentence);
    WriteSentences("page.expired-title", review_.expired, ExpiredSentence);
    WriteSentences("page.stale-title", review_.stale, StaleSentence);
    WriteSentences("page.gone-title", review_.gone, GoneSentence);
  }

  template <typename Item>
  void WriteSentences(const std::string& title, const std::vector<Item>& items,
                      Sentence (*sentence)(const CWords&, const Item&)) {
    const std::string number = words_.Number(items.size());
    WriteSection(Plain(FillIn(words_.Text(title, items.size()), {{"n", AsWords(number)}})), "", kListShare, items,
                 [&](const Item& item) { return "- " + MarkdownText(sentence(words_, item), false) + "\n"; });
  }

  const SReview& review_;
  const CWords& words_;
  const CFindingSentences sentences_;
  std::string text_;
  std::size_t room_ = 0;
};

}  // namespace

void WriteMarkdown(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  sink(CMarkdown(review, options).Write());
}

}  // namespace metareview
