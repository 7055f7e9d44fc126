#include "metareview2024/render/ExplainText.h"

#include <algorithm>
#include <string>
#include <vector>

#include "metareview2024/render/TextLayout.h"
#include "metareview2024/render/TextOutput.h"
#include "metareview2024/words/RuleWords.h"
#include "metareview2024/words/Sentence.h"

namespace metareview {

namespace {

std::string RiskWord(const CWords& words, ERisk risk) {
  return std::string(words.Text("risk." + std::string(NameOf(risk))));
}

/// The risk that the decisions set for a rule; null where they set none.
const SRuleDecision* FindDecision(const SDecisions& decisions, const SRule& rule) {
  const auto found = std::find_if(decisions.rules.begin(), decisions.rules.end(),
                                  [&](const SRuleDecision& decision) { return decision.rule == &rule; });
  return found == decisions.rules.end() ? nullptr : &*found;
}

ERisk RiskOf(const SRule& rule, const SRuleDecision* decision) {
  return decision == nullptr ? rule.risk : decision->risk;
}

/// That a decision has set the risk; empty where none has.
std::string DecidedText(const CWords& words, const SRule& rule, const SRuleDecision* decision) {
  const Placeholders own = {{"own", AsWords(RiskWord(words, rule.risk))}};
  return decision == nullptr ? "" : Plain(FillIn(words.Text("explain.decided"), own));
}

/// Stands for the values that a finding would have.
std::string Sample(const CWords& words, std::string_view text) {
  return Plain(FillIn(text, [&](std::string_view name) {
    const std::string_view kind = name.substr(0, name.find('.'));
    if (kind != "element" && kind != "Element") {
      return AsWords(words.Text("sample." + std::string(name)));
    }
    const std::string_view form = name == "Element" ? ".start" : name.substr(kind.size());
    return FillIn(words.Text("thing.class" + std::string(form)), {{"name", AsWords(words.Text("sample.element"))}});
  }));
}

class CRuleText {
 public:
  CRuleText(const SRule& rule, const CWords& words, const Sink& sink)
      : rule_(rule), words_(words), output_(words, false, sink) {}

  void Write(const SRuleDecision* decision) {
    const ERisk risk = RiskOf(rule_, decision);
    output_.Line(std::string(rule_.name) + ": " + std::string(Text("name")));
    std::vector<std::string> about = {RiskWord(words_, risk) + ": " +
                                      std::string(words_.Text("meaning." + std::string(NameOf(risk))))};
    if (decision != nullptr) {
      about.push_back(DecidedText(words_, rule_, decision));
    }
    Section("explain.risk", about);
    if (const SRuleWords* ruleWords = FindRuleWords(rule_.name); ruleWords != nullptr) {
      Section("explain.happens", Happens(*ruleWords));
      if (ruleWords->isCounted) {
        Section("explain.counted",
                {Sample(words_, words_.Text(Key("counted"), kMany)), Sample(words_, Text("counted.none"))});
      }
    }
    Section("explain.why", {std::string(Text("why"))});
    Section("explain.todo", {std::string(Text("todo"))});
    output_.Flush();
  }

 private:
  // Chooses the plural form that has the number in it.
  static constexpr std::uint64_t kMany = 2;

  std::string Key(std::string_view part) const { return std::string(rule_.name) + "." + std::string(part); }
  std::string_view Text(std::string_view part) const { return words_.Text(Key(part)); }

  std::vector<std::string> Happens(const SRuleWords& ruleWords) const {
    std::vector<std::string> sentences;
    for (const SVariant* variant : ruleWords.variants) {
      sentences.push_back(Sample(words_, words_.Text(Key("happens" + std::string(variant->suffix)), kMany)));
    }
    // The plain sentence is tried last, and is what a reader wants first.
    if (ruleWords.variants.back()->suffix.empty()) {
      std::rotate(sentences.begin(), sentences.end() - 1, sentences.end());
    }
    return sentences;
  }

  void Section(std::string_view heading, const std::vector<std::string>& sentences) {
    constexpr std::size_t kIndentation = 2;
    output_.EmptyLine();
    output_.Line(words_.Text(heading));
    for (const std::string& sentence : sentences) {
      for (const std::string& line : WrapText(sentence, kTextWidth - kIndentation)) {
        output_.Line(std::string(kIndentation, ' ') + line);
      }
    }
  }

  const SRule& rule_;
  const CWords& words_;
  CTextOutput output_;
};

}  // namespace

void WriteRules(const CWords& words, const SDecisions& decisions, const Sink& sink) {
  constexpr std::size_t kGap = 2;
  std::size_t ruleWidth = 0;
  std::size_t riskWidth = 0;
  for (const SRule* rule : Rules()) {
    ruleWidth = std::max(ruleWidth, rule->name.size() + kGap);
  }
  for (const ERisk risk : kRisks) {
    riskWidth = std::max(riskWidth, DisplayWidth(RiskWord(words, risk)) + kGap);
  }
  CTextOutput output(words, false, sink);
  for (const SRule* rule : Rules()) {
    const SRuleDecision* decision = FindDecision(decisions, *rule);
    const std::string decided = DecidedText(words, *rule, decision);
    output.Line(
        PadRight(std::string(rule->name), ruleWidth) + PadRight(RiskWord(words, RiskOf(*rule, decision)), riskWidth) +
        std::string(words.Text(std::string(rule->name) + ".name")) + (decided.empty() ? "" : " (" + decided + ")"));
  }
  output.EmptyLine();
  output.Line(words.Text("explain.hint"));
  output.Flush();
}

void WriteRule(const SRule& rule, const CWords& words, const SDecisions& decisions, const Sink& sink) {
  CRuleText(rule, words, sink).Write(FindDecision(decisions, rule));
}

}  // namespace metareview
