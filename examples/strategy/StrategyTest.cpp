#include <kvxsptexception/KVXException.h>
#include <kvxsptjson/JsonObject.h>
#include <upgradecontext/HandlerContext.h>
#include <upgradecontext/UpgradeContext.h>

#include <iostream>
#include <memory>
#include <string>

#include "LongTextStrategy.h"

namespace {

/// What the strategy reports of the metamodel in `directory`: empty for nothing.
std::string Report(const std::string& directory, const std::string& lang, const std::string& maxLength) {
  CUpgradeContext upgradeContext;
  upgradeContext.SetUpgradeCfgPath(directory);
  upgradeContext.SetVersionUpgradeCfgPath(".");
  upgradeContext.SetLang(lang);
  upgradeContext.SetClientMetaLocation(directory + "/metamodel.json");
  const auto parameter = std::make_shared<CJsonObject>();
  parameter->SetStringValue("max_length", maxLength);

  CHandlerContext handlerContext;
  CLongTextStrategy strategy;
  strategy.SetParameter(parameter);
  strategy.Invoke(handlerContext, upgradeContext);
  return strategy.GetResult() != nullptr ? strategy.GetResult()->GetStringValue("error_info") : "";
}

bool failed = false;

void Expect(const std::string& what, const std::string& expected, const std::string& actual) {
  if (actual != expected) {
    std::cerr << what << ": expected \"" << expected << "\", got \"" << actual << "\"\n";
    failed = true;
  }
}

}  // namespace

int main(int count, char** arguments) {
  const std::string directory = count == 2 ? arguments[1] : ".";
  try {
    Expect("longer than the limit", "Long texts:\n  Part.Name: 11\n", Report(directory, "en", "10"));
    Expect("in another language", "Lange Texte:\n  Part.Name: 11\n", Report(directory, "de", "10"));
    Expect("in a language without texts", "Long texts:\n  Part.Name: 11\n", Report(directory, "it", "10"));
    Expect("nothing is longer", "", Report(directory, "en", "11"));
  } catch (const CKVXException& error) {
    Expect("no exception", "", error.what());
  }
  try {
    Report(directory, "en", "many");
    Expect("a limit that is no number", "an exception", "none");
  } catch (const CKVXException& error) {
    Expect("a limit that is no number", "max_length: \"many\" is no length; write a whole number", error.what());
  }
  return failed ? 1 : 0;
}
