#include "metareview2024/render/page/FindingRow.h"

#include <algorithm>
#include <array>

#include "metareview2024/Path.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/Assets.h"
#include "metareview2024/render/page/Fragment.h"
#include "metareview2024/render/page/SentenceHtml.h"
#include "metareview2024/render/page/ValueCells.h"

namespace metareview::page {

namespace {

/// What is in the cell that names the difference, where the attribute or the thing is the name.
void NameAttribute(const CPage& page, const SFinding& finding, View& view) {
  if (finding.attribute != EAttribute::kNone) {
    view["main"] = std::string(NameOf(finding.attribute));
    return;
  }
  view["hasDetail"] = true;
  view["detail"] = page.Text("page.whole." + std::string(NameOf(finding.thing)));
}

void NamePart(const CPage& page, const SFinding& finding, const std::string& part, View& view) {
  view["main"] = ShownText(part);
  view["hasDetail"] = true;
  if (finding.attribute != EAttribute::kNone) {
    view["attribute"] = std::string(NameOf(finding.attribute));
  } else {
    view["detail"] = page.Text("page.part." + std::string(NameOf(finding.thing)));
  }
  if (const std::optional<std::string> displayName = OtherDisplayName(finding, part)) {
    view["displayName"] = ShownText(*displayName);
  }
}

}  // namespace

View Columns(const CPage& page) {
  struct SColumn {
    const char* style;
    const char* key;
    bool needsBase;
  };
  const std::array<SColumn, 7> columns = {{{"a", "page.risk", false},
                                           {"w", "page.difference", false},
                                           {"e", "page.what-happens", false},
                                           {"x", "page.side-base", true},
                                           {"x", "page.side-original", false},
                                           {"x", "page.side-client", false},
                                           {"by", page.HasBase() ? "page.changed-by" : "page.notes", false}}};
  View views = ListView();
  for (const SColumn& column : columns) {
    if (page.HasBase() || !column.needsBase) {
      View view;
      view["class"] = column.style;
      view["name"] = page.Text(column.key);
      views.push_back(view);
    }
  }
  return views;
}

std::optional<std::string> OtherDisplayName(const SFinding& finding, const std::string& name) {
  const bool saysMore =
      finding.displayName.has_value() && !finding.displayName->empty() && *finding.displayName != name;
  return saysMore ? finding.displayName : std::nullopt;
}

CFindingRow::CFindingRow(const CPage& page) : page_(page), row_(assets::row) {
  const std::size_t count = std::min(page.Places().size(), kMaxPlaces);
  for (std::size_t i = 0; i < count; ++i) {
    for (const SFinding* finding : page.Places().at(i)) {
      places_.emplace(finding->id, page.Places().at(i).front()->id);
    }
  }
}

std::string CFindingRow::InPlace(const SFinding& finding) const {
  View view = Common(finding);
  NameAttribute(page_, finding, view);
  return row_.Render(page_.Shared(), view);
}

std::string CFindingRow::InElement(const SFinding& finding) {
  View view = Common(finding);
  view["anchor"] = "f-" + IdText(finding.id);
  view["names"] = NewNames(finding);
  const std::string part = ParsePath(finding.path).value_or(SPath()).part;
  if (part.empty()) {
    NameAttribute(page_, finding, view);
  } else {
    NamePart(page_, finding, part, view);
  }
  if (const auto place = places_.find(finding.id); place != places_.end()) {
    view["jump"] = "d-" + IdText(place->second);
  }
  return row_.Render(page_.Shared(), view);
}

View CFindingRow::Common(const SFinding& finding) const {
  View view;
  view["risk"] = std::string(NameOf(finding.risk));
  view["riskName"] = page_.Text("page.risk." + std::string(NameOf(finding.risk)));
  view["origin"] = std::string(NameOf(finding.origin));
  view["decision"] = std::string(DecisionOf(finding));
  if (finding.since.has_value()) {
    view["since"] = std::string(NameOf(*finding.since));
  }
  view["unreported"] = !finding.reported;
  view["path"] = ShownText(finding.path);
  view["rule"] = std::string(finding.rule->name);
  view["ruleName"] = page_.Text(std::string(finding.rule->name) + ".name");
  view["sentence"] = SentenceHtml(page_.Sentences().Of(finding));
  if (finding.accepted != nullptr) {
    view["acceptance"] = SentenceHtml(AcceptanceSentence(page_.Words(), *finding.accepted));
  }
  FillValues(finding, view);
  if (page_.HasBase()) {
    view["by"] = page_.Text("origin." + std::string(NameOf(finding.origin)));
  }
  view["notes"] = Notes(finding);
  return view;
}

void CFindingRow::FillValues(const SFinding& finding, View& view) const {
  for (const SValueCell& cell : ValueCells(page_.Words(), finding, page_.HasBase())) {
    View value;
    value["label"] = page_.Text("page.side-" + cell.side);
    value["word"] = cell.isWord;
    value["before"] = cell.before;
    if (!cell.marked.empty()) {
      value["marked"] = cell.marked;
    }
    value["after"] = cell.after;
    view[cell.side] = std::move(value);
  }
}

View CFindingRow::Notes(const SFinding& finding) const {
  View notes = ListView();
  if (!finding.reported) {
    notes.push_back(page_.Text("page.note.not-in-report"));
  }
  if (finding.since.has_value() && *finding.since != ESince::kKnown) {
    notes.push_back(page_.Text("page.note.since." + std::string(NameOf(*finding.since))));
  }
  const std::string_view decision = DecisionOf(finding);
  if (decision == "outdated" || decision == "expired") {
    notes.push_back(page_.Text("page.note.decision." + std::string(decision)));
  }
  return notes;
}

std::string_view CFindingRow::DecisionOf(const SFinding& finding) const {
  if (finding.accepted != nullptr) {
    return "accepted";
  }
  if (page_.Sentences().FindOutdated(finding) != nullptr) {
    return "outdated";
  }
  return page_.Sentences().FindExpired(finding) != nullptr ? "expired" : "open";
}

View CFindingRow::NewNames(const SFinding& finding) {
  View names = ListView();
  for (const std::string& fragment : FragmentsOf(finding)) {
    if (names_.insert(fragment).second) {
      names.push_back(fragment);
    }
  }
  return names;
}

}  // namespace metareview::page
