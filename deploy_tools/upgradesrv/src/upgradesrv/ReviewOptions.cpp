#include "upgradesrv/ReviewOptions.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "metareview2024/render/Render.h"

namespace upgradesrv {
namespace {

CLI::Option* AddText(CLI::App& app, const std::string& name, std::optional<std::string>& value,
                     const std::string& help) {
  return app.add_option_function<std::string>(
      name, [&value](const std::string& given) { value = given; }, help);
}

void AddSources(CLI::App& app, SReviewSources& sources) {
  AddText(app, "--original", sources.overrides.originalLocation,
          "Metamodel as shipped with the upgrade, in place of upgrade.json's")
      ->type_name("LOCATION");
  AddText(app, "--client", sources.overrides.clientLocation, "Metamodel of the installation")->type_name("LOCATION");
  AddText(app, "--base", sources.overrides.baseLocation,
          "Metamodel as shipped with the version that runs now; tells who made a difference")
      ->type_name("LOCATION");
  AddText(app, "--decisions", sources.decisions, "The decisions; without it decisions.json of UPGRADE_DIR")
      ->type_name("FILE");
  AddText(app, "--today", sources.today, "Today's date, YYYY-MM-DD, in place of the clock's")->type_name("DATE");
}

std::string FormatList() {
  std::string names;
  for (const metareview::SFormat& format : metareview::Formats()) {
    names += (names.empty() ? "" : ", ") + std::string(format.name);
  }
  return names;
}

}  // namespace

void DefineReview(CLI::App& app, SReviewOptions& options, bool& quiet, Command& command) {
  SReviewArguments& arguments = options.review;
  CLI::App& review = *app.add_subcommand("review", "Judge every difference, for the decision about the upgrade");
  CLI::Option* directory =
      review.add_option("UPGRADE_DIR", arguments.sources.directory, "The upgrade configuration directory");
  AddSources(review, arguments.sources);
  AddText(review, "--lang", arguments.sources.overrides.lang, "Language of the review, for example en")
      ->type_name("CODE");
  review
      .add_option_function<std::string>(
          "--elements", [&arguments](const std::string& list) { arguments.elements = SplitAtCommas(list); },
          "Kinds of elements to compare; without it all: class,link,behavior")
      ->type_name("KIND[,KIND...]")
      ->check(&ElementsProblem);
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
  review
      .add_option("-o,--output", arguments.outputs,
                  "A format, on standard output or in a file; may be given several times: " + FormatList())
      ->type_name("FORMAT[=FILE]")
      ->take_all()
      ->allow_extra_args(false);
  review.add_flag("--stat", arguments.isTableOnly, "Of the text report the table of counts alone");
  DefineQuiet(review, quiet);
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
  review.callback([&review, &arguments, &command, directory, from] {
    for (const char* other :
         {"UPGRADE_DIR", "--original", "--client", "--base", "--decisions", "--today", "--elements", "--against"}) {
      if (from->count() != 0 && review.get_option(other)->count() != 0) {
        throw CLI::ExcludesError("--from", other);
      }
    }
    if (directory->count() == 0 && from->count() == 0) {
      throw CLI::RequiredError("UPGRADE_DIR");
    }
    command = [&arguments] { return ReviewUpgrade(arguments); };
  });
}

void DefineDecide(CLI::App& app, SReviewOptions& options, bool& quiet, Command& command) {
  SDecideArguments& arguments = options.decide;
  CLI::App& decide = *app.add_subcommand("decide", "Record that differences are accepted");
  decide.add_option("UPGRADE_DIR", arguments.sources.directory, "The upgrade configuration directory")->required();
  decide.add_option("PATH", arguments.paths, "Paths of findings, as the review has them");
  decide.add_option("--reason", arguments.acceptance.reason, "Why they are accepted; required with a PATH")
      ->type_name("TEXT");
  AddText(decide, "--by", arguments.acceptance.by, "Who decided")->type_name("NAME");
  AddText(decide, "--until", arguments.acceptance.until, "The last day that the decision holds, YYYY-MM-DD")
      ->type_name("DATE");
  decide.add_flag("--prune", arguments.isPrune, "Drop the entries that match nothing any more; takes no PATH");
  AddSources(decide, arguments.sources);
  DefineQuiet(decide, quiet);
  RequireValues(decide);
  decide.footer(
      "Writes decisions.json of UPGRADE_DIR. Exit status: 0, or 2 for trouble; then nothing was changed.\n"
      "\n"
      "  upgradesrv decide --reason 'longest number in use has 31' --by m.keller --until 2027-06-30 DIR \\\n"
      "    class/Part/property/Code/length\n"
      "  upgradesrv decide --prune DIR\n"
      "\n" +
      std::string(kLocationHelp));
  decide.callback([&arguments, &command] { command = [&arguments] { return DecideFindings(arguments); }; });
}

void DefineExplain(CLI::App& app, SReviewOptions& options, Command& command) {
  SExplainArguments& arguments = options.explain;
  CLI::App& explain = *app.add_subcommand("explain", "Say what a rule of the review means, and what to do");
  explain.add_option("RULE", arguments.rule, "The rule, for example length-shrinks; without it all are listed");
  explain.add_option("--lang", arguments.lang, "Language, for example en")->type_name("CODE")->capture_default_str();
  AddText(explain, "--decisions", arguments.decisions, "A decisions file, which may set risks")->type_name("FILE");
  RequireValues(explain);
  explain.callback([&arguments, &command] { command = [&arguments] { return ExplainRules(arguments); }; });
}

}  // namespace upgradesrv
