#include "upgradesrv/review/ReviewUpgrade.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptjson/JsonObject.h"
#include "metareview2024/Totals.h"
#include "metareview2024/render/ReviewReader.h"
#include "metareview2024/words/NoteSentence.h"
#include "upgrademeta2024/storage/MetaLocation.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/chain/UpgradeFiles.h"
#include "upgradesrv/review/ReviewLanguage.h"
#include "upgradesrv/review/ReviewOutputs.h"

namespace upgradesrv {
namespace {

using metareview::CWords;
using metareview::EKind;
using metareview::SReview;

std::optional<metareview::ERisk> ParseLevel(const std::string& level) {
  if (level == "never") {
    return std::nullopt;
  }
  std::string names;
  for (const metareview::ERisk risk : metareview::kRisks) {
    if (level == NameOf(risk)) {
      return risk;
    }
    names += std::string(NameOf(risk)) + ", ";
  }
  throw CTrouble("--fail-on: unknown level \"" + level + "\"; the levels are " + names + "never");
}

std::vector<EKind> ParseKinds(const std::optional<std::vector<std::string>>& names) {
  if (!names) {
    return {metareview::kKinds.begin(), metareview::kKinds.end()};
  }
  std::vector<EKind> kinds;
  for (const EKind kind : metareview::kKinds) {
    if (std::find(names->begin(), names->end(), NameOf(kind)) != names->end()) {
      kinds.push_back(kind);
    }
  }
  return kinds;
}

/// The members of upgrade.json that name metamodels.
constexpr std::array<const char*, 3> kMetamodelMembers = {"original_metamodel", "client_metamodel", "base_metamodel"};

/// What stands in quotation marks in the text, and between them: some of it may be a metamodel location.
std::vector<std::string> QuotedTexts(const std::string& text) {
  std::vector<std::string> texts;
  std::size_t begin = 0;
  for (std::size_t end = text.find('"'); end != std::string::npos; end = text.find('"', begin)) {
    texts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return texts;
}

/// The files that an argument leads to, whatever it was meant for: a file, a metamodel location or an upgrade
/// directory.
std::vector<std::string> FilesNamedBy(const std::string& argument) {
  std::vector<std::string> files = {argument, argument + kConfigurationFile, argument + kDecisionsFile,
                                    argument + kDisplayTextsFile, argument + kLogConfigurationFile};
  const auto add = [&files](const auto& getFiles) {
    try {
      const std::vector<std::string> more = getFiles();
      files.insert(files.end(), more.begin(), more.end());
    } catch (const std::exception&) {
      // It leads to no others.
    }
  };
  add([&argument] { return OpenMetaStorage(argument)->GetFiles(); });
  // Whatever else may be wrong with upgrade.json.
  for (const char* member : kMetamodelMembers) {
    add([&argument, member] {
      CJsonObject upgrade;
      upgrade.CreateFromFile(argument + kConfigurationFile);
      return OpenMetaStorage(ResolveMetaLocation(upgrade.GetStringValue(member), argument))->GetFiles();
    });
  }
  // It may be no JSON at all, or name a metamodel twice.
  std::vector<std::string> texts;
  try {
    texts = QuotedTexts(kvx::ReadFile(argument + kConfigurationFile));
  } catch (const std::exception&) {
    // There is none.
  }
  for (const std::string& text : texts) {
    add([&] { return OpenMetaStorage(ResolveMetaLocation(text, argument))->GetFiles(); });
  }
  return files;
}

/// The review that an option names.
SReview ReadSaved(const std::string& option, const std::string& file) {
  const std::string text = kvx::ReadFile(file);
  try {
    return metareview::ReadReview(text, file);
  } catch (const CKVXException& error) {
    throw CTrouble(option + " takes a whole review, saved by -o json: " + error.what());
  }
}

constexpr const char* kScript = "sql";

class CReview {
 public:
  explicit CReview(const SReviewArguments& arguments)
      : arguments_(arguments), outputs_(arguments.outputs, arguments.outputOption) {}

  EExitStatus Run() {
    try {
      return Write(arguments_.from ? ReadAgain() : Make());
    } catch (const std::bad_alloc&) {
      WriteFailed("out of memory");
      throw;
    } catch (const std::exception& error) {
      WriteFailed(CTrouble(error.what()).what());
      throw;
    }
  }

 private:
  /// Trouble may have come before all inputs were known.
  void WriteFailed(const std::string& problem) {
    const SConfigurationOverrides& overrides = arguments_.sources.overrides;
    for (const std::optional<std::string>& argument :
         {std::optional(arguments_.sources.directory), overrides.originalLocation, overrides.clientLocation,
          overrides.baseLocation, arguments_.sources.decisions, arguments_.against, arguments_.from,
          arguments_.data.location}) {
      if (argument && !argument->empty()) {
        outputs_.Protect(FilesNamedBy(*argument));
      }
    }
    if (arguments_.foregoing) {
      try {
        outputs_.Protect(arguments_.foregoing->getFiles());
      } catch (const std::exception&) {
        // They are not known.
      }
    }
    outputs_.WriteFailed(problem, arguments_.sources.directory, *words_);
  }

  SReview ReadAgain() {
    ProtectInputs({*arguments_.from});
    if (outputs_.Has(kScript)) {
      throw CTrouble(arguments_.outputOption + " " + kScript +
                     ": a saved review does not say where values are stored; leave out --from");
    }
    words_ = &WordsFor(arguments_.sources.overrides.lang.value_or("en"));
    SReview review = ReadSaved("--from", *arguments_.from);
    RequireEarlier(review.against.has_value());
    return review;
  }

  SReview Make() {
    const std::string directory = arguments_.sources.directory;
    ProtectInputs({directory + kConfigurationFile, arguments_.sources.decisions.value_or(directory + kDecisionsFile),
                   directory + kDisplayTextsFile, directory + kLogConfigurationFile, arguments_.against.value_or(""),
                   arguments_.data.location.value_or("")});
    RequireEarlier(arguments_.against.has_value());
    const CReviewSources sources(arguments_.sources);
    ProtectInputs(sources.GetFiles());
    RequireUse();
    stored_.emplace(arguments_.data, sources.GetClientLocation());
    ProtectInputs(stored_->GetFiles());
    if (arguments_.foregoing) {
      ProtectInputs(arguments_.foregoing->getFiles());
    }
    words_ = &WordsFor(sources.GetLang());
    const metareview::SDecisions decisions = sources.ReadDecisions();
    std::optional<SReview> earlier;
    if (arguments_.against) {
      earlier = ReadSaved("--against", *arguments_.against);
    }

    const LoadedMetamodels2024 loaded = arguments_.foregoing ? RunForegoing() : LoadedMetamodels2024();
    SComparedMetamodels compared = sources.Compare(ParseKinds(arguments_.elements), loaded);
    SReview& review = compared.review;
    for (const metareview::ENote note : review.notes) {
      WriteNote(metareview::NoteSentence(*words_, note));
    }
    SetRuleRisks(decisions, review);
    if (stored_->IsWanted() || outputs_.Has(kScript)) {
      review.lookups = std::make_shared<const metareview::SLookups>(MakeLookups(review, *compared.client));
    }
    if (stored_->IsWanted()) {
      stored_->Count(*review.lookups, review);
    }
    ApplyDecisions(decisions, sources.GetToday(), review);
    if (earlier) {
      review.against = arguments_.against;
      CompareWithEarlier(*earlier, review);
    }
    return std::move(compared.review);
  }

  /// A strategy can end the process; then nothing comes after it that could replace an earlier review.
  LoadedMetamodels2024 RunForegoing() const {
    outputs_.WriteUnfinished(arguments_.sources.directory, *words_);
    return arguments_.foregoing->run();
  }

  /// An option that has nothing to do may be meant for something that is missing.
  void RequireUse() const {
    const bool hasScript = outputs_.Has(kScript);
    if (arguments_.data.dialect && !hasScript) {
      throw CTrouble("--dialect: there is no script; ask for one with -o sql=FILE");
    }
    if (arguments_.data.timeout && !hasScript && !arguments_.data.location) {
      throw CTrouble("--data-timeout: nothing is counted; name a database with --data LOCATION");
    }
  }

  /// What cannot be granted is refused before the inputs are read.
  void ProtectInputs(const std::vector<std::string>& files) {
    outputs_.Protect(files);
    outputs_.RequireValid();
    level_ = ParseLevel(arguments_.failOn);
  }

  void RequireEarlier(bool isThere) const {
    if (arguments_.onlyNew && !isThere) {
      throw CTrouble("--new: there is no earlier review; name it with --against REVIEW.json");
    }
  }

  EExitStatus Write(const SReview& review) const {
    metareview::SRenderOptions options;
    options.words = words_;
    options.isTableOnly = arguments_.isTableOnly;
    options.failOn = level_;
    options.onlyNew = arguments_.onlyNew;
    if (stored_) {
      options.dialect = stored_->GetDialect();
      options.timeout = std::chrono::ceil<std::chrono::seconds>(stored_->GetTimeout());
    }
    outputs_.Write(review, options);
    const bool counts = std::any_of(
        review.findings.begin(), review.findings.end(),
        [this](const metareview::SFinding& finding) { return Counts(finding, level_, arguments_.onlyNew); });
    return counts ? kDifferencesReported : kNothingToReport;
  }

  const SReviewArguments& arguments_;
  CReviewOutputs outputs_;
  std::optional<metareview::ERisk> level_;
  std::optional<CStoredValues> stored_;
  const CWords* words_ = &CWords::English();
};

}  // namespace

EExitStatus ReviewUpgrade(const SReviewArguments& arguments) {
  return CReview(arguments).Run();
}

void RefuseReview(const std::vector<std::string>& outputs, const std::vector<std::string>& arguments,
                  const std::string& problem) {
  CReviewOutputs files(outputs);
  std::string directory;
  for (const std::string& argument : arguments) {
    const std::size_t equals = argument.rfind("--", 0) == 0 ? argument.find('=') : std::string::npos;
    const std::string value = equals != std::string::npos ? argument.substr(equals + 1) : argument;
    files.Protect(FilesNamedBy(value));
    std::error_code error;
    if (std::filesystem::is_directory(value, error)) {
      directory = value;
    }
  }
  files.WriteFailed(problem, directory, CWords::English());
}

}  // namespace upgradesrv
