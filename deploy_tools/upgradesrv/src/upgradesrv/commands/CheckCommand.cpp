#include "upgradesrv/commands/CheckCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <memory>
#include <string>

#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/commands/CommandOptions.h"

namespace upgradesrv {
namespace {

EExitStatus CheckMetamodel(const std::string& location) {
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(location);
  const SMetaFaults faults = storage->Check();
  std::string text;
  for (const std::string& words : faults.words) {
    text += words + "\n";
  }
  if (faults.count > faults.words.size()) {
    text += "and " + std::to_string(faults.count - faults.words.size()) + " more\n";
  }
  text += CStringHelper::ToVisible(storage->Describe()) + ": ";
  if (faults.count == 0) {
    text += "no faults";
  } else {
    text += std::to_string(faults.count) + (faults.count == 1 ? " fault" : " faults");
  }
  text += faults.isWhole ? "\n"
                         : (faults.count == 1 ? "; what comes after it was not checked\n"
                                              : "; what comes after the last was not checked\n");
  WriteOutput(text);
  return faults.count == 0 ? kNothingToReport : kFaultsReported;
}

}  // namespace

void DefineMetamodelCheck(CLI::App& parent, SRequest& request) {
  const auto location = std::make_shared<std::string>();
  CLI::App& check = *parent.add_subcommand("check", "List everything that is wrong with a metamodel");
  check.add_option("LOCATION", *location, "The metamodel")->required();
  AddLoadingOptions(check, request);
  RequireValues(check);
  check.footer(
      "Each fault is a line on standard output, with its place; at most 100 are listed.\n"
      "Exit status: 0 no faults, 1 faults, 2 the metamodel cannot be read.\n"
      "\n"
      "  upgradesrv metamodel check installation.json\n"
      "\n" +
      std::string(kLocationHelp));
  check.callback([location, &request] { request.action = [location] { return CheckMetamodel(*location); }; });
}

}  // namespace upgradesrv
