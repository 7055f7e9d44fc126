#pragma once

#include <string>

#include "metareview2024/words/Words.h"

namespace upgradesrv {

/// The words of a language; for a code that there are none for English ones, which a note says.
const metareview::CWords& WordsFor(const std::string& lang);

}  // namespace upgradesrv
