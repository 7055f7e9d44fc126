#include "metareview2024/render/ShownText.h"
#include "metareview2024/render/page/Page.h"

namespace metareview::page {

namespace {

/// A field of the form with what can be chosen, each value with the key of its text.
struct SChoice {
  const char* key;
  const char* name;
  const char* any;
  std::vector<std::pair<const char*, const char*>> options;
};

std::vector<SChoice> Choices(const SReview& review) {
  std::vector<SChoice> choices = {
      {"kind",
       "page.kind",
       "page.any-kind",
       {{"class", "page.kinds.class"}, {"link", "page.kinds.link"}, {"behavior", "page.kinds.behavior"}}},
      {"risk",
       "page.risk",
       "page.any-risk",
       {{"loss", "page.risk.loss"},
        {"block", "page.risk.block"},
        {"attention", "page.risk.attention"},
        {"safe", "page.risk.safe"}}}};
  if (review.base.has_value()) {
    choices.push_back(
        {"origin",
         "page.changed-by",
         "page.any-origin",
         {{"customer", "page.origin.customer"}, {"vendor", "page.origin.vendor"}, {"both", "page.origin.both"}}});
  }
  choices.push_back({"decision",
                     "page.decision",
                     "page.any-decision",
                     {{"decide", "page.decision.decide"},
                      {"open", "page.decision.open"},
                      {"accepted", "page.decision.accepted"},
                      {"outdated", "page.decision.outdated"},
                      {"expired", "page.decision.expired"}}});
  if (review.against.has_value()) {
    choices.push_back({"since",
                       "page.since",
                       "page.any-since",
                       {{"new", "page.since.new"}, {"changed", "page.since.changed"}, {"known", "page.since.known"}}});
  }
  return choices;
}

}  // namespace

void FillFilter(const CPage& page, View& view) {
  View choices = ListView();
  for (const SChoice& choice : Choices(page.Review())) {
    View options = ListView();
    for (const auto& [value, key] : choice.options) {
      View option;
      option["value"] = value;
      option["text"] = page.Text(key);
      options.push_back(option);
    }
    View choiceView;
    choiceView["key"] = choice.key;
    choiceView["name"] = page.Text(choice.name);
    choiceView["any"] = page.Text(choice.any);
    choiceView["options"] = std::move(options);
    choices.push_back(choiceView);
  }
  const std::string count = page.Words().Number(page.Shown().size());
  View filter;
  filter["choices"] = std::move(choices);
  filter["all"] = page.Count("page.n-differences", page.Shown().size());
  // The script puts in how many are shown.
  filter["some"] = page.Filled("page.n-of-m-differences", {{"n", AsWords("{shown}")}, {"m", AsWords(count)}});
  view["filter"] = std::move(filter);
}

}  // namespace metareview::page
