#include "upgradesrv/CommandLineParts.h"

#include <cstddef>

namespace upgradesrv {

std::vector<std::string> SplitAtCommas(const std::string& list) {
  std::vector<std::string> items;
  std::size_t begin = 0;
  for (std::size_t end = list.find(','); end != std::string::npos; end = list.find(',', begin)) {
    items.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  items.push_back(list.substr(begin));
  return items;
}

// The check itself would log an unknown kind, but with the document of an earlier run already replaced.
std::string ElementsProblem(const std::string& list) {
  if (("," + list + ",").find(",,") != std::string::npos) {
    return "a kind is empty";
  }
  for (const std::string& kind : SplitAtCommas(list)) {
    if (kind != "class" && kind != "link" && kind != "behavior") {
      return "unknown kind \"" + kind + "\"; the kinds are class, link, behavior";
    }
  }
  return "";
}

void RequireValues(CLI::App& app) {
  for (CLI::Option* option : app.get_options()) {
    option->check([](const std::string& value) { return std::string(value.empty() ? "the value is empty" : ""); });
  }
}

void DefineQuiet(CLI::App& app, bool& quiet) {
  app.add_flag("--quiet", quiet, "Show no progress on the terminal while metamodels are loaded");
}

}  // namespace upgradesrv
