#pragma once

#include <string>
#include <string_view>

#include "metareview2024/words/Sentence.h"

namespace metareview {

/// A value as code, in which nothing is markup, no link and no mention; shown as ShownText() has it. In a table, "|" is
/// kept from ending the cell.
std::string MarkdownCode(std::string_view value, bool isInTable);

/// A sentence whose values are code.
std::string MarkdownText(const Sentence& sentence, bool isInTable);

}  // namespace metareview
