#include "metareview2024/words/Words.h"

#include "metareview2024/words/catalogues.h"

namespace metareview {

namespace {

std::size_t OneForm(std::uint64_t /*number*/) {
  return 0;
}
std::size_t SingularForOne(std::uint64_t number) {
  return number == 1 ? 0 : 1;
}
std::size_t SingularBelowTwo(std::uint64_t number) {
  return number < 2 ? 0 : 1;
}

constexpr std::string_view kOneForm = "nplurals=1; plural=0;";
constexpr std::string_view kSingularForOne = "nplurals=2; plural=(n != 1);";
constexpr std::string_view kSingularBelowTwo = "nplurals=2; plural=(n > 1);";

constexpr std::string_view kNarrowNoBreakSpace = "\u202F";

}  // namespace

const std::vector<SLanguage>& Languages() {
  // Spanish separates from five digits on.
  static const std::vector<SLanguage> languages = {
      {"en", catalogues::en, kSingularForOne, SingularForOne, ",", 4},
      {"zh", catalogues::zh, kOneForm, OneForm, ",", 4},
      {"de", catalogues::de, kSingularForOne, SingularForOne, ".", 4},
      {"fr", catalogues::fr, kSingularBelowTwo, SingularBelowTwo, kNarrowNoBreakSpace, 4},
      {"ja", catalogues::ja, kOneForm, OneForm, ",", 4},
      {"es", catalogues::es, kSingularForOne, SingularForOne, ".", 5}};
  return languages;
}

}  // namespace metareview
