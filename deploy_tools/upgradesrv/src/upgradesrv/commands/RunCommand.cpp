#include "upgradesrv/commands/RunCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/UpgradeRun.h"
#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/review/ReviewRun.h"
#include "upgradesrv/review/ReviewUpgrade.h"

namespace upgradesrv {
namespace {

struct SRunCommand {
  SRunArguments run;
  std::vector<std::string> reviews;
};

std::string HintFor(const SRunArguments& arguments, const std::vector<std::string>& unexpected) {
  if (arguments.overrides.elements &&
      (IsKind(arguments.directory) || std::any_of(unexpected.begin(), unexpected.end(), &IsKind))) {
    return "separate kinds by commas, without spaces";
  }
  return "metamodels are named with --original and --client";
}

EExitStatus Run(const SRunCommand& command) {
  return command.reviews.empty() ? RunUpgrade(command.run) : RunAndReview(command.run, command.reviews);
}

}  // namespace

void DefineRun(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SRunCommand>();
  SRunArguments& arguments = owner->run;
  CLI::App& run = *parent.add_subcommand(
      "run", "Run the strategies that UPGRADE_DIR/upgrade.json lists, such as the metamodel check");
  run.add_option("UPGRADE_DIR", arguments.directory, "The upgrade configuration directory")->required();
  AddText(run, "--lang", arguments.overrides.lang,
          "Language of the report, for example en; default: that of upgrade.json")
      ->type_name("CODE");
  AddMetamodels(run, arguments.overrides);
  AddKinds(run, arguments.overrides.elements, "Kinds to check, in the order given: " + KindNames());
  run.add_option("--module-dir", arguments.moduleDirectories,
                 "Directory to search for modules (libNAME.so) before the default one; may be repeated")
      ->type_name("DIR")
      ->allow_extra_args(false);
  CLI::Option* reviews =
      AddFormats(run, "--review", owner->reviews, "Also write the review of the same metamodels: format");
  AddLoadingOptions(run, request);
  RequireValues(run);
  run.footer(
      "Reports go to standard output; notes and log lines go to standard error.\n"
      "Exit status: 0 nothing to report, 1 differences reported, 2 the run failed. What the review of --review finds\n"
      "does not change it; that a review cannot be made or written does: 2. After status 2 every FILE of --review "
      "says\n"
      "that the review failed.\n"
      "\n"
      "  upgradesrv run DIR                                     check the metamodels that DIR/upgrade.json names\n"
      "  upgradesrv run --client plm.db --elements class DIR    check the classes of another metamodel\n"
      "  upgradesrv run --review html=review.html DIR           also judge every difference\n"
      "\n" +
      std::string(kLocationHelp));
  request.hints[&run] = [owner](const std::vector<std::string>& unexpected) { return HintFor(owner->run, unexpected); };
  run.callback([owner, &request] { request.action = [owner] { return Run(*owner); }; });
  request.refusals[&run] = [reviews](const std::string& problem, const std::vector<std::string>& given) {
    RefuseReview(reviews->results(), given, problem);
  };
}

}  // namespace upgradesrv
