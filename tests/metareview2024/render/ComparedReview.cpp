#include "metareview2024/render/ComparedReview.h"

#include "kvxsptfile/ReadFile.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/ReviewSteps.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace test {

namespace fs = std::filesystem;

metareview::SReview Compared(const fs::path& client, const fs::path& original, const fs::path& base) {
  metareview::SMetamodels metamodels;
  metamodels.client = OpenMetaStorage(client.string())->Load();
  metamodels.original = OpenMetaStorage(original.string())->Load();
  if (fs::exists(base)) {
    metamodels.base = OpenMetaStorage(base.string())->Load();
  }
  metareview::SReview review = CompareMetamodels(metamodels, {metareview::kKinds.begin(), metareview::kKinds.end()});
  review.client = client;
  review.original = original;
  if (metamodels.base != nullptr) {
    review.base = base;
  }
  return review;
}

metareview::SReview ExampleReview() {
  const fs::path example = UPGRADESRV_SOURCE_DIR "/examples/upgrade";
  metareview::SReview review =
      Compared(example / "installation.json", example / "2024/metamodel.json", example / "2022/metamodel.json");
  const std::string decisions = kvx::ReadFile((example / "decisions.json").string());
  ApplyDecisions(metareview::ParseDecisions(decisions, "decisions.json"), "2026-11-22", review);
  return review;
}

}  // namespace test
