#include "metareview2024/render/page/Page.h"

#include "metareview2024/render/page/FindingRow.h"
#include "metareview2024/render/page/Selection.h"

namespace metareview::page {

CPage::CPage(const SReview& review, const CWords& words)
    : review_(review),
      words_(words),
      sentences_(words, review),
      shown_(SelectFindings(review, kMaxFindings)),
      places_(GroupsToDecide(shown_)) {
  constexpr std::string_view kPrefix = "page.";
  View pageWords;
  for (const auto& [key, text] : words.WithPrefix(kPrefix)) {
    pageWords[std::string(key.substr(kPrefix.size()))] = std::string(text);
  }
  shared_["words"] = std::move(pageWords);
  shared_["columns"] = Columns(*this);
}

std::string CPage::Count(std::string_view key, std::size_t number) const {
  return Plain(FillIn(words_.Text(key, number), {{"n", AsWords(words_.Number(number))}}));
}

std::string CPage::Filled(std::string_view key, const Placeholders& values) const {
  return Plain(FillIn(words_.Text(key), values));
}

}  // namespace metareview::page
