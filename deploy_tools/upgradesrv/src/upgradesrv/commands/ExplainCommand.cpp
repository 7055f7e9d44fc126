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
  CLI::App& explain = *parent.add_subcommand("explain", "Say what a rule of the review means, and what to do");
  explain.add_option("RULE", arguments.rule, "The rule, for example length-shrinks; without it all are listed");
  explain.add_option("--lang", arguments.lang, "Language, for example en")->type_name("CODE")->capture_default_str();
  AddText(explain, "--decisions", arguments.decisions, "A decisions file, which may set risks")->type_name("FILE");
  RequireValues(explain);
  explain.footer(
      "  upgradesrv explain                                     all rules, with their risk\n"
      "  upgradesrv explain length-shrinks                      what happens, why, and what to do\n"
      "  upgradesrv explain --decisions DIR/decisions.json      with the risks that the file sets");
  explain.callback([owner, &request] { request.action = [owner] { return ExplainRules(*owner); }; });
}

}  // namespace upgradesrv
