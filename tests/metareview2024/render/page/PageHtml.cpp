#include "metareview2024/render/page/PageHtml.h"

#include "metareview2024/render/RenderedReview.h"

namespace test {

std::string PageHtml(const metareview::SReview& review) {
  return Rendered("html", review);
}

std::string Between(const std::string& html, const std::string& begin, const std::string& end) {
  const std::size_t found = html.find(begin);
  if (found == std::string::npos) {
    return "";
  }
  const std::size_t start = found + begin.size();
  return html.substr(start, html.find(end, start) - start);
}

std::size_t CountOf(const std::string& html, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = html.find(text); at != std::string::npos; at = html.find(text, at + text.size())) {
    ++count;
  }
  return count;
}

}  // namespace test
