#include "metareview2024/words/NoteSentence.h"

#include "metareview2024/words/Sentence.h"

namespace metareview {

std::string NoteSentence(const CWords& words, ENote note) {
  switch (note) {
    case ENote::kBaseEqualsClient:
      return std::string(words.Text("note.base-equals-client"));
    case ENote::kBaseEqualsOriginal:
      return std::string(words.Text("note.base-equals-original"));
    case ENote::kClientHasVendorChanges:
      return std::string(words.Text("note.client-has-vendor-changes"));
  }
  return {};
}

std::string LanguageNote(std::string_view code) {
  return ToVisible(FillIn(CWords::English().Text("note.language"), {{"lang", AsValue(code)}}));
}

}  // namespace metareview
