#include "upgradesrv/commands/ReviewSourceOptions.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "upgradesrv/commands/CommandOptions.h"
#include "upgradesrv/review/ReviewSources.h"

namespace upgradesrv {

void AddReviewSources(CLI::App& app, SReviewSources& sources) {
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

}  // namespace upgradesrv
