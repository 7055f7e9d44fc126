#include "metareview2024/render/JsonText.h"
#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/Writers.h"

namespace metareview {

namespace {

/// A list with an item a line, so that two reviews can be compared line by line.
class CJsonLines {
 public:
  explicit CJsonLines(COutputBuffer& output) : output_(output) {}

  void Start(std::string_view name) {
    Name(name);
    output_.Write("[");
    hasItem_ = false;
  }
  void Item(std::string_view item) {
    output_.Write(hasItem_ ? ",\n    " : "\n    ");
    output_.Write(item);
    hasItem_ = true;
  }
  void End() { output_.Write(hasItem_ ? "\n  ]" : "]"); }

  void Member(const SJsonMember& member) {
    if (!member.value.empty()) {
      Name(member.name);
      output_.Write(member.value);
      return;
    }
    Start(member.name);
    for (const std::string& item : member.items) {
      Item(item);
    }
    End();
  }

 private:
  void Name(std::string_view name) {
    output_.Write(hasMember_ ? ",\n  \"" : "{\n  \"");
    output_.Write(name);
    output_.Write("\": ");
    hasMember_ = true;
  }

  COutputBuffer& output_;
  bool hasMember_ = false;
  bool hasItem_ = false;
};

}  // namespace

void WriteJson(const SReview& review, const SRenderOptions& /*options*/, const Sink& sink) {
  COutputBuffer output(sink);
  CJsonLines lines(output);
  for (const SJsonMember& member : MembersBeforeFindings(review)) {
    lines.Member(member);
  }
  // Whoever overlooks that the review failed must not find an empty list of findings.
  if (review.complete) {
    CFindingJson json;
    lines.Start("findings");
    for (const SFinding& finding : review.findings) {
      lines.Item(json.Of(finding));
    }
    lines.End();
  }
  for (const SJsonMember& member : MembersAfterFindings(review)) {
    lines.Member(member);
  }
  output.Write("\n}\n");
  output.Flush();
}

}  // namespace metareview
