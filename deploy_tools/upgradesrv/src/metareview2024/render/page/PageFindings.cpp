#include <algorithm>

#include "metareview2024/Path.h"
#include "metareview2024/render/Elements.h"
#include "metareview2024/render/ShellWord.h"
#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/Assets.h"
#include "metareview2024/render/page/FindingRow.h"
#include "metareview2024/render/page/Page.h"

namespace metareview::page {

namespace {

/// No shell takes a word that is longer.
constexpr std::size_t kMaxWord = 131072;

/// A row of a table whose texts are the same for all that it is about.
View RuleView(const CPage& page, const SRule& rule) {
  const std::string name(rule.name);
  View view;
  view["name"] = page.Text(name + ".name");
  view["todo"] = page.Text(name + ".todo");
  view["why"] = page.Text(name + ".why");
  return view;
}

/// Each rule once, in the order of the findings.
std::vector<const SRule*> RulesOf(const Findings& findings) {
  std::vector<const SRule*> rules;
  for (const SFinding* finding : findings) {
    if (std::find(rules.begin(), rules.end(), finding->rule) == rules.end()) {
      rules.push_back(finding->rule);
    }
  }
  return rules;
}

/// The command that accepts all of a place; nothing where a path is too long for one.
std::optional<std::string> AcceptCommand(const CPage& page, const Findings& place) {
  std::string command = "upgradesrv decide --reason '' \\\n  " + ShellWord(page.Review().directory);
  for (const SFinding* finding : place) {
    const std::string word = ShellWord(finding->path);
    if (word.size() >= kMaxWord) {
      return std::nullopt;
    }
    command += " \\\n  " + word;
  }
  return command;
}

class CPlaces {
 public:
  CPlaces(const CPage& page, const CFindingRow& row) : page_(page), row_(row), template_(assets::place) {}

  std::string Html(const Findings& place) const {
    const SFinding& first = *place.front();
    const SPath path = ParsePath(first.path).value_or(SPath());
    View view;
    view["id"] = IdText(first.id);
    view["kind"] = std::string(NameOf(first.kind));
    view["kindName"] = page_.Text("page.part." + std::string(NameOf(first.kind)));
    view["element"] = ShownText(path.element);
    if (!path.part.empty()) {
      view["part"] = ShownText(path.part);
      view["partName"] = page_.Text("page.part." + std::string(NameOf(first.thing)));
    }
    if (const std::optional<std::string> displayName = OtherDisplayName(first, path.Name())) {
      view["displayName"] = ShownText(*displayName);
    }
    View rows = ListView();
    for (const SFinding* finding : place) {
      rows.push_back(row_.InPlace(*finding));
    }
    view["rows"] = std::move(rows);
    // So high that it may have to be broken in print.
    view["long"] = place.size() > 2;
    FillAdvice(place, view);
    return template_.Render(page_.Shared(), view);
  }

 private:
  void FillAdvice(const Findings& place, View& view) const {
    const std::vector<const SRule*> rules = RulesOf(place);
    if (rules.size() == 1) {
      view["single"] = RuleView(page_, *rules.front());
    } else {
      View views = ListView();
      for (const SRule* rule : rules) {
        views.push_back(RuleView(page_, *rule));
      }
      view["rules"] = std::move(views);
    }
    if (const std::optional<std::string> command = AcceptCommand(page_, place)) {
      view["acceptIntro"] = page_.Count("page.accept", place.size());
      view["command"] = *command;
    } else {
      view["acceptIntro"] = page_.Text("page.accept.too-long");
    }
  }

  const CPage& page_;
  const CFindingRow& row_;
  CTemplate template_;
};

/// How many of an element's findings there are of each risk, and how many are accepted.
View TallyView(const CPage& page, const Findings& element) {
  View views = ListView();
  const auto add = [&](std::string_view name, std::size_t number) {
    if (number != 0) {
      View view;
      view["risk"] = std::string(name);
      view["name"] = page.Text("page.risk." + std::string(name));
      view["number"] = page.Words().Number(number);
      views.push_back(view);
    }
  };
  const auto count = [&](const auto& is) {
    return static_cast<std::size_t>(std::count_if(element.begin(), element.end(), is));
  };
  for (const ERisk risk : kRisks) {
    add(NameOf(risk),
        count([&](const SFinding* finding) { return finding->accepted == nullptr && finding->risk == risk; }));
  }
  add("accepted", count([](const SFinding* finding) { return finding->accepted != nullptr; }));
  return views;
}

class CElements {
 public:
  CElements(const CPage& page, CFindingRow& row)
      : page_(page), row_(row), template_(assets::element), elements_(GroupsByElement(page.Shown())) {}

  /// The elements of a kind, each with its findings.
  View KindView(EKind kind) {
    View elements = ListView();
    std::size_t count = 0;
    for (const Findings& element : elements_) {
      if (element.front()->kind == kind) {
        elements.push_back(Html(element));
        ++count;
      }
    }
    View view;
    if (count != 0) {
      view["kind"] = std::string(NameOf(kind));
      view["text"] = Plain(FillIn(page_.Words().Text("page.with-differences", count),
                                  {{"kinds", AsWords(page_.Text("page.kinds." + std::string(NameOf(kind))))},
                                   {"n", AsWords(page_.Words().Number(count))}}));
      view["elements"] = std::move(elements);
    }
    return view;
  }

 private:
  static std::string ElementName(const SFinding& finding) { return ParsePath(finding.path).value_or(SPath()).element; }

  std::string Html(const Findings& element) {
    const SFinding& first = *element.front();
    const std::string name = ElementName(first);
    View view;
    view["open"] = page_.Shown().size() <= kMaxUnfolded;
    view["kind"] = std::string(NameOf(first.kind));
    view["kindName"] = page_.Text("page.part." + std::string(NameOf(first.kind)));
    view["element"] = ShownText(name);
    if (const std::optional<std::string> displayName = DisplayName(element, name)) {
      view["displayName"] = ShownText(*displayName);
    }
    view["tally"] = TallyView(page_, element);
    View rows = ListView();
    for (const SFinding* finding : element) {
      rows.push_back(row_.InElement(*finding));
    }
    view["rows"] = std::move(rows);
    return template_.Render(page_.Shared(), view);
  }

  /// Known only where a finding is about the element itself.
  static std::optional<std::string> DisplayName(const Findings& element, const std::string& name) {
    const auto found = std::find_if(element.begin(), element.end(),
                                    [](const SFinding* finding) { return finding->thing <= EThing::kBehavior; });
    return found == element.end() ? std::nullopt : OtherDisplayName(**found, name);
  }

  const CPage& page_;
  CFindingRow& row_;
  CTemplate template_;
  const std::vector<Findings> elements_;
};

View PlaceViews(const CPage& page, const CFindingRow& row) {
  const CPlaces places(page, row);
  View views = ListView();
  for (std::size_t i = 0; i < std::min(page.Places().size(), kMaxPlaces); ++i) {
    views.push_back(places.Html(page.Places().at(i)));
  }
  return views;
}

View KindViews(const CPage& page, CFindingRow& row) {
  CElements elements(page, row);
  View views = ListView();
  for (const EKind kind : kKinds) {
    const View view = elements.KindView(kind);
    if (view.is_non_empty_object()) {
      views.push_back(view);
    }
  }
  return views;
}

/// A list with one sentence, or none where `number` is 0.
View LeftView(const CPage& page, std::string_view key, std::size_t number) {
  View view = ListView();
  if (number != 0) {
    view.push_back(page.Count(key, number));
  }
  return view;
}

}  // namespace

void FillFindings(const CPage& page, View& view) {
  CFindingRow row(page);
  view["hasFindings"] = !page.Shown().empty();
  view["hasPlaces"] = !page.Places().empty();
  view["places"] = PlaceViews(page, row);
  view["placesLeft"] =
      LeftView(page, "page.places-left", page.Places().size() - std::min(page.Places().size(), kMaxPlaces));
  view["kinds"] = KindViews(page, row);
  view["left"] = LeftView(page, "page.findings-left", page.Review().findings.size() - page.Shown().size());
}

}  // namespace metareview::page
