#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "kvxsptjson/JsonWriter.h"
#include "metareview2024/Path.h"
#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/Writers.h"
#include "metareview2024/words/DecisionSentence.h"
#include "metareview2024/words/FindingSentence.h"
#include "metareview2024/words/Verdict.h"

namespace metareview {

namespace {

constexpr std::string_view kSchema = "https://json.schemastore.org/sarif-2.1.0.json";
constexpr std::string_view kFingerprint = "findingId/v1";

std::string_view LevelOf(ERisk risk) {
  switch (risk) {
    case ERisk::kLoss:
    case ERisk::kBlock:
      return "error";
    case ERisk::kAttention:
      return "warning";
    case ERisk::kSafe:
      return "note";
  }
  return "none";
}

std::string_view BaselineStateOf(ESince since) {
  switch (since) {
    case ESince::kNew:
      return "new";
    case ESince::kKnown:
      return "unchanged";
    case ESince::kChanged:
      return "updated";
  }
  return "none";
}

/// As messages of this format have it: braces would stand for arguments, brackets for links.
std::string MessageText(std::string_view text) {
  std::string message;
  for (const char c : text) {
    if (c == '{' || c == '}') {
      message += c;
    } else if (c == '[' || c == ']' || c == '\\') {
      message += '\\';
    }
    message += c;
  }
  return message;
}

std::string MessageText(const Sentence& sentence) {
  std::string message;
  for (const SPiece& piece : sentence) {
    message += MessageText(piece.isValue ? ShownText(piece.text) : piece.text);
  }
  return message;
}

/// A path of the file system as a relative or absolute reference; nothing for a database.
std::string UriOf(const std::string& location) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  if (location.find("://") != std::string::npos) {
    return {};
  }
  std::string uri;
  for (const char c : location) {
    if (kPlain.find(c) != std::string_view::npos) {
      uri += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      uri += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return uri;
}

class CSarif {
 public:
  CSarif(const SReview& review, const SRenderOptions& options, const Sink& sink)
      : review_(review),
        words_(*options.words),
        sentences_(words_, review),
        clientUri_(UriOf(review.client)),
        writer_(buffer_),
        output_(sink) {}

  void Write() {
    writer_.StartObject();
    Member("$schema", kSchema);
    Member("version", "2.1.0");
    Key("runs");
    writer_.StartArray();
    writer_.StartObject();
    WriteTool();
    WriteInvocation();
    Member("language", words_.Code());
    // Without results, so that nobody takes a review that failed for one that found nothing.
    if (review_.complete) {
      WriteResults();
    }
    writer_.EndObject();
    writer_.EndArray();
    writer_.EndObject();
    PassLine();
    output_.Flush();
  }

 private:
  void Key(std::string_view name) { writer_.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
  void Text(std::string_view text) { writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }
  void Member(std::string_view name, std::string_view text) {
    Key(name);
    Text(text);
  }
  /// An object with a text, as this format has all of them.
  void Message(std::string_view name, std::string_view text) {
    Key(name);
    writer_.StartObject();
    Member("text", text);
    writer_.EndObject();
  }

  /// Passes on what has been written; the next begins on a line of its own.
  void PassLine() {
    output_.Write({buffer_.GetString(), buffer_.GetSize()});
    output_.Write("\n");
    buffer_.Clear();
  }

  /// The rules under which there are findings, in the order of all rules.
  std::vector<const SRule*> UsedRules() const {
    std::vector<const SRule*> rules;
    for (const SRule* rule : Rules()) {
      const auto is = [&](const SFinding& finding) { return finding.rule == rule; };
      if (std::any_of(review_.findings.begin(), review_.findings.end(), is)) {
        rules.push_back(rule);
      }
    }
    return rules;
  }

  void WriteTool() {
    Key("tool");
    writer_.StartObject();
    Key("driver");
    writer_.StartObject();
    Member("name", "upgradesrv");
    Key("rules");
    writer_.StartArray();
    for (const SRule* rule : UsedRules()) {
      ruleIndex_.emplace(rule, static_cast<unsigned>(ruleIndex_.size()));
      PassLine();
      WriteRule(*rule);
    }
    writer_.EndArray();
    writer_.EndObject();
    writer_.EndObject();
  }

  void WriteRule(const SRule& rule) {
    const std::string name(rule.name);
    writer_.StartObject();
    Member("id", name);
    Message("shortDescription", MessageText(words_.Text(name + ".name")));
    Message("fullDescription", MessageText(words_.Text(name + ".why")));
    Message("help", MessageText(words_.Text(name + ".todo")));
    Key("defaultConfiguration");
    writer_.StartObject();
    Member("level", LevelOf(rule.risk));
    writer_.EndObject();
    writer_.EndObject();
  }

  void WriteInvocation() {
    Key("invocations");
    writer_.StartArray();
    writer_.StartObject();
    Key("executionSuccessful");
    writer_.Bool(review_.complete);
    if (!review_.complete) {
      Key("toolExecutionNotifications");
      writer_.StartArray();
      writer_.StartObject();
      Member("level", "error");
      Message("message", MessageText(AsValue(review_.problem)));
      writer_.EndObject();
      writer_.EndArray();
    }
    writer_.EndObject();
    writer_.EndArray();
  }

  void WriteResults() {
    Key("results");
    writer_.StartArray();
    for (const SFinding& finding : review_.findings) {
      PassLine();
      WriteResult(finding);
    }
    for (const SGone& gone : review_.gone) {
      PassLine();
      WriteGone(gone);
    }
    writer_.EndArray();
  }

  void WriteResult(const SFinding& finding) {
    writer_.StartObject();
    Member("ruleId", finding.rule->name);
    Key("ruleIndex");
    writer_.Uint(ruleIndex_.at(finding.rule));
    Member("level", LevelOf(finding.risk));
    Message("message", MessageText(sentences_.Of(finding)));
    WriteLocations(finding.path);
    WriteFingerprint(finding.id);
    if (finding.accepted != nullptr) {
      WriteSuppression(*finding.accepted);
    }
    if (finding.since.has_value()) {
      Member("baselineState", BaselineStateOf(*finding.since));
    }
    Key("properties");
    writer_.StartObject();
    Member("risk", NameOf(finding.risk));
    Member("change", NameOf(finding.change));
    Member("origin", NameOf(finding.origin));
    writer_.EndObject();
    writer_.EndObject();
  }

  void WriteGone(const SGone& gone) {
    writer_.StartObject();
    Member("level", "none");
    Message("message", MessageText(GoneSentence(words_, gone)));
    WriteLocations(gone.path);
    WriteFingerprint(gone.id);
    Member("baselineState", "absent");
    writer_.EndObject();
  }

  /// Where it is in the metamodel, and the client's file for readers that want one.
  void WriteLocations(const std::string& path) {
    const SPath parts = ParsePath(path).value_or(SPath());
    Key("locations");
    writer_.StartArray();
    writer_.StartObject();
    if (!clientUri_.empty()) {
      Key("physicalLocation");
      writer_.StartObject();
      Key("artifactLocation");
      writer_.StartObject();
      Member("uri", clientUri_);
      writer_.EndObject();
      writer_.EndObject();
    }
    Key("logicalLocations");
    writer_.StartArray();
    writer_.StartObject();
    Member("name", parts.Name());
    Member("fullyQualifiedName", path);
    Member("kind", parts.thing <= EThing::kBehavior ? "type" : "member");
    writer_.EndObject();
    writer_.EndArray();
    writer_.EndObject();
    writer_.EndArray();
  }

  void WriteFingerprint(std::uint64_t id) {
    Key("partialFingerprints");
    writer_.StartObject();
    Member(kFingerprint, IdText(id));
    writer_.EndObject();
  }

  void WriteSuppression(const SAcceptance& acceptance) {
    Key("suppressions");
    writer_.StartArray();
    writer_.StartObject();
    Member("kind", "external");
    Member("status", "accepted");
    Member("justification", acceptance.reason);
    const auto memberIf = [this](std::string_view name, const std::optional<std::string>& value) {
      if (value.has_value()) {
        Member(name, *value);
      }
    };
    if (acceptance.by.has_value() || acceptance.until.has_value()) {
      Key("properties");
      writer_.StartObject();
      memberIf("by", acceptance.by);
      memberIf("until", acceptance.until);
      writer_.EndObject();
    }
    writer_.EndObject();
    writer_.EndArray();
  }

  const SReview& review_;
  const CWords& words_;
  const CFindingSentences sentences_;
  const std::string clientUri_;
  std::unordered_map<const SRule*, unsigned> ruleIndex_;
  kvx::JsonTextBuffer buffer_;
  kvx::JsonWriter<kvx::JsonTextBuffer> writer_;
  COutputBuffer output_;
};

}  // namespace

void WriteSarif(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  CSarif(review, options, sink).Write();
}

}  // namespace metareview
