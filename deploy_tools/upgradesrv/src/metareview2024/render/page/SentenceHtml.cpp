#include "metareview2024/render/page/SentenceHtml.h"

#include <kainjow/mustache.hpp>

#include "metareview2024/render/ShownText.h"

namespace metareview::page {

std::string SentenceHtml(const Sentence& sentence) {
  std::string html;
  for (const SPiece& piece : sentence) {
    if (piece.isValue) {
      html += "<bdi>" + kainjow::mustache::html_escape(ShownText(piece.text)) + "</bdi>";
    } else {
      html += kainjow::mustache::html_escape(piece.text);
    }
  }
  return html;
}

}  // namespace metareview::page
