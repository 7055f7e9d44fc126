// Two metamodels of any content through the whole strategy: the checks with and without a document agree, a metamodel
// has no finding against itself, and what the strategy saves and reports is what the checks found.
#include <algorithm>
#include <filesystem>
#include <list>
#include <vector>

#include "checkmeta2024/CheckMetaStrategy2024.h"
#include "checkmeta2024/Findings.h"
#include "checkmeta2024/MetaKindRow.h"
#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "support/LogCapture.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

using fuzz::Require;
using fuzz::Succeeded;

using Names = std::vector<std::string>;

template <typename Element>
Names NamesOf(const std::list<std::shared_ptr<Element>>& elements) {
  Names names;
  for (const std::shared_ptr<Element>& element : elements) {
    names.push_back(element->GetInternalName());
  }
  return names;
}

Names NamesOf(const CMetaDictionary2024& dictionary, const std::string& kind) {
  return kind == "class"  ? NamesOf(dictionary.GetClasses())
         : kind == "link" ? NamesOf(dictionary.GetLinks())
                          : NamesOf(dictionary.GetBehaviors());
}

/// The names that `others` lacks, in their order.
Names Lacking(const Names& names, const Names& others) {
  Names lacking;
  std::copy_if(names.begin(), names.end(), std::back_inserter(lacking), [&others](const std::string& name) {
    return std::none_of(others.begin(), others.end(), [&name](const std::string& other) {
      return CStringHelper::StringCompare(name, other, /*ignoreCase=*/true) == 0;
    });
  });
  return lacking;
}

class CPairCheck {
 public:
  explicit CPairCheck(test::CUpgradeFolder& folder)
      : client_(OpenMetaStorage(folder.context.GetClientMetaLocation())->Load()),
        original_(OpenMetaStorage(folder.context.GetOriginalMetaLocation())->Load()),
        helper_(folder.handlerContext, folder.context) {}

  /// Checks a kind in both ways; whether it passed.
  bool Check(const test::SMetaKindRow& kind, std::shared_ptr<CJsonObject>& document) {
    const bool passed = CheckWithDocument(kind, document);
    CheckWithoutDocument(kind, passed);
    RequireNames(kind, passed, *document);
    return passed;
  }

 private:
  bool CheckWithDocument(const test::SMetaKindRow& kind, std::shared_ptr<CJsonObject>& document) {
    const test::CLogCapture log;
    const bool passed = (helper_.*kind.checkWithDocument)(document);
    Require(log.Lines().empty(), "a check with a document logs nothing");
    return passed;
  }

  void CheckWithoutDocument(const test::SMetaKindRow& kind, bool passed) {
    const test::CLogCapture log;
    bool answer = false;
    const test::SError error = test::ErrorOf([&] { answer = (helper_.*kind.check)(); });
    if (passed) {
      Require(answer && log.Lines().empty(), "both checks pass", error.message);
    } else {
      Require(error.code == kind.code && error.message == "error 0x" + kind.codeText, "both checks fail",
              error.message);
      Require(!log.Lines().empty(), "a failed check is logged");
    }
  }

  void RequireNames(const test::SMetaKindRow& kind, bool passed, const CJsonObject& document) const {
    const Names client = NamesOf(*client_, kind.kind);
    const Names original = NamesOf(*original_, kind.kind);
    const Names deleted = Lacking(original, client);
    if (passed) {
      Require(deleted.empty(), "no element is deleted from a kind that passed", kind.kind);
      return;
    }
    const std::shared_ptr<CJsonObject> section = document.GetPropertyObjectValue(kind.kind);
    Require(section != nullptr, "a kind that failed is in the document", kind.kind);
    Require(test::Names(*section, kind.deletedKey) == deleted, "the deleted elements are listed", kind.kind);
    Require(test::Names(*section, kind.insertedKey) == Lacking(client, original), "the inserted elements are listed",
            kind.kind);
  }

  std::shared_ptr<CMetaDictionary2024> client_;
  std::shared_ptr<CMetaDictionary2024> original_;
  CCheckMeta2024Helper helper_;
};

void RequireNothingFound(test::CUpgradeFolder& folder) {
  CPairCheck check(folder);
  auto document = std::make_shared<CJsonObject>();
  for (const test::SMetaKindRow& kind : test::MetaKindRows()) {
    Require(check.Check(kind, document), "a metamodel has no finding against itself", kind.kind);
  }
  Require(document->ToText() == "{}", "a check that passed writes nothing", document->ToText());
}

/// What a run of these kinds must save; null when every kind passed. Kinds that are not known are left out.
std::shared_ptr<CJsonObject> Expected(test::CUpgradeFolder& folder, const std::list<std::string>& kinds, bool& passed) {
  CPairCheck check(folder);
  auto document = std::make_shared<CJsonObject>();
  passed = true;
  for (const std::string& kind : kinds) {
    for (const test::SMetaKindRow& row : test::MetaKindRows()) {
      passed = (row.kind != kind || check.Check(row, document)) && passed;
    }
  }
  return document;
}

void RequireRun(test::CUpgradeFolder& folder, const std::shared_ptr<CJsonObject>& parameter) {
  const std::unique_ptr<CUpgradeStrategy> strategy(CreateReflectionClassObject("CCheckMetaStrategy2024"));
  strategy->SetParameter(parameter);
  const test::CLogCapture log;
  const test::SError error = test::ErrorOf([&] { strategy->Invoke(folder.handlerContext, folder.context); });
  const auto [hasKinds, kinds] = parameter->GetPropertyStringArrayValue("execute_elements");
  if (!hasKinds) {
    Require(error.code == kvx::kJsonMemberMissing || error.code == kvx::kJsonWrongType,
            "a run without kinds fails loudly", error.message);
    Require(strategy->GetResult() == nullptr, "a run that failed has no result");
    return;
  }
  Require(Succeeded(error), "a run over two sound metamodels ends normally", error.message);
  bool passed = false;
  const std::shared_ptr<CJsonObject> expected = Expected(folder, kinds, passed);
  const std::string saved = test::ReadFile(folder.ResultPath());
  Require(saved == expected->ToText() + "\n", "what is saved is what was found", saved);
  CJsonObject again;
  again.CreateFromText(saved, "saved");
  const std::shared_ptr<CJsonObject> result = strategy->GetResult();
  Require((result == nullptr) == passed, "there is a result when something was found", saved);
  Require(passed || !result->GetStringValue("error_info").empty(), "the result is a text", saved);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static test::CUpgradeFolder folder;
  static const std::string originalLocation = folder.context.GetOriginalMetaLocation();
  fuzz::CDocuments documents;
  if (!documents.Read(fuzz::Text(data, size))) {
    return 0;
  }
  const std::string client = folder.directory.Write("client.json", documents.Text("client"));
  folder.directory.Write("original.json", documents.Text("original"));
  const auto isSound = [](const std::string& location) {
    return Succeeded(test::ErrorOf([&location] { OpenMetaStorage(location)->Load(); }));
  };
  if (!isSound(client)) {
    return 0;
  }
  folder.context.SetOriginalMetaLocation(client);
  RequireNothingFound(folder);
  folder.context.SetOriginalMetaLocation(originalLocation);
  if (isSound(originalLocation)) {
    RequireRun(folder, documents.Object());
  }
  return 0;
}
