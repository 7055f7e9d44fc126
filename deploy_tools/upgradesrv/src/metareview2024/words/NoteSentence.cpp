#include "metareview2024/words/NoteSentence.h"

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/words/Sentence.h"

namespace metareview {
namespace {

std::string CountNote(const CWords& words, std::string_view key, std::size_t count, std::string_view file) {
  return ToVisible(FillIn(words.Text(key, count), {{"n", AsWords(words.Number(count))}, {"file", AsValue(file)}}));
}

}  // namespace

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

std::string WrittenNote(const CWords& words, std::size_t count, std::string_view file) {
  return CountNote(words, "decide.written", count, file);
}

std::string PrunedNote(const CWords& words, std::size_t count, std::string_view file) {
  return CountNote(words, count == 0 ? "decide.nothing-stale" : "decide.pruned", count, file);
}

std::string LanguageNote(std::string_view code) {
  std::string note = ToVisible(FillIn(CWords::English().Text("note.language"), {{"lang", AsValue(code)}}));
  for (const SLanguage& language : Languages()) {
    if (CStringHelper::StringCompare(std::string(language.code), std::string(code), true) == 0) {
      note.pop_back();
      note.append("; did you mean ").append(language.code).append("?");
    }
  }
  return note;
}

}  // namespace metareview
