#include "upgradesrv/commands/ExplainCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/review/ExplainRules.h"

namespace upgradesrv {

void DefineExplain(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SExplainArguments>();
  SExplainArguments& arguments = *owner;
  CLI::App& explain = *parent.add_subcommand("explain", "Explain a rule of the review: what it means and what to do");
  explain.add_option("RULE", arguments.rule, "A rule, for example length-shrinks; default: a list of all rules");
  explain.add_option("--lang", arguments.lang, "Language of the explanation")->type_name("CODE")->capture_default_str();
  AddText(explain, "--decisions", arguments.decisions, "File of decisions, which may change the risk of rules")
      ->type_name("FILE");
  RequireValues(explain);
  explain.footer(
      "Exit status: 0 done, 2 failed.\n"
      "\n"
      "  upgradesrv explain                                     all rules, with their risk\n"
      "  upgradesrv explain length-shrinks                      what happens, why, and what to do\n"
      "  upgradesrv explain --decisions DIR/decisions.json      with the risks that the file sets");
  explain.callback([owner, &request] { request.action = [owner] { return ExplainRules(*owner); }; });
}

}  // namespace upgradesrv
