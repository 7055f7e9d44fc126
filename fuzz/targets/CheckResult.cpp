// Any display dictionary and any check result document: a conversion gives its text or throws CKVXException, and
// nothing of one that threw reaches the text, its own or the next one's.
#include "checkmeta2024/CheckResultConverter.h"

#include <list>

#include "checkmeta2024/MetaKindRow.h"
#include "checkmeta2024/MultiLanguageConfig.h"
#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "support/LogCapture.h"

namespace {

using fuzz::Require;
using fuzz::Succeeded;

bool IsMemberError(const test::SError& error) {
  return (error.code == kvx::kJsonMemberMissing || error.code == kvx::kJsonWrongType) &&
         error.message.find("json member [") == 0;
}

/// Looks up every text of the dictionary in every way.
void LookUp(const std::shared_ptr<CJsonObject>& json, const std::string& language) {
  const CMultiLanguageConfig dictionary(json);
  std::list<std::string> keys;
  json->GetAllKey(keys);
  keys.emplace_back("no such key");
  for (const std::string& key : keys) {
    const test::SError error = test::ErrorOf([&] {
      Require(dictionary.GetDisplayJson(key) != nullptr, "an entry is never an empty pointer", key);
      dictionary.GetDisplayString(language, key);
    });
    Require(Succeeded(error) || IsMemberError(error), "a lookup fails with a member's error", error.message);
    const test::SError listError = test::ErrorOf([&] { dictionary.GetDisplayStrings(key); });
    Require(Succeeded(listError) || IsMemberError(listError), "a lookup fails with a member's error",
            listError.message);
  }
}

class CConversion {
 public:
  CConversion(test::CUpgradeFolder& folder, const CJsonObject& document)
      : document_(document), converter_(folder.handlerContext, folder.context) {}

  /// Appends the text of one kind.
  test::SError Convert(const test::SMetaKindRow& kind, std::string& text) {
    return Convert(kind, document_.GetPropertyObjectValue(kind.kind), text);
  }

  /// The text of a kind in which nothing was found.
  std::string ConvertNothing(const test::SMetaKindRow& kind) {
    std::string text;
    const test::SError error = Convert(kind, std::make_shared<CJsonObject>(), text);
    Require(Succeeded(error), "no finding needs no word", error.message);
    return text;
  }

 private:
  test::SError Convert(const test::SMetaKindRow& kind, const std::shared_ptr<CJsonObject>& section, std::string& text) {
    return test::ErrorOf([&] {
      if (section != nullptr) {
        converter_.ConversionMetaInfo(kind.kind, kind.insertedKey, kind.deletedKey, kind.updatedKey, section, text);
      }
    });
  }

  const CJsonObject& document_;
  CCheckResultConverter converter_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static test::CUpgradeFolder folder;
  fuzz::CDocuments documents;
  CJsonObject document;
  if (!documents.Read(fuzz::Text(data, size)) ||
      !Succeeded(test::ErrorOf([&] { document.CreateFromText(documents.Text("document"), "document"); }))) {
    return 0;
  }
  const std::string dictionary = documents.Text("dictionary");
  const auto dictionaryJson = std::make_shared<CJsonObject>();
  const bool isDictionary = Succeeded(test::ErrorOf([&] { dictionaryJson->CreateFromText(dictionary, "dictionary"); }));
  folder.SetDictionary(dictionary);
  folder.context.SetLang(documents.Text("lang"));
  LookUp(dictionaryJson, folder.context.GetLang());

  const test::CLogCapture log;
  CConversion conversion(folder, document);
  for (const test::SMetaKindRow& kind : test::MetaKindRows()) {
    std::string text = "earlier";
    const test::SError error = conversion.Convert(kind, text);
    if (Succeeded(error)) {
      Require(text.compare(0, 7, "earlier") == 0, "earlier text stays", text);
      std::string again = "earlier";
      CConversion other(folder, document);
      Require(Succeeded(other.Convert(kind, again)) && again == text, "a conversion can be repeated", text);
    } else {
      Require(text == "earlier", "nothing of a failed conversion reaches the text", text);
      Require(IsMemberError(error) || (!isDictionary && error.code == kvx::kMalformedDocument),
              "a conversion fails with a member's error", error.message);
    }
    if (isDictionary) {
      Require(conversion.ConvertNothing(kind) == "\n", "nothing of a conversion reaches the next one", text);
    }
  }
  Require(log.Lines().empty(), "known kinds log nothing");
  return 0;
}
