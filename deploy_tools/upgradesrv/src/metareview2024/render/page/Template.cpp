#include "metareview2024/render/page/Template.h"

#include <stdexcept>

namespace metareview::page {

namespace {

/// As the template library wants a stream.
struct SSinkStream {
  const Sink& sink;

  SSinkStream& operator<<(const std::string& text) {
    sink(text);
    return *this;
  }
};

}  // namespace

View ListView() {
  return View{View::type::list};
}

CTemplate::CTemplate(std::string_view text) : template_(std::string(text)) {
  if (!template_.is_valid()) {
    throw std::logic_error("this is no template: " + template_.error_message());
  }
}

std::string CTemplate::Render(const View& shared, const View& own) const {
  std::string text;
  Render(shared, own, [&](std::string_view part) { text += part; });
  if (!text.empty() && text.back() == '\n') {
    text.pop_back();
  }
  return text;
}

void CTemplate::Render(const View& shared, const View& own, const Sink& sink) const {
  kainjow::mustache::context<std::string> context(&shared);
  context.push(&own);
  SSinkStream stream{sink};
  template_.render(context, stream);
}

}  // namespace metareview::page
