#include "metareview2024/render/TextFindings.h"

#include <string>
#include <string_view>
#include <vector>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/Totals.h"
#include "metareview2024/render/TextLayout.h"
#include "metareview2024/render/ToDecide.h"
#include "metareview2024/words/FindingSentence.h"

namespace metareview {

namespace {

EStyle StyleOf(ERisk risk) {
  switch (risk) {
    case ERisk::kLoss:
      return EStyle::kLoss;
    case ERisk::kBlock:
      return EStyle::kBlock;
    case ERisk::kAttention:
      return EStyle::kAttention;
    case ERisk::kSafe:
      return EStyle::kSafe;
  }
  return EStyle::kPlain;
}

class CTextFindings {
 public:
  CTextFindings(const SReview& review, const CWords& words, CTextOutput& output)
      : review_(review), words_(words), output_(output), sentences_(words, review) {}

  void WriteToDecide() {
    const std::vector<Findings> groups = GroupsToDecide(AllFindings(review_));
    if (groups.empty()) {
      return;
    }
    Heading("report.decide-first");
    for (const Findings& group : groups) {
      if (group.size() == 1) {
        const SFinding& finding = *group.front();
        output_.LeftAndRight(Visible(finding.path), Judgement(finding));
        WriteSentence(finding, "");
        continue;
      }
      output_.Line(Visible(PlaceOf(*group.front())));
      for (const SFinding* finding : group) {
        WriteSentence(*finding, std::string(NameOf(finding->attribute)) + " (" + Judgement(*finding) + "): ");
      }
    }
  }

  void WriteAll() {
    const SFinding* last = nullptr;
    for (const SFinding& finding : review_.findings) {
      if (last == nullptr || last->kind != finding.kind) {
        Heading("report.kind." + std::string(NameOf(finding.kind)));
      }
      WriteOne(finding);
      last = &finding;
    }
  }

 private:
  void Heading(std::string_view key) {
    output_.EmptyLine();
    output_.Line(words_.Text(key), EStyle::kHeading);
  }

  static std::string Visible(std::string_view text) { return CStringHelper::ToVisible(std::string(text)); }

  void WriteSentence(const SFinding& finding, const std::string& before) {
    output_.Labelled(Label(finding), StyleOf(finding.risk), before + ToVisible(sentences_.Of(finding)));
  }

  static std::string Label(const SFinding& finding) {
    return finding.accepted != nullptr ? "label.accepted" : "label." + std::string(NameOf(finding.risk));
  }

  /// By which rule, whose change, whether it is new, and whether the check's report leaves it out.
  std::string Judgement(const SFinding& finding) const {
    std::string judgement(finding.rule->name);
    const auto add = [&](const std::string& key) { judgement += ", " + std::string(words_.Text(key)); };
    add("origin." + std::string(NameOf(finding.origin)));
    if (finding.since.has_value() && *finding.since != ESince::kKnown) {
      add("since." + std::string(NameOf(*finding.since)));
    }
    return judgement + (finding.reported ? "" : " *");
  }

  void WriteOne(const SFinding& finding) {
    const bool isToldAbove = IsToDecide(finding);
    const EStyle style = finding.accepted != nullptr ? EStyle::kFaint : StyleOf(finding.risk);
    const std::string path = Visible(finding.path);
    const std::string change = Change(finding, isToldAbove);
    const std::string judgement = Judgement(finding);
    const std::string pathAndChange = change.empty() ? path : path + "  " + change;
    // Where the sentence does not follow, values that are too long for the line get one of their own.
    const bool fits = DisplayWidth(pathAndChange) + DisplayWidth(judgement) + 2 <= output_.WidthBesideLabels();
    output_.LabelledLeftAndRight(Label(finding), style, fits ? pathAndChange : path, judgement);
    if (!isToldAbove) {
      output_.Indented(ToVisible(sentences_.Of(finding)));
    } else if (!fits) {
      output_.Indented(change);
    }
    if (finding.accepted != nullptr) {
      output_.Indented(ToVisible(AcceptanceSentence(words_, *finding.accepted)));
    }
  }

  /// The values of an attribute; of anything else what becomes of it, unless a sentence says so.
  std::string Change(const SFinding& finding, bool isToldAbove) const {
    if (finding.change != EChange::kChanged) {
      return isToldAbove ? std::string(words_.Text(StateKey(finding))) : std::string();
    }
    const bool hasOtherBase = finding.origin == EOrigin::kBoth && finding.base.has_value();
    return ToVisible(FillIn(words_.Text(hasOtherBase ? "report.was" : "report.changes"), [&](std::string_view name) {
      const std::optional<Value>& value = name == "client"     ? finding.client
                                          : name == "original" ? finding.original
                                                               : finding.base;
      return value.has_value() ? ValueWords(words_, *value) : Sentence();
    }));
  }

  static std::string_view StateKey(const SFinding& finding) {
    const bool isOld = finding.origin == EOrigin::kVendor || finding.origin == EOrigin::kBoth;
    if (finding.change == EChange::kInserted) {
      return isOld ? "state.withdrawn" : "state.stays";
    }
    const bool wasRemoved = finding.origin == EOrigin::kCustomer || finding.origin == EOrigin::kBoth;
    return wasRemoved ? "state.comes-back" : "state.new";
  }

  const SReview& review_;
  const CWords& words_;
  CTextOutput& output_;
  CFindingSentences sentences_;
};

}  // namespace

void WriteFindings(const SReview& review, const CWords& words, CTextOutput& output) {
  CTextFindings findings(review, words, output);
  findings.WriteToDecide();
  findings.WriteAll();
}

}  // namespace metareview
