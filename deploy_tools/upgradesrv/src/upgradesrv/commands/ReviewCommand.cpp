#include "upgradesrv/commands/ReviewCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>
#include <vector>

#include "metareview2024/render/Render.h"
#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/commands/ReviewSourceOptions.h"
#include "upgradesrv/review/ReviewUpgrade.h"

namespace upgradesrv {
namespace {

std::string FormatList() {
  std::string names;
  for (const metareview::SFormat& format : metareview::Formats()) {
    names += (names.empty() ? "" : ", ") + std::string(format.name);
  }
  return names;
}

}  // namespace

void DefineReview(CLI::App& parent, SRequest& request) {
  const auto owner = std::make_shared<SReviewArguments>();
  SReviewArguments& arguments = *owner;
  CLI::App& review = *parent.add_subcommand("review", "Judge every difference, for the decision about the upgrade");
  CLI::Option* directory =
      review.add_option("UPGRADE_DIR", arguments.sources.directory, "The upgrade configuration directory");
  AddReviewSources(review, arguments.sources);
  AddText(review, "--lang", arguments.sources.overrides.lang, "Language of the review, for example en")
      ->type_name("CODE");
  AddKinds(review, arguments.elements, "Kinds of elements to compare; without it all: class,link,behavior");
  AddText(review, "--against", arguments.against, "An earlier review, saved as JSON: tells what is new since")
      ->type_name("REVIEW.json");
  CLI::Option* from = AddText(review, "--from", arguments.from, "Write a saved review again; reads nothing else")
                          ->type_name("REVIEW.json");
  review
      .add_option("--fail-on", arguments.failOn,
                  "The least bad risk that counts for the exit status: loss, block, attention, safe, never")
      ->type_name("LEVEL")
      ->capture_default_str();
  review.add_flag("--new", arguments.onlyNew, "With --against: findings that the earlier review has do not count");
  CLI::Option* output =
      review
          .add_option("-o,--output", arguments.outputs,
                      "A format, on standard output or in a file; may be given several times: " + FormatList())
          ->type_name("FORMAT[=FILE]")
          ->take_all()
          ->allow_extra_args(false);
  review.add_flag("--stat", arguments.isTableOnly, "Of the text report the table of counts alone");
  AddLoadingOptions(review, request);
  RequireValues(review);
  review.footer(
      "Exit status: 0 nothing counts, 1 a finding counts (see --fail-on; accepted ones never do), 2 trouble. With\n"
      "trouble every FILE of -o says that the review failed.\n"
      "\n"
      "  upgradesrv review DIR                                  what has to be decided, and all differences\n"
      "  upgradesrv review --stat DIR                           how many, by kind and risk\n"
      "  upgradesrv review -o json=today.json -o csv=today.csv DIR\n"
      "  upgradesrv review --against yesterday.json --new --fail-on block DIR\n"
      "  upgradesrv review --from today.json --lang de\n"
      "\n" +
      std::string(kLocationHelp));
  review.callback([&review, &request, owner, directory, from] {
    for (const char* other :
         {"UPGRADE_DIR", "--original", "--client", "--base", "--decisions", "--today", "--elements", "--against"}) {
      if (from->count() != 0 && review.get_option(other)->count() != 0) {
        throw CLI::ExcludesError("--from", other);
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
