#pragma once

#include <kainjow/mustache.hpp>
#include <string>
#include <string_view>

#include "metareview2024/render/Render.h"

namespace metareview::page {

/// What the names in a template stand for: texts, which are escaped for HTML where they are written; lists; objects;
/// true and false. What is written with three braces is not escaped.
using View = kainjow::mustache::data;

View ListView();

/// A Mustache template for HTML.
class CTemplate {
 public:
  /// Throws std::logic_error for a text that is no template.
  explicit CTemplate(std::string_view text);

  /// Names are looked up in `own`, then in `shared`. A line end after the last line is left out.
  std::string Render(const View& shared, const View& own) const;
  /// The same with all line ends, into a sink.
  void Render(const View& shared, const View& own, const Sink& sink) const;

 private:
  // Remembers its last error.
  mutable kainjow::mustache::mustache template_;
};

}  // namespace metareview::page
