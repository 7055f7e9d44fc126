#include "metareview2024/FindingText.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <optional>

#include "support/TemporaryDirectory.h"

namespace test {
namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteText(Writer& writer, std::string_view text) {
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteValue(Writer& writer, const std::string& text) {
  WriteText(writer, text);
}

void WriteValue(Writer& writer, std::uint32_t number) {
  writer.Uint(number);
}

void WriteValue(Writer& writer, const metareview::Value& value) {
  std::visit([&writer](const auto& content) { WriteValue(writer, content); }, value);
}

template <typename Content>
void WriteMember(Writer& writer, const char* name, const std::optional<Content>& value) {
  if (value) {
    writer.Key(name);
    WriteValue(writer, *value);
  }
}

void WriteText(Writer& writer, const char* name, std::string_view text) {
  writer.Key(name);
  WriteText(writer, text);
}

}  // namespace

std::string TextOf(const metareview::SFinding& finding) {
  rapidjson::StringBuffer buffer;
  Writer writer(buffer);
  writer.StartObject();
  WriteText(writer, "path", finding.path);
  WriteText(writer, "change", NameOf(finding.change));
  WriteText(writer, "rule", finding.rule->name);
  WriteText(writer, "risk", NameOf(finding.risk));
  WriteText(writer, "origin", NameOf(finding.origin));
  writer.Key("reported");
  writer.Bool(finding.reported);
  WriteMember(writer, "display_name", finding.displayName);
  WriteMember(writer, "type", finding.type);
  if (finding.taken != nullptr) {
    writer.Key("taken");
    writer.StartObject();
    WriteText(writer, "by", finding.taken->by);
    WriteMember(writer, "class_id", finding.taken->classId);
    WriteMember(writer, "table_name", finding.taken->tableName);
    WriteMember(writer, "field", finding.taken->field);
    writer.EndObject();
  }
  WriteMember(writer, "base", finding.base);
  WriteMember(writer, "original", finding.original);
  WriteMember(writer, "client", finding.client);
  if (finding.accepted != nullptr) {
    writer.Key("accepted");
    writer.StartObject();
    WriteText(writer, "reason", finding.accepted->reason);
    WriteMember(writer, "by", finding.accepted->by);
    WriteMember(writer, "until", finding.accepted->until);
    writer.EndObject();
  }
  writer.EndObject();
  return buffer.GetString();
}

std::vector<std::string> TextsOf(const std::vector<metareview::SFinding>& findings) {
  std::vector<std::string> texts;
  for (const metareview::SFinding& finding : findings) {
    texts.push_back(TextOf(finding));
  }
  return texts;
}

std::vector<std::string> ItemsOf(const std::string& path) {
  rapidjson::Document document;
  document.Parse(ReadFile(path).c_str());
  std::vector<std::string> items;
  if (document.HasParseError() || !document.IsArray()) {
    ADD_FAILURE() << path << " is not a JSON array";
    return items;
  }
  for (const rapidjson::Value& item : document.GetArray()) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    item.Accept(writer);
    items.emplace_back(buffer.GetString());
  }
  return items;
}

}  // namespace test
