#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "kvxsptjson/JsonWriter.h"
#include "metareview2024/DecisionsFile.h"

namespace metareview {
namespace {

/// An entry: an object on one line.
class CLine {
 public:
  void Add(std::string_view name, std::string_view text) {
    kvx::JsonTextBuffer buffer;
    kvx::JsonWriter<kvx::JsonTextBuffer> writer(buffer);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    AddJson(name, {buffer.GetString(), buffer.GetSize()});
  }
  void Add(std::string_view name, std::uint32_t number) { AddJson(name, std::to_string(number)); }
  void Add(std::string_view name, const std::optional<std::string>& text) {
    if (text) {
      Add(name, std::string_view(*text));
    }
  }
  void Add(std::string_view name, const std::optional<Value>& value) {
    if (const auto* text = value ? std::get_if<std::string>(&*value) : nullptr; text != nullptr) {
      Add(name, std::string_view(*text));
    } else if (value) {
      Add(name, std::get<std::uint32_t>(*value));
    }
  }

  std::string Text() const { return "{ " + members_ + " }"; }

 private:
  void AddJson(std::string_view name, std::string_view json) {
    members_ += members_.empty() ? "\"" : ", \"";
    members_ += name;
    members_ += "\": ";
    members_ += json;
  }

  std::string members_;
};

std::string LineOf(const SRuleDecision& decision) {
  CLine line;
  line.Add("rule", decision.rule->name);
  line.Add("risk", NameOf(decision.risk));
  line.Add("reason", decision.reason);
  return line.Text();
}

std::string LineOf(const SDecision& decision) {
  CLine line;
  line.Add("path", std::string_view(decision.path));
  line.Add("change", NameOf(decision.change));
  line.Add("original", decision.original);
  line.Add("client", decision.client);
  line.Add("reason", std::string_view(decision.acceptance.reason));
  line.Add("by", decision.acceptance.by);
  line.Add("until", decision.acceptance.until);
  return line.Text();
}

/// A list with a name; nothing for an empty one.
template <typename Entry>
void AddList(std::string& text, std::string_view name, const std::vector<Entry>& entries) {
  if (entries.empty()) {
    return;
  }
  text += text.empty() ? "" : ",\n";
  text += "  \"" + std::string(name) + "\": [\n";
  for (const Entry& entry : entries) {
    text += (&entry == &entries.front() ? "    " : ",\n    ") + LineOf(entry);
  }
  text += "\n  ]";
}

}  // namespace

std::string FormatDecisions(const SDecisions& decisions) {
  std::vector<SDecision> accepted = decisions.accepted;
  std::sort(accepted.begin(), accepted.end(), [](const SDecision& a, const SDecision& b) {
    return std::tie(a.path, a.change) < std::tie(b.path, b.change);
  });
  std::string lists;
  AddList(lists, "rules", decisions.rules);
  AddList(lists, "accepted", accepted);
  return lists.empty() ? "{\n}\n" : "{\n" + lists + "\n}\n";
}

}  // namespace metareview
