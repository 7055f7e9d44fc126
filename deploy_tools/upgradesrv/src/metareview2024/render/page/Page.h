#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/render/ToDecide.h"
#include "metareview2024/render/page/Template.h"
#include "metareview2024/words/FindingSentence.h"
#include "metareview2024/words/Words.h"

/// The parts of the page that shows a review. page.html and the other templates beside this file say how it looks; the
/// sources fill them.
namespace metareview::page {

// A page is for people: whoever needs more has the JSON.
constexpr std::size_t kMaxFindings = 20000;
constexpr std::size_t kMaxPlaces = 1000;
constexpr std::size_t kMaxPlacesAtGlance = 25;
constexpr std::size_t kMaxDecisions = 1000;
/// With more findings than this, the elements are folded at first.
constexpr std::size_t kMaxUnfolded = 500;

/// What all parts of one page share.
class CPage {
 public:
  CPage(const SReview& review, const CWords& words);

  const SReview& Review() const { return review_; }
  const CWords& Words() const { return words_; }
  const CFindingSentences& Sentences() const { return sentences_; }
  /// For templates: "words", everything that the catalogue has under "page.".
  const View& Shared() const { return shared_; }

  /// The findings that the page shows.
  const Findings& Shown() const { return shown_; }
  /// What has to be decided of them, by place.
  const std::vector<Findings>& Places() const { return places_; }
  bool HasBase() const { return review_.base.has_value(); }

  std::string Text(std::string_view key) const { return std::string(words_.Text(key)); }
  /// A message about a number, "{n}" in it.
  std::string Count(std::string_view key, std::size_t number) const;
  /// With values of its own.
  std::string Filled(std::string_view key, const Placeholders& values) const;

 private:
  const SReview& review_;
  const CWords& words_;
  CFindingSentences sentences_;
  Findings shown_;
  std::vector<Findings> places_;
  View shared_;
};

/// The parts of the view of page.html.
void FillSummary(const CPage& page, View& view);
void FillFilter(const CPage& page, View& view);
void FillFindings(const CPage& page, View& view);
void FillDecisions(const CPage& page, View& view);
void FillNotes(const CPage& page, View& view);

}  // namespace metareview::page
