#include "upgradesrv/review/ExplainRules.h"

#include "kvxsptfile/ReadFile.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/render/ExplainText.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/review/ReviewLanguage.h"

namespace upgradesrv {

EExitStatus ExplainRules(const SExplainArguments& arguments) {
  const metareview::CWords& words = WordsFor(arguments.lang);
  const metareview::SDecisions decisions =
      arguments.decisions ? metareview::ParseDecisions(kvx::ReadFile(*arguments.decisions), *arguments.decisions)
                          : metareview::SDecisions();
  const metareview::Sink sink = [](std::string_view text) { WriteOutput(std::string(text)); };
  if (arguments.rule.empty()) {
    WriteRules(words, decisions, sink);
    return kNothingToReport;
  }
  const metareview::SRule* rule = metareview::FindRule(arguments.rule);
  if (rule == nullptr) {
    throw CTrouble("explain: unknown rule \"" + arguments.rule + "\"; upgradesrv explain lists all" +
                   metareview::QuestionAboutRule(arguments.rule));
  }
  WriteRule(*rule, words, decisions, sink);
  return kNothingToReport;
}

}  // namespace upgradesrv
