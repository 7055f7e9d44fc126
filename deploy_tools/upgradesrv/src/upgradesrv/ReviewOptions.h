#pragma once

#include <CLI/App.hpp>

#include "upgradesrv/CommandLineParts.h"
#include "upgradesrv/DecideCommand.h"
#include "upgradesrv/ExplainCommand.h"
#include "upgradesrv/ReviewCommand.h"

namespace upgradesrv {

/// What the command line gives for the review and what belongs to it. One must stay until the command has run.
struct SReviewOptions {
  SReviewArguments review;
  SDecideArguments decide;
  SExplainArguments explain;
};

void DefineReview(CLI::App& app, SReviewOptions& options, bool& quiet, Command& command);
void DefineDecide(CLI::App& app, SReviewOptions& options, bool& quiet, Command& command);
void DefineExplain(CLI::App& app, SReviewOptions& options, Command& command);

}  // namespace upgradesrv
