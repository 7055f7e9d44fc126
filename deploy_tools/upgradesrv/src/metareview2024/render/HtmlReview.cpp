#include "metareview2024/render/Writers.h"
#include "metareview2024/render/page/Assets.h"
#include "metareview2024/render/page/ContentHash.h"
#include "metareview2024/render/page/Page.h"
#include "metareview2024/render/page/SentenceHtml.h"

namespace metareview {

void WriteHtml(const SReview& review, const SRenderOptions& options, const Sink& sink) {
  const page::CPage page(review, *options.words);
  page::View view;
  view["language"] = std::string(options.words->Code());
  view["style"] = std::string(page::assets::style);
  view["script"] = std::string(page::assets::script);
  view["styleHash"] = page::ContentHash(page::assets::style);
  view["scriptHash"] = page::ContentHash(page::assets::script);
  view["footer"] =
      page::SentenceHtml(FillIn(options.words->Text("page.footer"), {{"command", AsValue("upgradesrv review")}}));
  page::FillSummary(page, view);
  if (review.complete) {
    page::FillFilter(page, view);
    page::FillFindings(page, view);
    page::FillDecisions(page, view);
    page::FillNotes(page, view);
  }
  page::CTemplate(page::assets::page).Render(page.Shared(), view, sink);
}

}  // namespace metareview
