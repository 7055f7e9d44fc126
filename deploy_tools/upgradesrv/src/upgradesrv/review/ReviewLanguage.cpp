#include "upgradesrv/review/ReviewLanguage.h"

#include "metareview2024/words/NoteSentence.h"
#include "upgradesrv/Output.h"

namespace upgradesrv {

const metareview::CWords& WordsFor(const std::string& lang) {
  if (const metareview::CWords* words = metareview::CWords::Find(lang); words != nullptr) {
    return *words;
  }
  WriteNote(metareview::LanguageNote(lang));
  return metareview::CWords::English();
}

}  // namespace upgradesrv
