#include "upgradesrv/MetamodelCommands.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/ProtectedFiles.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

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

}  // namespace

EExitStatus ShowMetamodel(const std::string& location, bool json) {
  const std::unique_ptr<CMetaStorage> storage = OpenMetaStorage(location);
  const std::shared_ptr<CMetaDictionary2024> dictionary = storage->Load();
  const SCounts classes = Count(dictionary->GetClasses());
  const SCounts links = Count(dictionary->GetLinks());
  SCounts behaviors = Count(dictionary->GetBehaviors());
  for (const auto& behavior : dictionary->GetBehaviors()) {
    behaviors.methods += static_cast<std::uint32_t>(behavior->GetMethods().size());
  }
  if (!json) {
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

EExitStatus CopyMetamodel(const std::string& source, const std::string& target, bool replace) {
  const std::unique_ptr<CMetaStorage> from = OpenMetaStorage(source);
  const std::unique_ptr<CMetaStorage> to = OpenMetaStorage(target);
  // Copied onto itself under its own name a metamodel is what it was; under another it might become a file of another
  // kind.
  const bool isOntoItself = from->Describe() == to->Describe();
  const kvx::CProtectedFiles read(isOntoItself ? std::vector<std::string>() : from->GetFiles());
  try {
    // Nobody is to wait for a long load only to be refused; Save() looks again. Where there is no source, loading says
    // so: whoever gave --replace would only meet the next error.
    if (!replace && from->Exists()) {
      to->RequireNothingThere();
    }
    to->Save(*from->Load(), replace ? EExistingMeta::kReplace : EExistingMeta::kRefuse);
  } catch (const CKVXException& error) {
    if (error.GetCode() == kvx::kMetamodelExists) {
      throw CTrouble(std::string(error.what()) + "; give --replace to replace it");
    }
    throw;
  }
  return kNothingToReport;
}

}  // namespace upgradesrv
