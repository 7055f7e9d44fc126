#pragma once

namespace CLI {
class App;
}

namespace upgradesrv {

struct SReviewSources;

/// Adds the options that name what a review is made from. `sources` outlives the command.
void AddReviewSources(CLI::App& app, SReviewSources& sources);

}  // namespace upgradesrv
