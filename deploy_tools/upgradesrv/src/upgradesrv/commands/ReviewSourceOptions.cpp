#include "upgradesrv/commands/ReviewSourceOptions.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/review/ReviewSources.h"

namespace upgradesrv {

void AddReviewSources(CLI::App& app, SReviewSources& sources) {
  AddMetamodels(app, sources.overrides);
  AddText(
      app, "--base", sources.overrides.baseLocation,
      "The metamodel as shipped with the version in use, to tell who made a difference; default: that of upgrade.json")
      ->type_name("LOCATION");
  AddText(app, "--decisions", sources.decisions, "File of decisions; default: UPGRADE_DIR/decisions.json")
      ->type_name("FILE");
  AddText(app, "--today", sources.today, "The day to take for today, YYYY-MM-DD")->type_name("DATE");
}

}  // namespace upgradesrv
