#pragma once

#include <string>

#include "metareview2024/words/Sentence.h"

namespace metareview::page {

/// A sentence as HTML: words as they are, each value as its text is shown, in an element that keeps its direction of
/// writing from the words around it.
std::string SentenceHtml(const Sentence& sentence);

}  // namespace metareview::page
