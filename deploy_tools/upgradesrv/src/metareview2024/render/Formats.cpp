#include <algorithm>

#include "metareview2024/render/Render.h"
#include "metareview2024/render/Writers.h"

namespace metareview {

const std::vector<SFormat>& Formats() {
  static const std::vector<SFormat> formats = {
      {"text", WriteText},   {"json", WriteJson},         {"ndjson", WriteNdjson},
      {"csv", WriteCsv},     {"markdown", WriteMarkdown}, {"html", WriteHtml},
      {"junit", WriteJunit}, {"sarif", WriteSarif},       {"sql", WriteSql}};
  return formats;
}

const SFormat* FindFormat(std::string_view name) {
  const std::vector<SFormat>& formats = Formats();
  const auto found =
      std::find_if(formats.begin(), formats.end(), [&](const SFormat& format) { return format.name == name; });
  return found == formats.end() ? nullptr : &*found;
}

}  // namespace metareview
