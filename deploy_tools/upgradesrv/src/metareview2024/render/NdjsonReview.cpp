#include "metareview2024/render/JsonText.h"
#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/Writers.h"

namespace metareview {

namespace {

void WriteMembers(COutputBuffer& output, const std::vector<SJsonMember>& members, std::string_view before) {
  for (const SJsonMember& member : members) {
    output.Write(before);
    output.Write("\"");
    output.Write(member.name);
    output.Write("\":");
    output.Write(member.value);
    if (member.value.empty()) {
      std::string_view separator = "[";
      for (const std::string& item : member.items) {
        output.Write(separator);
        output.Write(item);
        separator = ",";
      }
      output.Write("]");
    }
    before = ",";
  }
}

}  // namespace

void WriteNdjson(const SReview& review, const SRenderOptions& /*options*/, const Sink& sink) {
  COutputBuffer output(sink);
  WriteMembers(output, MembersBeforeFindings(review), "{");
  WriteMembers(output, MembersAfterFindings(review), ",");
  output.Write("}\n");
  if (review.complete) {
    CFindingJson json;
    for (const SFinding& finding : review.findings) {
      output.Write(json.Of(finding));
      output.Write("\n");
    }
  }
  output.Flush();
}

}  // namespace metareview
