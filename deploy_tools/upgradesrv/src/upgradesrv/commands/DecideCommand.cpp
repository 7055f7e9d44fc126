#include "upgradesrv/commands/DecideCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/commands/ReviewSourceOptions.h"
#include "upgradesrv/review/DecideFindings.h"

namespace upgradesrv {

void DefineDecide(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SDecideArguments>();
  SDecideArguments& arguments = *owner;
  CLI::App& decide = *parent.add_subcommand("decide", "Record that differences are accepted");
  decide.add_option("UPGRADE_DIR", arguments.sources.directory, "The upgrade configuration directory")->required();
  decide.add_option("PATH", arguments.paths, "Paths of findings, as the review shows them");
  decide.add_option("--reason", arguments.acceptance.reason, "Why they are accepted; required with a PATH")
      ->type_name("TEXT");
  AddText(decide, "--by", arguments.acceptance.by, "Who decided")->type_name("NAME");
  AddText(decide, "--until", arguments.acceptance.until, "Last day on which the decision is valid, YYYY-MM-DD")
      ->type_name("DATE");
  decide.add_flag("--prune", arguments.isPrune,
                  "Remove the entries that no longer match a finding; takes no PATH, --reason, --by or --until");
  AddReviewSources(decide, arguments.sources);
  AddLoadingOptions(decide, request);
  RequireValues(decide);
  decide.footer(
      "Changes UPGRADE_DIR/decisions.json. Exit status: 0 done, 2 failed; then nothing was changed.\n"
      "\n"
      "  upgradesrv decide --reason 'longest number in use has 31' --by m.keller --until 2027-06-30 DIR \\\n"
      "    class/Part/property/Code/length\n"
      "  upgradesrv decide --prune DIR\n"
      "\n" +
      std::string(kLocationHelp));
  decide.callback([owner, &request] { request.action = [owner] { return DecideFindings(*owner); }; });
}

}  // namespace upgradesrv
