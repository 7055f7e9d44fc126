#include "upgradesrv/commands/ReviewCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>
#include <vector>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/commands/ReviewSourceOptions.h"
#include "upgradesrv/review/ReviewUpgrade.h"

namespace upgradesrv {
void DefineReview(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SReviewArguments>();
  SReviewArguments& arguments = *owner;
  CLI::App& review = *parent.add_subcommand("review", "Show every difference and what it means for the installation");
  CLI::Option* directory =
      review.add_option("UPGRADE_DIR", arguments.sources.directory, "The upgrade configuration directory");
  AddReviewSources(review, arguments.sources);
  AddText(review, "--lang", arguments.sources.overrides.lang,
          "Language of the review, for example en; default: that of upgrade.json")
      ->type_name("CODE");
  AddKinds(review, arguments.elements, "Kinds to compare; default: class,link,behavior");
  AddText(review, "--against", arguments.against, "An earlier review, saved as JSON, to mark what is new since")
      ->type_name("REVIEW.json");
  AddText(review, "--data", arguments.data.location,
          "The installation's database, to count what differences touch there; or NAME.csv, what the script of -o sql "
          "has counted")
      ->type_name("LOCATION");
  AddSeconds(review, "--data-timeout", arguments.data.timeout,
             "Count no longer than this in a table; default: 30. The script keeps to it on PostgreSQL");
  AddText(review, "--dialect", arguments.data.dialect,
          "Of the script of -o sql: sqlite or postgresql; default: that of the database of --data, else of the client "
          "metamodel, else postgresql")
      ->type_name("DIALECT");
  CLI::Option* from =
      AddText(review, "--from", arguments.from, "A review saved as JSON, to write it again; nothing else is read")
          ->type_name("REVIEW.json");
  review
      .add_option("--fail-on", arguments.failOn,
                  "Findings of this risk or a worse one count: loss, block, attention, safe; or never")
      ->type_name("LEVEL")
      ->capture_default_str();
  review.add_flag("--new", arguments.onlyNew, "With --against: only new and changed findings count");
  CLI::Option* output = AddFormats(review, "-o,--output", arguments.outputs, "Format of the review");
  review.add_flag("--stat", arguments.isTableOnly,
                  "Of the text report only the table of counts; other formats are written whole");
  AddLoadingOptions(review, request);
  RequireValues(review);
  review.footer(
      "Exit status: 0 no finding counts, 1 a finding counts, 2 the review failed. Accepted findings never count. After "
      "a\n"
      "failure every FILE of -o says that the review failed.\n"
      "\n"
      "  upgradesrv review DIR                                  what has to be decided, and all differences\n"
      "  upgradesrv review --stat DIR                           how many, by kind and risk\n"
      "  upgradesrv review -o json=today.json -o csv=today.csv DIR\n"
      "  upgradesrv review --against yesterday.json --new --fail-on block DIR\n"
      "  upgradesrv review --data plm.db DIR                    how many stored values each difference touches\n"
      "  upgradesrv review -o sql=data.sql DIR                  a script for a database administrator, which counts "
      "them\n"
      "  upgradesrv review --from today.json --fail-on never --lang de\n"
      "\n" +
      std::string(kLocationHelp));
  review.callback([&review, &request, owner, directory, from] {
    for (const char* other : {"UPGRADE_DIR", "--original", "--client", "--base", "--decisions", "--today", "--elements",
                              "--against", "--data", "--data-timeout", "--dialect"}) {
      if (from->count() != 0 && review.get_option(other)->count() != 0) {
        throw CLI::ValidationError("--from",
                                   "takes no " + std::string(other) + "; a saved review is written again as it is");
      }
    }
    if (directory->count() == 0 && from->count() == 0) {
      throw CLI::RequiredError("UPGRADE_DIR");
    }
    request.action = [owner] { return ReviewUpgrade(*owner); };
  });
  request.refusals[&review] = [output](const std::string& problem, const std::vector<std::string>& given) {
    RefuseReview(output->results(), given, problem);
  };
}

}  // namespace upgradesrv
