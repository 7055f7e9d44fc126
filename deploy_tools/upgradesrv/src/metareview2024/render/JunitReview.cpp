#include <tinyxml2.h>

#include <algorithm>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "metareview2024/Path.h"
#include "metareview2024/Totals.h"
#include "metareview2024/render/Elements.h"
#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/Writers.h"
#include "metareview2024/words/FindingSentence.h"
#include "metareview2024/words/Verdict.h"

namespace metareview {

namespace {

void Replace(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

/// Two characters that XML cannot hold are no controls, and not made visible with those.
std::string XmlText(std::string_view text) {
  std::string xml = ShownText(text);
  Replace(xml, "\uFFFE", "\\uFFFE");
  Replace(xml, "\uFFFF", "\\uFFFF");
  return xml;
}

std::string XmlText(const Sentence& sentence) {
  std::string text;
  for (const SPiece& piece : sentence) {
    text += piece.isValue ? XmlText(piece.text) : piece.text;
  }
  return text;
}

enum class EOutcome { kPassed, kFailed, kSkipped };

/// A test case: an element that was compared.
struct SCase {
  std::string name;
  Findings findings;
  EOutcome outcome = EOutcome::kPassed;
};

struct SSuite {
  std::string name;
  std::vector<SCase> cases;

  std::size_t Count(EOutcome outcome) const {
    return static_cast<std::size_t>(
        std::count_if(cases.begin(), cases.end(), [&](const SCase& one) { return one.outcome == outcome; }));
  }
};

class CJunit {
 public:
  CJunit(const SReview& review, const SRenderOptions& options, const Sink& sink)
      : review_(review), options_(options), words_(*options.words), sentences_(words_, review), output_(sink) {}

  void Write() {
    const std::vector<SSuite> suites = review_.complete ? Suites() : std::vector<SSuite>();
    std::size_t tests = 1;
    std::size_t failures = 0;
    std::size_t skipped = 0;
    for (const SSuite& suite : suites) {
      tests += suite.cases.size();
      failures += suite.Count(EOutcome::kFailed);
      skipped += suite.Count(EOutcome::kSkipped);
    }
    const std::size_t errors = review_.complete ? 0 : 1;
    printer_.PushDeclaration(R"(xml version="1.0" encoding="UTF-8")");
    printer_.OpenElement("testsuites");
    PushCounts(review_.directory.empty() ? "upgradesrv review" : "upgradesrv review: " + XmlText(review_.directory),
               tests, failures, errors, skipped);
    WriteReview(errors);
    for (const SSuite& suite : suites) {
      WriteSuite(suite);
    }
    printer_.CloseElement();
    Pass();
    output_.Flush();
  }

 private:
  /// Of a directory: a server may collect the files of several.
  std::string SuiteName(std::string_view name) const {
    return (review_.directory.empty() ? "" : XmlText(review_.directory) + ": ") + std::string(name);
  }

  /// A suite per kind that has elements.
  std::vector<SSuite> Suites() const {
    std::map<EKind, std::unordered_set<std::string>> names;
    std::map<EKind, SSuite> suites;
    const auto add = [&](std::string_view elementPath, Findings findings) {
      const SPath path = ParsePath(elementPath).value_or(SPath());
      SCase one;
      one.name = UniqueName(XmlText(path.element), names[path.kind]);
      one.outcome = OutcomeOf(findings);
      one.findings = std::move(findings);
      SSuite& suite = suites[path.kind];
      suite.name = SuiteName(NameOf(path.kind));
      suite.cases.push_back(std::move(one));
    };
    for (Findings& element : GroupsByElement(AllFindings(review_))) {
      const std::string_view path = ElementPath(*element.front());
      add(path, std::move(element));
    }
    for (const std::string& path : review_.equal) {
      add(path, {});
    }
    std::vector<SSuite> list;
    list.reserve(suites.size());
    for (auto& [kind, suite] : suites) {
      list.push_back(std::move(suite));
    }
    return list;
  }

  /// Names that differ can look the same when they are shown.
  static std::string UniqueName(const std::string& name, std::unordered_set<std::string>& names) {
    std::string unique = name;
    for (int number = 2; !names.insert(unique).second; ++number) {
      unique = name + " (" + std::to_string(number) + ")";
    }
    return unique;
  }

  bool DoesCount(const SFinding& finding) const { return Counts(finding, options_.failOn, options_.onlyNew); }

  EOutcome OutcomeOf(const Findings& findings) const {
    if (std::any_of(findings.begin(), findings.end(), [&](const SFinding* one) { return DoesCount(*one); })) {
      return EOutcome::kFailed;
    }
    const bool isAccepted =
        std::all_of(findings.begin(), findings.end(), [](const SFinding* one) { return one->accepted != nullptr; });
    return isAccepted && !findings.empty() ? EOutcome::kSkipped : EOutcome::kPassed;
  }

  void PushCounts(const std::string& name, std::size_t tests, std::size_t failures, std::size_t errors,
                  std::size_t skipped) {
    printer_.PushAttribute("name", name.c_str());
    printer_.PushAttribute("tests", std::uint64_t{tests});
    printer_.PushAttribute("failures", std::uint64_t{failures});
    printer_.PushAttribute("errors", std::uint64_t{errors});
    printer_.PushAttribute("skipped", std::uint64_t{skipped});
    printer_.PushAttribute("time", "0");
  }

  void OpenCase(const std::string& suite, const std::string& name) {
    printer_.OpenElement("testcase");
    printer_.PushAttribute("classname", suite.c_str());
    printer_.PushAttribute("name", name.c_str());
    printer_.PushAttribute("time", "0");
  }

  /// That the review could be made is a test case, too: it is there whatever was compared, and the one that fails when
  /// nothing was.
  void WriteReview(std::size_t errors) {
    printer_.OpenElement("testsuite");
    PushCounts(SuiteName("review"), 1, 0, errors, 0);
    OpenCase(SuiteName("review"), "complete");
    if (!review_.complete) {
      const std::string problem = XmlText(review_.problem);
      printer_.OpenElement("error");
      printer_.PushAttribute("message", problem.c_str());
      printer_.PushAttribute("type", "failed");
      printer_.PushText(XmlText(VerdictSentence(words_, review_)).c_str());
      printer_.CloseElement();
    }
    printer_.CloseElement();
    printer_.CloseElement();
  }

  void WriteSuite(const SSuite& suite) {
    printer_.OpenElement("testsuite");
    PushCounts(suite.name, suite.cases.size(), suite.Count(EOutcome::kFailed), 0, suite.Count(EOutcome::kSkipped));
    for (const SCase& one : suite.cases) {
      OpenCase(suite.name, one.name);
      WriteOutcome(one);
      printer_.CloseElement();
      Pass();
    }
    printer_.CloseElement();
  }

  void WriteOutcome(const SCase& one) {
    if (one.outcome == EOutcome::kFailed) {
      WriteFailure(one);
    } else if (one.outcome == EOutcome::kSkipped) {
      WriteSkipped(one);
    }
    // What does not make the case fail.
    std::string rest;
    for (const SFinding* finding : one.findings) {
      rest += DoesCount(*finding) ? "" : Told(*finding) + "\n";
    }
    if (!rest.empty()) {
      printer_.OpenElement("system-out");
      printer_.PushText(rest.c_str());
      printer_.CloseElement();
    }
  }

  void WriteFailure(const SCase& one) {
    const SFinding* worst = nullptr;
    std::string text;
    for (const SFinding* finding : one.findings) {
      if (DoesCount(*finding)) {
        text += Told(*finding) + "\n";
        worst = worst == nullptr || finding->risk < worst->risk ? finding : worst;
      }
    }
    printer_.OpenElement("failure");
    printer_.PushAttribute("message", XmlText(sentences_.Of(*worst)).c_str());
    printer_.PushAttribute("type", std::string(NameOf(worst->risk)).c_str());
    printer_.PushText(text.c_str());
    printer_.CloseElement();
  }

  void WriteSkipped(const SCase& one) {
    printer_.OpenElement("skipped");
    printer_.PushAttribute("message", XmlText(AcceptanceSentence(words_, *one.findings.front()->accepted)).c_str());
    printer_.CloseElement();
  }

  std::string Told(const SFinding& finding) const {
    std::string text = "[" + std::string(words_.Text("risk." + std::string(NameOf(finding.risk)))) + "] " +
                       XmlText(finding.path) + "\n    " + XmlText(sentences_.Of(finding));
    if (finding.accepted != nullptr) {
      text += "\n    " + XmlText(AcceptanceSentence(words_, *finding.accepted));
    }
    return text;
  }

  /// Passes on what has been printed.
  void Pass() {
    output_.Write({printer_.CStr(), static_cast<std::size_t>(printer_.CStrSize()) - 1});
    printer_.ClearBuffer(false);
  }

  const SReview& review_;
  const SRenderOptions& options_;
  const CWords& words_;
  const CFindingSentences sentences_;
  tinyxml2::XMLPrinter printer_;
  COutputBuffer output_;
};

}  // namespace

void WriteJunit(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  CJunit(review, options, sink).Write();
}

}  // namespace metareview
