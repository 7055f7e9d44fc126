#include "upgradesrv/review/ReviewRun.h"

#include <memory>

#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/chain/CheckStrategy.h"
#include "upgradesrv/chain/RunInputs.h"
#include "upgradesrv/chain/StrategyModule.h"
#include "upgradesrv/review/ReviewUpgrade.h"

namespace upgradesrv {
namespace {

std::vector<std::string> FilesOfRun(const SRunArguments& arguments) {
  const CUpgradeConfiguration configuration(arguments.directory, arguments.overrides);
  CUpgradeContext context;
  configuration.FillContext(context);
  std::vector<std::string> directories = arguments.moduleDirectories;
  directories.push_back(DefaultModuleDirectory());
  std::vector<std::string> files;
  for (const SStrategyConfiguration& strategy : configuration.GetStrategies()) {
    for (const std::string& directory : directories) {
      files.push_back(directory + "/" + ModuleFile(strategy.module));
    }
  }
  files.push_back(CheckDocument(context));
  return RunInputs(context, files);
}

}  // namespace

EExitStatus RunAndReview(const SRunArguments& arguments, const std::vector<std::string>& outputs) {
  EExitStatus status = kNothingToReport;
  SForegoing foregoing;
  foregoing.getFiles = [&arguments] { return FilesOfRun(arguments); };
  foregoing.run = [&arguments, &status] {
    SRunArguments run = arguments;
    run.kept = std::make_shared<LoadedMetamodels2024>();
    status = RunUpgrade(run);
    return *run.kept;
  };

  SReviewArguments review;
  review.sources.directory = arguments.directory;
  review.sources.overrides = arguments.overrides;
  review.elements = arguments.overrides.elements;
  review.outputs = outputs;
  review.outputOption = "--review";
  review.foregoing = foregoing;
  ReviewUpgrade(review);
  return status;
}

}  // namespace upgradesrv
