#include "upgradesrv/commands/CopyCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ProtectedFiles.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Trouble.h"
#include "upgradesrv/commands/CommandOptions.h"

namespace upgradesrv {
namespace {

struct SCopyArguments {
  std::string source;
  std::string target;
  bool replace = false;
};

EExitStatus CopyMetamodel(const SCopyArguments& arguments) {
  const std::unique_ptr<CMetaStorage> from = OpenMetaStorage(arguments.source);
  const std::unique_ptr<CMetaStorage> to = OpenMetaStorage(arguments.target);
  // Copied onto itself under its own name a metamodel is what it was; under another it might become a file of another
  // kind.
  const bool isOntoItself = from->Describe() == to->Describe();
  const kvx::CProtectedFiles read(isOntoItself ? std::vector<std::string>() : from->GetFiles());
  try {
    // The source first: whoever were advised --replace must not meet the next error.
    const auto metamodel = from->Load();
    if (!arguments.replace) {
      // Nothing is to be written only to be refused; Save() looks again.
      to->RequireNothingThere();
    }
    to->Save(*metamodel, arguments.replace ? EExistingMeta::kReplace : EExistingMeta::kRefuse);
  } catch (const CKVXException& error) {
    if (error.GetCode() == kvx::kMetamodelExists) {
      throw CTrouble(error.what() + std::string(isOntoItself ? "; it is the source itself, so there is nothing to copy"
                                                             : "; give --replace to replace it"));
    }
    throw;
  }
  return kNothingToReport;
}

}  // namespace

void DefineMetamodelCopy(CLI::App& parent, SRequest& request) {
  const auto arguments = std::make_shared<SCopyArguments>();
  CLI::App& copy = *parent.add_subcommand("copy", "Copy a metamodel to a document or a database");
  copy.add_option("SOURCE", arguments->source, "The metamodel to read")->required();
  copy.add_option("TARGET", arguments->target, "Where to write it")->required();
  copy.add_flag("--replace", arguments->replace, "Replace a target that exists");
  AddLoadingOptions(copy, request);
  RequireValues(copy);
  copy.footer(kLocationHelp);
  copy.callback([arguments, &request] { request.action = [arguments] { return CopyMetamodel(*arguments); }; });
}

}  // namespace upgradesrv
