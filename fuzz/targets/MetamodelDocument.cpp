// A metamodel document of any text is refused with its place, or is read and survives being saved and read again.
#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptjson/JsonObject.h"
#include "support/MetaText.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/MetaDictionary2024.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::CTemporaryDirectory directory;
  const std::string text = fuzz::Text(data, size);
  const std::string path = directory.Write("meta.json", text);

  std::shared_ptr<CMetaDictionary2024> dictionary;
  const test::SError error = test::ErrorOf([&] { dictionary = OpenMetaStorage(path)->Load(); });
  if (!fuzz::Succeeded(error)) {
    fuzz::Require(error.code == kvx::kMalformedDocument, "a document can only be malformed", error.message);
    fuzz::Require(error.message.compare(0, path.size() + 1, path + ":") == 0, "the file is named", error.message);
    fuzz::RequireOneLine(error.message);
    return 0;
  }
  fuzz::Require(dictionary != nullptr, "loading never answers with an empty pointer");
  CJsonObject json;
  const test::SError jsonError = test::ErrorOf([&] { json.CreateFromText(text, "text"); });
  fuzz::Require(fuzz::Succeeded(jsonError), "what is read as a metamodel is JSON", jsonError.message);

  const std::string content = test::TextOf(*dictionary);
  const std::string copy = directory.File("copy.json");
  OpenMetaStorage(copy)->Save(*dictionary);
  const std::string saved = test::ReadFile(copy);
  const std::shared_ptr<CMetaDictionary2024> again = OpenMetaStorage(copy)->Load();
  fuzz::Require(test::TextOf(*again) == content, "a saved metamodel reads back as it was", saved);
  OpenMetaStorage(copy)->Save(*again);
  fuzz::Require(test::ReadFile(copy) == saved, "one metamodel has one saved form", saved);
  return 0;
}
