#include "upgradesrv/commands/ShowCommand.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <cstdint>
#include <list>
#include <memory>
#include <string>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/commands/CommandOptions.h"

namespace upgradesrv {
namespace {

struct SShowArguments {
  std::string location;
  std::string format = "text";
};

struct SCounts {
  std::uint32_t elements = 0;
  std::uint32_t properties = 0;
  std::uint32_t methods = 0;
};

template <typename Element>
SCounts Count(const std::list<std::shared_ptr<Element>>& elements) {
  SCounts counts;
  counts.elements = static_cast<std::uint32_t>(elements.size());
  for (const std::shared_ptr<Element>& element : elements) {
    counts.properties += static_cast<std::uint32_t>(element->GetValues().properties.GetSize());
  }
  return counts;
}

std::string Line(const std::string& kind, const SCounts& counts, const std::string& more = "") {
  std::string line = kind + ":";
  line.resize(12, ' ');
  return line + std::to_string(counts.elements) + " with " + std::to_string(counts.properties) + " properties" + more +
         "\n";
}

std::shared_ptr<CJsonObject> ToJson(const SCounts& counts) {
  auto object = std::make_shared<CJsonObject>();
  object->SetUInt32Value("count", counts.elements);
  object->SetUInt32Value("properties", counts.properties);
  return object;
}

EExitStatus ShowMetamodel(const SShowArguments& arguments) {
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(arguments.location);
  const std::shared_ptr<CMetaDictionary2024> dictionary = storage->Load();
  const SCounts classes = Count(dictionary->GetClasses());
  const SCounts links = Count(dictionary->GetLinks());
  SCounts behaviors = Count(dictionary->GetBehaviors());
  for (const auto& behavior : dictionary->GetBehaviors()) {
    behaviors.methods += static_cast<std::uint32_t>(behavior->GetMethods().size());
  }
  if (arguments.format == "text") {
    // A line end in a path must not look like the next of these lines.
    WriteOutput("source:     " + CStringHelper::ToVisible(storage->Describe()) +
                "\ngeneration: " + std::to_string(CMetaDictionary2024::kGeneration) + "\n" + Line("classes", classes) +
                Line("links", links) +
                Line("behaviors", behaviors, " and " + std::to_string(behaviors.methods) + " methods"));
    return kNothingToReport;
  }
  CJsonObject object;
  object.SetStringValue("source", storage->Describe());
  object.SetUInt32Value("generation", CMetaDictionary2024::kGeneration);
  object.SetObjectValue("classes", ToJson(classes));
  object.SetObjectValue("links", ToJson(links));
  const std::shared_ptr<CJsonObject> behaviorCounts = ToJson(behaviors);
  behaviorCounts->SetUInt32Value("methods", behaviors.methods);
  object.SetObjectValue("behaviors", behaviorCounts);
  WriteOutput(object.ToText() + "\n");
  return kNothingToReport;
}

}  // namespace

void DefineMetamodelShow(CLI::App& parent, SRequest& request) {
  const auto arguments = std::make_shared<SShowArguments>();
  CLI::App& show = *parent.add_subcommand("show", "Show how many elements a metamodel has");
  show.add_option("LOCATION", arguments->location, "The metamodel")->required();
  show.add_option("--format", arguments->format, "text or json")
      ->type_name("FORMAT")
      ->check([](const std::string& format) {
        return std::string(format == "text" || format == "json" ? "" : "must be text or json");
      })
      ->capture_default_str();
  AddLoadingOptions(show, request);
  RequireValues(show);
  show.footer(kLocationHelp);
  show.callback([arguments, &request] { request.action = [arguments] { return ShowMetamodel(*arguments); }; });
}

}  // namespace upgradesrv
