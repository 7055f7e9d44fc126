#include <algorithm>
#include <string>
#include <vector>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/Totals.h"
#include "metareview2024/render/ShellWord.h"
#include "metareview2024/render/TextFindings.h"
#include "metareview2024/render/TextOutput.h"
#include "metareview2024/render/TextTotals.h"
#include "metareview2024/render/Writers.h"
#include "metareview2024/words/DecisionSentence.h"
#include "metareview2024/words/FindingSentence.h"
#include "metareview2024/words/NoteSentence.h"
#include "metareview2024/words/Subject.h"
#include "metareview2024/words/Verdict.h"

namespace metareview {

namespace {

class CTextReview {
 public:
  CTextReview(const SReview& review, const CWords& words, CTextOutput& output)
      : review_(review), words_(words), output_(output) {}

  void Write() {
    WriteAnswer();
    output_.EmptyLine();
    output_.Paragraph(ToVisible(SubjectSentence(words_, review_)));
    for (const ENote note : review_.notes) {
      output_.Paragraph(NoteSentence(words_, note));
    }
    output_.EmptyLine();
    WriteTotals(review_, words_, output_);
    WriteLegend();
    WriteFindings(review_, words_, output_);
    WriteDecisions();
    WriteHints();
  }

  void WriteFailed() {
    output_.Paragraph(ToVisible(VerdictSentence(words_, review_)), EStyle::kHeading);
    output_.Paragraph(ToVisible(Said("report.failed", {{"problem", AsValue(review_.problem)}})));
  }

 private:
  Sentence Said(std::string_view key, const Placeholders& values) const { return FillIn(words_.Text(key), values); }
  Sentence Number(std::size_t number) const { return AsWords(words_.Number(number)); }

  void WriteAnswer() {
    output_.Paragraph(ToVisible(VerdictSentence(words_, review_)), EStyle::kHeading);
    const SVerdict verdict = CountVerdict(review_);
    std::vector<Sentence> sentences;
    const auto add = [&](std::string_view key, std::size_t number, const Placeholders& more) {
      Placeholders values = more;
      values.emplace_back("n", Number(number));
      if (number != 0) {
        sentences.push_back(FillIn(words_.Text(key, number), values));
      }
    };
    add("report.loss", verdict.loss, {});
    add("report.block", verdict.block, {});
    add("report.other-conflicts", verdict.otherConflicts, {});
    if (!sentences.empty()) {
      output_.Paragraph(ToVisible(JoinSentences(words_, sentences)));
    }
    sentences.clear();
    add(verdict.decideNotReported != 0 ? "report.not-reported.decide" : "report.not-reported", verdict.notReported,
        {{"all", Number(verdict.all)}, {"decide", Number(verdict.decideNotReported)}});
    if (!sentences.empty()) {
      output_.Paragraph(ToVisible(sentences.front()));
    }
  }

  /// What cannot be guessed about how findings are shown.
  void WriteLegend() {
    if (review_.findings.empty()) {
      return;
    }
    std::vector<Sentence> sentences = {Said("report.legend.values", {})};
    if (review_.base.has_value()) {
      sentences.push_back(Said("report.legend.origins", {{"customer", AsWords(words_.Text("origin.customer"))},
                                                         {"vendor", AsWords(words_.Text("origin.vendor"))}}));
    }
    output_.EmptyLine();
    output_.Paragraph(ToVisible(JoinSentences(words_, sentences)));
  }

  /// Decisions that accept nothing, and findings that are no more.
  void WriteDecisions() {
    if (review_.outdated.empty() && review_.expired.empty() && review_.stale.empty() && review_.gone.empty()) {
      return;
    }
    output_.EmptyLine();
    output_.Line(words_.Text("report.decisions"), EStyle::kHeading);
    const auto write = [&](std::string_view label, const Sentence& sentence) {
      output_.Labelled(label, EStyle::kPlain, ToVisible(sentence));
    };
    for (const SOutdated& outdated : review_.outdated) {
      write("label.outdated", OutdatedSentence(words_, outdated));
    }
    for (const SDecision& decision : review_.expired) {
      write("label.expired", ExpiredSentence(words_, decision));
    }
    for (const SDecision& decision : review_.stale) {
      write("label.stale", StaleSentence(words_, decision));
    }
    for (const SGone& gone : review_.gone) {
      write("label.gone", GoneSentence(words_, gone));
    }
  }

  /// The commands that come next.
  void WriteHints() {
    if (review_.findings.empty()) {
      return;
    }
    const std::string directory = ShellWord(review_.directory);
    output_.EmptyLine();
    output_.Labelled("label.accept", EStyle::kPlain, "upgradesrv decide --reason '' " + directory + " PATH...");
    output_.Labelled("label.explain", EStyle::kPlain, "upgradesrv explain RULE");
    if (!review_.stale.empty()) {
      output_.Labelled("label.prune", EStyle::kPlain, "upgradesrv decide --prune " + directory);
    }
  }

  const SReview& review_;
  const CWords& words_;
  CTextOutput& output_;
};

}  // namespace

void WriteText(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  CTextOutput output(*options.words, options.hasColour, sink);
  CTextReview text(review, *options.words, output);
  if (!review.complete) {
    text.WriteFailed();
  } else if (options.isTableOnly) {
    WriteTotals(review, *options.words, output);
  } else {
    text.Write();
  }
  output.Flush();
}

}  // namespace metareview
