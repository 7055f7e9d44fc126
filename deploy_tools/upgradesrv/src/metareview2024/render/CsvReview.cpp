#include <array>
#include <string>

#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/render/Writers.h"
#include "metareview2024/words/FindingSentence.h"

namespace metareview {

namespace {

/// What a cell says; nothing for a member that a finding does not have.
using Cell = std::optional<std::string>;

Cell Text(std::string_view text) {
  return std::string(text);
}

Cell ValueText(const std::optional<Value>& value) {
  if (!value.has_value()) {
    return std::nullopt;
  }
  const auto* number = std::get_if<std::uint32_t>(&*value);
  return number != nullptr ? std::to_string(*number) : std::get<std::string>(*value);
}

template <typename T>
Cell TakenText(const SFinding& finding, T STaken::*member) {
  return finding.taken == nullptr ? std::nullopt : Cell((*finding.taken).*member);
}

/// Whether stored values were counted, which does not mean that it was not tried.
bool IsCounted(const SFinding& finding) {
  return finding.data != nullptr && HasCounts(*finding.data);
}

Cell CountText(const SFinding& finding, std::uint64_t SData::*count) {
  return IsCounted(finding) ? Text(std::to_string((*finding.data).*count)) : std::nullopt;
}

Cell TablesText(const SFinding& finding) {
  if (!IsCounted(finding)) {
    return std::nullopt;
  }
  std::string tables;
  for (const std::string& table : finding.data->tables) {
    tables += (tables.empty() ? "" : ";") + table;
  }
  return tables;
}

Cell AcceptedText(const SFinding& finding, const Cell SAcceptance::*member) {
  return finding.accepted == nullptr ? std::nullopt : (*finding.accepted).*member;
}

struct SColumn {
  std::string_view name;
  Cell (*cell)(const SFinding& finding);
};

const std::array<SColumn, 25> kColumns = {
    {{"id", [](const SFinding& finding) { return Text(IdText(finding.id)); }},
     {"path", [](const SFinding& finding) { return Text(finding.path); }},
     {"change", [](const SFinding& finding) { return Text(NameOf(finding.change)); }},
     {"rule", [](const SFinding& finding) { return Text(finding.rule->name); }},
     {"risk", [](const SFinding& finding) { return Text(NameOf(finding.risk)); }},
     {"origin", [](const SFinding& finding) { return Text(NameOf(finding.origin)); }},
     {"reported", [](const SFinding& finding) { return Text(finding.reported ? "true" : "false"); }},
     {"display_name", [](const SFinding& finding) { return finding.displayName; }},
     {"type", [](const SFinding& finding) { return finding.type; }},
     {"taken_by", [](const SFinding& finding) { return TakenText(finding, &STaken::by); }},
     {"taken_class_id",
      [](const SFinding& finding) {
        const bool isTaken = finding.taken != nullptr && finding.taken->classId.has_value();
        return isTaken ? Text(std::to_string(*finding.taken->classId)) : std::nullopt;
      }},
     {"taken_table_name", [](const SFinding& finding) { return TakenText(finding, &STaken::tableName); }},
     {"taken_field", [](const SFinding& finding) { return TakenText(finding, &STaken::field); }},
     {"base", [](const SFinding& finding) { return ValueText(finding.base); }},
     {"original", [](const SFinding& finding) { return ValueText(finding.original); }},
     {"client", [](const SFinding& finding) { return ValueText(finding.client); }},
     {"rows", [](const SFinding& finding) { return CountText(finding, &SData::rows); }},
     {"of", [](const SFinding& finding) { return CountText(finding, &SData::of); }},
     {"tables", TablesText},
     {"problem",
      [](const SFinding& finding) {
        const bool hasProblem = finding.data != nullptr && !finding.data->problem.empty();
        return hasProblem ? Text(finding.data->problem) : std::nullopt;
      }},
     {"risk_without_data",
      [](const SFinding& finding) {
        return finding.riskWithoutData.has_value() ? Text(NameOf(*finding.riskWithoutData)) : std::nullopt;
      }},
     {"accepted",
      [](const SFinding& finding) {
        return finding.accepted == nullptr ? std::nullopt : Text(finding.accepted->reason);
      }},
     {"accepted_by", [](const SFinding& finding) { return AcceptedText(finding, &SAcceptance::by); }},
     {"accepted_until", [](const SFinding& finding) { return AcceptedText(finding, &SAcceptance::until); }},
     {"since", [](const SFinding& finding) {
        return finding.since.has_value() ? Text(NameOf(*finding.since)) : std::nullopt;
      }}}};

/// A spreadsheet would run such a text as a formula, or take off what it begins with.
bool IsFormula(std::string_view text) {
  return !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos;
}

/// An empty text is quoted, so that it is not taken for one that is missing.
void WriteCell(COutputBuffer& output, const Cell& cell) {
  if (!cell.has_value()) {
    return;
  }
  const std::string text = (IsFormula(*cell) ? "'" : "") + *cell;
  if (!text.empty() && text.find_first_of(",\"\r\n") == std::string::npos) {
    output.Write(text);
    return;
  }
  output.Write("\"");
  for (const char& c : text) {
    output.Write(c == '"' ? std::string_view("\"\"") : std::string_view(&c, 1));
  }
  output.Write("\"");
}

constexpr std::string_view kLineEnd = "\r\n";

/// A review that failed has other columns, so that nobody takes it for one without findings.
void WriteFailed(COutputBuffer& output, const SReview& review) {
  output.Write("complete,problem");
  output.Write(kLineEnd);
  output.Write("false,");
  WriteCell(output, review.problem);
  output.Write(kLineEnd);
}

}  // namespace

void WriteCsv(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  COutputBuffer output(sink);
  if (!review.complete) {
    WriteFailed(output, review);
    output.Flush();
    return;
  }
  for (const SColumn& column : kColumns) {
    output.Write(column.name);
    output.Write(",");
  }
  output.Write("meaning");
  output.Write(kLineEnd);
  const CFindingSentences sentences(*options.words, review);
  for (const SFinding& finding : review.findings) {
    for (const SColumn& column : kColumns) {
      WriteCell(output, column.cell(finding));
      output.Write(",");
    }
    WriteCell(output, Plain(sentences.Of(finding)));
    output.Write(kLineEnd);
  }
  output.Flush();
}

}  // namespace metareview
